// The reading and writing of a record file, once for all kinds: loops over the kind's field table.
//
// Files in the platform's own layout, with their keys in the order they are written in, go a short way: the expected key is compared
// as one literal. Any other valid layout goes through the token scanner and gives the same records.
#pragma once

#include "foundation/Numbers.h"
#include "foundation/Text.h"
#include "foundation/plist/PlistReader.h"
#include "foundation/plist/PlistScanner.h"
#include "foundation/plist/PlistTokens.h"
#include "foundation/plist/PlistValue.h"
#include "foundation/plist/PlistWriter.h"
#include "storage/FieldTable.h"
#include "storage/RecordComparison.h"
#include "storage/RecordFile.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <unordered_map>
#include <unordered_set>

/// The key every record has beside its fields.
inline constexpr std::string_view idKey = "id";

template <class R>
class RecordFileOf : public RecordFile {
public:
    using RecordFile::RecordFile;

    Result<std::unique_ptr<ParsedFile>> parse(std::string_view bytes) override
    {
        auto parsed = std::make_unique<Parsed>(*this);
        const Result<void> read = plist::isBinary(bytes) ? readTree(bytes, *parsed) : readTokens(bytes, *parsed);
        if (!read)
            return read.error();
        return std::unique_ptr<ParsedFile>(std::move(parsed));
    }

    std::unique_ptr<FileSnapshot> snapshot() const override
    {
        auto snapshot = std::make_unique<Snapshot>(*this);
        collect(snapshot->records);
        snapshot->rest = m_rest;
        return snapshot;
    }

    void forget() override { m_rest = PlistValue::makeDict(); }

protected:
    virtual std::span<const NestedKey<R>> nestedKeys() const { return {}; }
    /// So many records are about to be adopted.
    virtual void expect(std::size_t) { }
    /// Takes one record over, in file order, on the main thread.
    virtual void adopt(StoredRecord<R>&& record, const TextStorePointer& store) = 0;
    /// A kind's own rules for what a file leaves open; every record read goes through it before it is used.
    virtual void complete(StoredRecord<R>&) const { }
    /// What a person knows the record by: the texts of these keys.
    virtual std::span<const std::string_view> titleKeys() const { return {}; }
    /// Values that a record keeps for life.
    virtual std::span<const std::string_view> fixedKeys() const { return {}; }
    /// Values that are seldom the same in two records and seldom all changed in one.
    virtual std::span<const std::string_view> tellingKeys() const { return {}; }
    using UseLink = std::function<void(std::string_view fileName, int& id)>;
    /// Hands over the id of each record that this one names, to be read or changed.
    virtual void visitLinks(StoredRecord<R>&, TextStore&, const UseLink&) const { }
    /// The record that it belongs to; 0 for none.
    virtual int ownerOf(const StoredRecord<R>&) const { return 0; }
    /// Gives a record of an earlier state back to the collection.
    virtual void bringBack(StoredRecord<R>&& record, const TextStorePointer& store) = 0;
    /// Adds what the file is to hold, in the collection's order.
    virtual void collect(std::vector<StoredRecord<R>>& records) const = 0;

private:
    using Row = FieldRow<typename R::Values>;
    using Token = PlistTokens::Token;

    struct Parsed : ParsedFile {
        explicit Parsed(RecordFileOf& owner) : file(owner) { }
        void adopt() override
        {
            file.m_rest = std::move(rest);
            file.expect(records.size());
            for (StoredRecord<R>& record : records) {
                file.complete(record);
                file.adopt(std::move(record), store);
            }
        }
        std::vector<RecordDifference> differences(IdChanges& changes) const override { return file.differencesOf(*this, changes); }
        std::vector<RecordLink> linksOf(std::size_t index) const override
        {
            std::vector<RecordLink> links;
            StoredRecord<R> record = records.at(index);
            file.visitLinks(record, *store, [&](std::string_view name, int& id) { links.push_back({std::string(name), id}); });
            return links;
        }
        void bringBack(std::size_t index, const IdChanges& changes) override { file.bringBack(file.asOfNow(*this, index, changes), store); }
        RecordFileOf& file;
        TextStorePointer store = std::make_shared<TextStore>();
        std::vector<StoredRecord<R>> records;
        /// What the root holds beside the records.
        PlistValue rest = PlistValue::makeDict();
    };

