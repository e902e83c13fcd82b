// One record file of the database folder: how its records get from bytes into their collection and back.
//
// Reading is in two steps. parse() turns bytes into stored records, needs nothing of the program and may run on any thread;
// adopt() hands them to the collection in file order on the main thread. A file either parses whole or not at all.
// Writing is in two steps too: snapshot() copies the values on the main thread, the snapshot is written on any thread.
#pragma once

#include "foundation/FilePieces.h"
#include "foundation/LargeMemory.h"
#include "foundation/Result.h"
#include "foundation/Text.h"
#include "storage/SharedValues.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

class PlistScanner;
class PlistTokens;
class PlistValue;
class PlistWriter;

/// Names of record files that something besides their collection goes by.
namespace recordFiles {
inline constexpr char contacts[] = "contacts.xml";
inline constexpr char orders[] = "orders.xml";
inline constexpr char items[] = "items.xml";
inline constexpr char lines[] = "itemsordered.xml";
inline constexpr char bills[] = "bills.xml";
inline constexpr char tasks[] = "actions.xml";
} // namespace recordFiles

/// What became of a record of an earlier state.
enum class SinceThen {
    changed,
    gone /* not in the collection any more */,
    replaced /* gone, and another record has its id */
};

/// How a record of an earlier state differs from what its collection holds now.
struct RecordDifference {
    /// Its place in the earlier file.
    std::size_t index = 0;
    /// What a person knows the record by.
    std::string title;
    /// The record it belongs to (a line's order); 0 for none.
    int owner = 0;
    int id = 0;
    SinceThen sinceThen = SinceThen::changed;
    /// Of one that is still there: the file's keys whose values are different.
    std::vector<std::string> changedKeys;
    /// What the record is known by that has its id now.
    std::string usedBy;
};

/// The ids that records of an earlier state get on their way back, since others have theirs by now.
class IdChanges {
public:
    /// From the id then to the one of now.
    using Ids = std::unordered_map<int, int>;

    /// All of a file: what it had before goes.
    void replace(std::string_view fileName, Ids ids)
    {
        if (ids.empty())
            m_changes.erase(std::string(fileName));
        else
            m_changes[std::string(fileName)] = std::move(ids);
    }
    /// The same id when it stays.
    int now(std::string_view fileName, int earlier) const
    {
        const auto file = m_changes.find(fileName);
        if (file == m_changes.end())
            return earlier;
        const auto found = file->second.find(earlier);
        return found == file->second.end() ? earlier : found->second;
    }
    bool isEmpty() const { return m_changes.empty(); }
    bool operator==(const IdChanges& other) const { return m_changes == other.m_changes; }

    /// The ids of now that the records of a file have when all of them are back: for those that are named only while they are there.
    void setBack(std::string_view fileName, std::unordered_set<int> ids) { m_back[std::string(fileName)] = std::move(ids); }
    bool isBack(std::string_view fileName, int now) const
    {
        const auto file = m_back.find(fileName);
        return file != m_back.end() && file->second.contains(now);
    }

private:
    std::map<std::string, Ids, std::less<>> m_changes;
    std::map<std::string, std::unordered_set<int>, std::less<>> m_back;
};

/// Another record that a record names.
struct RecordLink {
    std::string fileName;
    int id = 0;
};

/// What a file's bytes came to; waits to be taken over.
class ParsedFile {
public:
    virtual ~ParsedFile() = default;
    /// Gives the records to their collection, in file order. Answers whether they stand there just as they were read.
    virtual bool adopt() = 0;
    /// Finds the new ids of this file's records anew. changes has those that are known so far; they are right once those of the files
    /// that these records name are.
    virtual void findNewIds(IdChanges& changes) const = 0;
    /// What the collection lacks or holds otherwise, in file order. What is only in the collection is no difference.
    virtual std::vector<RecordDifference> differences(const IdChanges& changes) const = 0;
    /// The records that one names, by the ids they had.
    virtual std::vector<RecordLink> linksOf(std::size_t index) const = 0;
    /// Gives that one record back: into the one that is there, else as a record of its own with the id it had, or the one in changes.
    virtual void bringBack(std::size_t index, const IdChanges& changes) = 0;
};

/// The state of a collection at one moment, ready to be written.
class FileSnapshot {
public:
    virtual ~FileSnapshot() = default;
    /// Writes the whole property list.
    virtual void write(PlistWriter& writer) const = 0;
};

class RecordFile {
public:
    /// fileName: "contacts.xml"; collectionKey: the one key of the root; logName: the word in "contacts not written successfully".
    RecordFile(const char* fileName, const char* collectionKey, const char* logName)
        : m_fileName(fileName)
        , m_collectionKey(collectionKey)
        , m_logName(logName)
    {
    }
    virtual ~RecordFile() = default;
    RecordFile(const RecordFile&) = delete;
    RecordFile& operator=(const RecordFile&) = delete;

    const char* fileName() const { return m_fileName; }
    const char* collectionKey() const { return m_collectionKey; }
    const char* logName() const { return m_logName; }
    /// What one record is called: "Contact".
    virtual const char* recordName() const { return "Record"; }
    /// Whether other records can name one of this file only as long as it is there: what they name beside that is not kept.
    virtual bool isNamedOnlyWhileThere() const { return false; }

    /// What stands where a record ends, in the layout that files are written in.
    static constexpr std::string_view recordEnd = "\n\t\t</dict>";

    virtual Result<std::unique_ptr<ParsedFile>> parse(FilePieces& pieces) = 0;
    Result<std::unique_ptr<ParsedFile>> parse(std::string_view bytes)
    {
        FilePieces pieces(bytes);
        return parse(pieces);
    }
    virtual std::unique_ptr<FileSnapshot> snapshot() const = 0;
    /// Grows with every change to what the file is to hold; none where only comparing tells.
    virtual std::optional<std::uint64_t> changes() const { return std::nullopt; }
    /// Before a load: what the file of the database before held beside its records is forgotten.
    virtual void forget() = 0;
    /// After the records of this file were adopted: sort preference, sort, filter. Called when the file was missing too.
    virtual void loaded() { }
    /// What the file read last says that its collection cannot hold, in words for the person; empty when it holds everything.
    virtual std::string leftOut() const { return {}; }

private:
    const char* m_fileName;
    const char* m_collectionKey;
    const char* m_logName;
};

/// A record as its file holds it. Nested is what the kind keeps in nested arrays, an empty struct for most.
template <class R>
struct StoredRecord {
    int id = 0;
    /// The id as the file spells it, for rules that ask for it.
    Text idText;
    SharedValues<typename R::Values> values;
    [[no_unique_address]] typename R::Nested nested;
    /// Keys that the kind does not know, and known ones whose value is no text; null when there are none.
    std::shared_ptr<const PlistValue> unknownKeys;
};

template <class R>
using StoredRecords = std::vector<StoredRecord<R>, largeMemory::Allocator<StoredRecord<R>>>;

/// A key whose value is an array or another value of its own kind.
template <class R>
struct NestedKey {
    std::string_view key;
    /// Whether the key is written at all.
    bool (*filled)(const StoredRecord<R>&);
    /// Writes the value (the key is written already).
    void (*write)(const StoredRecord<R>&, PlistWriter&);
    /// Takes the value; texts go into the store. False when the value is not of the expected shape: it is then kept as unknown.
    bool (*read)(StoredRecord<R>&, const PlistValue& value, TextStore& store);
    /// The same without a value in between, for what stands there as it is written; false, with nothing taken, for anything else.
    bool (*readExpected)(StoredRecord<R>&, PlistScanner&, TextStore& store) = nullptr;
};