    struct Snapshot : FileSnapshot {
        explicit Snapshot(const RecordFileOf& owner) : file(owner) { }
        void write(PlistWriter& writer) const override { file.writeAll(*this, writer); }
        const RecordFileOf& file;
        std::vector<StoredRecord<R>> records;
        PlistValue rest = PlistValue::makeDict();
    };

    // Reading

    /// A record before its file was read: flags are off unless the file says otherwise, texts have the kind's defaults.
    static StoredRecord<R> blankRecord()
    {
        StoredRecord<R> record;
        for (const Row& row : R::fieldRows()) {
            if (row.flag)
                record.values.*row.flag = false;
        }
        return record;
    }

    static const Row* rowForKey(std::string_view key)
    {
        for (const Row& row : R::fieldRows()) {
            if (row.stored != Stored::never && row.readKey == key)
                return &row;
        }
        return nullptr;
    }

    /// Whether the key is one that a flag or number is always written to but read from elsewhere: keeping it would serve nothing.
    static bool isOnlyWritten(std::string_view key)
    {
        return std::any_of(
            R::fieldRows().begin(), R::fieldRows().end(), [&](const Row& row) { return isOnlyWritten(row) && row.key == key; });
    }
    static bool isOnlyWritten(const Row& row) { return row.stored == Stored::always && !row.text && row.key != row.readKey; }

    static void takeText(StoredRecord<R>& record, const Row& row, std::string_view text, TextStore& store)
    {
        if (row.text)
            record.values.*row.text = store.add(text);
        else if (row.integer)
            record.values.*row.integer = numbers::leadingInt(text);
        else
            record.values.*row.flag = text == "YES";
    }

    static void takeId(StoredRecord<R>& record, std::string_view text, TextStore& store)
    {
        record.id = numbers::leadingInt(text);
        record.idText = store.add(text);
    }

    static void keepUnknown(StoredRecord<R>& record, std::string_view key, PlistValue value)
    {
        auto keys = std::make_shared<PlistValue>(record.unknownKeys ? *record.unknownKeys : PlistValue::makeDict());
        keys->set(key, std::move(value));
        record.unknownKeys = std::move(keys);
    }

    void takeValue(StoredRecord<R>& record, const std::string& key, PlistValue value, TextStore& store) const
    {
        for (const NestedKey<R>& nested : nestedKeys()) {
            if (nested.key != key)
                continue;
            // Of a key that stands there twice, the last counts.
            record.nested = {};
            if (nested.read(record, value, store))
                return;
        }
        if (value.hasText()) {
            const std::string text = cleanUtf8(value.asText());
            if (key == idKey)
                return takeId(record, text, store);
            if (const Row* row = rowForKey(key))
                return takeText(record, *row, text, store);
            if (isOnlyWritten(key))
                return;
        }
        keepUnknown(record, key, std::move(value));
    }

    Result<void> readTree(std::string_view bytes, Parsed& parsed) const
    {
        Result<PlistValue> root = plist::read(bytes);
        if (!root)
            return root.error();
        if (!root.value().isDict())
            return Error {"the file's root is no dictionary"};
        for (const auto& [key, value] : root.value().dict()) {
            if (key != collectionKey()) {
                parsed.rest.set(key, value);
                continue;
            }
            if (!value.isArray())
                return Error {"\"" + key + "\" is no list"};
            for (const PlistValue& entry : value.array()) {
                if (!entry.isDict())
                    return Error {"an entry of \"" + key + "\" is no dictionary"};
                StoredRecord<R> record = blankRecord();
                for (const auto& [name, fieldValue] : entry.dict())
                    takeValue(record, name, fieldValue, *parsed.store);
                parsed.records.push_back(std::move(record));
            }
        }
        return {};
    }

    Result<void> readTokens(std::string_view bytes, Parsed& parsed) const
    {
        if (!isUtf8(bytes))
            return Error {"the file is not UTF-8"};
        PlistTokens tokens(bytes);
        if (tokens.next() != Token::dictOpen)
            return wrong(tokens, "the file's root is no dictionary");
        for (;;) {
            const Token token = tokens.next();
            if (token == Token::dictClose)
                break;
            if (token != Token::key)
                return wrong(tokens, "the file ends too early");
            const std::string key = cleanUtf8(tokens.text());
            const Token value = tokens.next();
            if (key == collectionKey()) {
                if (value != Token::arrayOpen)
                    return wrong(tokens, "\"" + key + "\" is no list");
                parsed.records.clear();
                if (Result<void> read = readRecords(tokens, parsed); !read)
                    return read;
                continue;
            }
            Result<PlistValue> other = plist::readValue(tokens, value);
            if (!other)
                return other.error();
            parsed.rest.set(key, std::move(other).value());
        }
        return tokens.next() == Token::end ? Result<void>() : wrong(tokens, "something follows the end of the list");
    }

    static Result<void> wrong(PlistTokens& tokens, std::string_view what)
    {
        tokens.fail(what);
        return Error {tokens.error()};
    }

    Result<void> readRecords(PlistTokens& tokens, Parsed& parsed) const
    {
        const StoredRecord<R> blank = blankRecord();
        for (;;) {
            const Token token = tokens.next();
            if (token == Token::arrayClose)
                return {};
            if (token != Token::dictOpen)
                return wrong(tokens, "an entry of the list is no dictionary");
            makeRoom(parsed.records, tokens);
            StoredRecord<R>& record = parsed.records.emplace_back(blank);
            readExpectedFields(tokens, record, *parsed.store);
            if (Result<void> read = readOtherFields(tokens, record, *parsed.store); !read)
                return read;
        }
    }

    /// Before there are too many records to move: room for as many as the file holds, if the rest are as long as those so far.
    static void makeRoom(std::vector<StoredRecord<R>>& records, const PlistTokens& tokens)
    {
        constexpr std::size_t fewest = 64;
        if (records.size() == records.capacity() && records.size() >= fewest)
            records.reserve(records.size() + records.size() / 16 + records.size() * tokens.bytes().size() / tokens.position());
    }

    /// The short way: text fields in the order they are written in. Stops at the first thing that is different.
    static void readExpectedFields(PlistTokens& tokens, StoredRecord<R>& record, TextStore& store)
    {
        PlistScanner scanner(tokens.bytes(), tokens.position());
        std::uint64_t start = scanner.wordAt(keyOffset);
        for (const Expected& expected : expectedKeys()) {
            if (expected.start != start)
                continue;
            const std::size_t before = scanner.position();
            if (!scanner.take(expected.opening))
                continue;
            const std::optional<std::string_view> text = scanner.takePlainText();
            if (!text)
                return tokens.setPosition(before);
            if (expected.isId)
                takeId(record, *text, store);
            else if (expected.row)
                takeText(record, *expected.row, *text, store);
            start = scanner.wordAt(keyOffset);
        }
        tokens.setPosition(scanner.position());
    }

    /// What a nested key holds, when it stands there as it is written.
    bool readExpectedNested(PlistTokens& tokens, std::string_view key, StoredRecord<R>& record, TextStore& store) const
    {
        for (const NestedKey<R>& nested : nestedKeys()) {
            PlistScanner scanner(tokens.bytes(), tokens.position());
            if (nested.key != key || !nested.readExpected || !nested.readExpected(record, scanner, store))
                continue;
            tokens.setPosition(scanner.position());
            return true;
        }
        return false;
    }

    Result<void> readOtherFields(PlistTokens& tokens, StoredRecord<R>& record, TextStore& store) const
    {
        for (;;) {
            const Token token = tokens.next();
            if (token == Token::dictClose)
                return {};
            if (token != Token::key)
                return wrong(tokens, "the file ends inside a record");
            const std::string key = cleanUtf8(tokens.text());
            if (readExpectedNested(tokens, key, record, store)) {
                readExpectedFields(tokens, record, store);
                continue;
            }
            const Token first = tokens.next();
            const Row* row = first == Token::text ? rowForKey(key) : nullptr;
            if (row) {
                takeText(record, *row, cleanUtf8(tokens.text()), store);
            } else {
                Result<PlistValue> value = plist::readValue(tokens, first);
                if (!value)
                    return value.error();
                takeValue(record, key, std::move(value).value(), store);
            }
            readExpectedFields(tokens, record, store);
        }
    }

    static constexpr std::string_view beforeKey = "\n\t\t\t<key>";
    static constexpr std::size_t keyOffset = beforeKey.size();

    /// What stands before a value in the file's own layout. No row, and not the id: the value is passed over.
    struct Expected {
        std::string opening;
        /// The first eight bytes of the key and what follows it.
        std::uint64_t start;
        const Row* row;
        bool isId;
    };

    static const std::vector<Expected>& expectedKeys()
    {
        static const std::vector<Expected> keys = [] {
            std::vector<std::pair<std::string_view, const Row*>> rows {{idKey, nullptr}};
            for (const Row& row : R::fieldRows()) {
                if (row.stored != Stored::never)
                    rows.emplace_back(row.readKey, &row);
                if (isOnlyWritten(row))
                    rows.emplace_back(row.key, nullptr);
            }
            std::sort(rows.begin(), rows.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
            std::vector<Expected> expected;
            for (const auto& [key, row] : rows) {
                const std::string opening = std::string(beforeKey).append(key).append("</key>\n\t\t\t<string>");
                expected.push_back({opening, PlistScanner(opening, 0).wordAt(keyOffset), row, key == idKey});
            }
            return expected;
        }();
        return keys;
    }

    // Writing

    /// Root, list, record.
    static constexpr std::size_t depthOfKeys = 3;

    /// A key of a record in the file, with what stands behind it.
    struct WrittenKey {
        std::string_view key;
        const Row* row = nullptr;
        const NestedKey<R>* nested = nullptr;
        /// What stands before the text of a record's key.
        std::string opening = PlistWriter::opening(key, depthOfKeys);
    };

    std::vector<WrittenKey> writtenKeys() const
    {
        std::vector<WrittenKey> keys {{idKey}};
        for (const Row& row : R::fieldRows()) {
            if (row.stored != Stored::never)
                keys.push_back({row.key, &row});
        }
        for (const NestedKey<R>& nested : nestedKeys())
            keys.push_back({nested.key, nullptr, &nested});
        std::sort(keys.begin(), keys.end(), [](const auto& a, const auto& b) { return a.key < b.key; });
        return keys;
    }

    static bool isWritten(const WrittenKey& key, const StoredRecord<R>& record)
    {
        if (key.nested)
            return key.nested->filled(record);
        if (!key.row || key.row->stored == Stored::always || !key.row->text)
            return true;
        return !(record.values.*key.row->text).isEmpty();
    }

    /// Whether the record has nothing of its own to put in the place of a value that could not be read as text.
    static bool isBlank(const WrittenKey& key, const StoredRecord<R>& record)
    {
        return key.row && key.row->text && (record.values.*key.row->text).isEmpty();
    }

    static void writeEntry(const WrittenKey& key, const StoredRecord<R>& record, PlistWriter& writer)
    {
        if (key.nested) {
            writer.key(key.key);
            return key.nested->write(record, writer);
        }
        if (!key.row)
            return writer.textAfter(key.opening, std::to_string(record.id));
        if (key.row->text)
            return writer.textAfter(key.opening, record.values.*key.row->text);
        if (key.row->integer)
            return writer.textAfter(key.opening, std::to_string(record.values.*key.row->integer));
        writer.textAfter(key.opening, record.values.*key.row->flag ? "YES" : "NO");
    }

    // Comparing

    using PresentById = std::unordered_map<int, const StoredRecord<R>*>;

    RecordComparison<R> comparison() const { return RecordComparison<R>({nestedKeys(), titleKeys(), fixedKeys(), tellingKeys()}); }

    /// The record as it would stand in the collection now.
    StoredRecord<R> asOfNow(const Parsed& earlier, std::size_t index, const IdChanges& changes) const
    {
        StoredRecord<R> record = earlier.records.at(index);
        record.id = changes.now(fileName(), record.id);
        visitLinks(record, *earlier.store, [&](std::string_view file, int& id) { id = changes.now(file, id); });
        complete(record);
        return record;
    }

    /// A record whose id another one has by now gets the id of the one it came back as, else one that nobody has.
    void findNewIds(const Parsed& earlier, const PresentById& present, IdChanges& changes) const
    {
        const RecordComparison<R> comparison = this->comparison();
        std::unordered_multimap<std::string, const StoredRecord<R>*> added;
        std::optional<UnusedIds> unused;
        const auto look = [&] {
            std::unordered_set<int> used;
            for (const StoredRecord<R>& record : earlier.records)
                used.insert(record.id);
            for (const auto& [id, record] : present) {
                if (used.insert(id).second)
                    added.emplace(comparison.titleOf(*record), record);
            }
            unused.emplace(std::move(used));
        };
        for (std::size_t index = 0; index < earlier.records.size(); ++index) {
            const int id = earlier.records[index].id;
            const auto now = present.find(id);
            if (now == present.end())
                continue;
            const StoredRecord<R> record = asOfNow(earlier, index, changes);
            if (!comparison.areTwo(record, *now->second))
                continue;
            if (!unused)
                look();
            const auto [first, last] = added.equal_range(comparison.titleOf(record));
            const auto back =
                std::find_if(first, last, [&](const auto& entry) { return comparison.changedKeys(record, *entry.second).empty(); });
            changes.set(fileName(), id, back == last ? unused->next() : back->second->id);
            if (back != last)
                added.erase(back);
        }
    }

    std::vector<RecordDifference> differencesOf(const Parsed& earlier, IdChanges& changes) const
    {
        std::vector<StoredRecord<R>> records;
        collect(records);
        PresentById present;
        for (const StoredRecord<R>& record : records)
            present[record.id] = &record;
        findNewIds(earlier, present, changes);
        const RecordComparison<R> comparison = this->comparison();
        std::vector<RecordDifference> differences;
        for (std::size_t index = 0; index < earlier.records.size(); ++index) {
            const StoredRecord<R>& then = earlier.records[index];
            const StoredRecord<R> record = asOfNow(earlier, index, changes);
            RecordDifference found {index, comparison.titleOf(then), ownerOf(then), then.id, SinceThen::gone, {}, {}};
            if (const auto now = present.find(record.id); now != present.end()) {
                found.sinceThen = SinceThen::changed;
                found.changedKeys = comparison.changedKeys(record, *now->second);
            } else if (record.id != then.id) {
                found.sinceThen = SinceThen::replaced;
                found.usedBy = comparison.titleOf(*present.at(then.id));
            }
            if (found.sinceThen != SinceThen::changed || !found.changedKeys.empty())
                differences.push_back(std::move(found));
        }
        return differences;
    }

    static void writeRecord(const StoredRecord<R>& record, const std::vector<WrittenKey>& keys, PlistWriter& writer)
    {
        writer.openDict();
        if (record.unknownKeys)
            writeWithUnknown(record, keys, writer);
        else {
            for (const WrittenKey& key : keys) {
                if (isWritten(key, record))
                    writeEntry(key, record, writer);
            }
        }
        writer.closeDict();
    }

    static void writeWithUnknown(const StoredRecord<R>& record, const std::vector<WrittenKey>& keys, PlistWriter& writer)
    {
        std::vector<std::pair<std::string_view, const PlistValue*>> unknown;
        for (const auto& [key, value] : record.unknownKeys->dict())
            unknown.emplace_back(key, &value);
        std::sort(unknown.begin(), unknown.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
        auto next = unknown.begin();
        const auto writeUnknownBefore = [&](const std::string_view* limit) {
            for (; next != unknown.end() && (!limit || next->first < *limit); ++next) {
                writer.key(next->first);
                writer.value(*next->second);
            }
        };
        for (const WrittenKey& key : keys) {
            if (!isWritten(key, record))
                continue;
            writeUnknownBefore(&key.key);
            if (next != unknown.end() && next->first == key.key) {
                if (isBlank(key, record))
                    continue;
                ++next;
            }
            writeEntry(key, record, writer);
        }
        writeUnknownBefore(nullptr);
    }

    void writeRecords(const Snapshot& snapshot, PlistWriter& writer) const
    {
        const std::vector<WrittenKey> keys = writtenKeys();
        writer.key(collectionKey());
        writer.openArray();
        for (const StoredRecord<R>& record : snapshot.records)
            writeRecord(record, keys, writer);
        writer.closeArray();
    }

    void writeAll(const Snapshot& snapshot, PlistWriter& writer) const
    {
        std::vector<std::string_view> others;
        for (const auto& [key, value] : snapshot.rest.dict()) {
            if (key != collectionKey())
                others.push_back(key);
        }
        std::sort(others.begin(), others.end());
        const auto split = std::lower_bound(others.begin(), others.end(), std::string_view(collectionKey()));
        const auto writeOther = [&](std::string_view key) {
            writer.key(key);
            writer.value(*snapshot.rest.find(key));
        };
        writer.openDict();
        std::for_each(others.begin(), split, writeOther);
        writeRecords(snapshot, writer);
        std::for_each(split, others.end(), writeOther);
        writer.closeDict();
        writer.finish();
    }

    /// The keys beside the collection that the file held when it was read.
    PlistValue m_rest = PlistValue::makeDict();
};
