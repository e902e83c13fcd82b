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
#include "storage/NewIds.h"
#include "storage/RecordComparison.h"
#include "storage/RecordFile.h"
#include "storage/RecordWriting.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <unordered_set>

template <class R>
class RecordFileOf : public RecordFile {
public:
    using RecordFile::RecordFile;

    using RecordFile::parse;
    Result<std::unique_ptr<ParsedFile>> parse(FilePieces& pieces) override
    {
        auto parsed = std::make_unique<Parsed>(*this);
        Result<void> read = readPieces(pieces, *parsed);
        if (!read && !pieces.isWhole()) {
            // Not in the layout that can be taken apart, or damaged: where and how is found out with all of it.
            pieces.takeWhole();
            parsed = std::make_unique<Parsed>(*this);
            read = pieces.trouble() == ReadTrouble::none ? readPieces(pieces, *parsed) : Error {pieces.reason()};
        }
        if (!read)
            return read.error();
        parsed->store->endRepeating();
        return std::unique_ptr<ParsedFile>(std::move(parsed));
    }

    std::unique_ptr<FileSnapshot> snapshot() const override
    {
        auto snapshot = std::make_unique<Snapshot>(*this);
        collect(snapshot->records);
        snapshot->rest = m_rest;
        return snapshot;
    }

    void forget() override
    {
        m_rest = PlistValue::makeDict();
        m_leftOut.clear();
    }

    std::string leftOut() const override { return m_leftOut; }

protected:
    virtual std::span<const NestedKey<R>> nestedKeys() const { return {}; }
    /// So many records are about to be adopted.
    virtual void expect(std::size_t) { }
    /// Takes one record over, in file order, on the main thread.
    /// Answers whether it kept its id.
    virtual bool adopt(StoredRecord<R>&& record, const TextStorePointer& store) = 0;
    /// A kind's own rules for what a file leaves open; every record read goes through it before it is used.
    /// Answers whether nothing had to be filled in.
    virtual bool complete(StoredRecord<R>&) const { return true; }
    /// What a person knows the record by: the texts of these keys.
    virtual std::span<const std::string_view> titleKeys() const { return {}; }
    /// Values that a record keeps for life.
    virtual std::span<const std::string_view> fixedKeys() const { return {}; }
    /// Values that are seldom the same in two records and seldom all changed in one.
    virtual std::span<const std::string_view> tellingKeys() const { return {}; }
    /// Numbers that complete() fills in from records of other files.
    virtual std::span<const std::string_view> filledInKeys() const { return {}; }
    using UseLink = std::function<void(std::string_view fileName, int& id)>;
    /// Hands over the id of each record that this one names, to be read or changed.
    virtual void visitLinks(StoredRecord<R>&, TextStore&, const UseLink&) const { }
    /// Of those that are named only while they are there: what is not there, and does not come back either, is not named.
    virtual void leaveOutMissing(StoredRecord<R>&, const IdChanges&) const { }
    /// The record that it belongs to; 0 for none.
    virtual int ownerOf(const StoredRecord<R>&) const { return 0; }
    /// Gives a record of an earlier state back to the collection.
    virtual void bringBack(StoredRecord<R>&& record, const TextStorePointer& store) = 0;
    /// Adds what the file is to hold, in the collection's order.
    virtual void collect(StoredRecords<R>& records) const = 0;

private:
    using Values = typename R::Values;
    using Row = FieldRow<Values>;
    using Token = PlistTokens::Token;

    struct Parsed : ParsedFile {
        explicit Parsed(RecordFileOf& owner) : file(owner) { }
        bool adopt() override
        {
            bool asRead = !passedOver;
            file.m_rest = std::move(rest);
            file.expect(records.size());
            for (StoredRecord<R>& record : records) {
                asRead &= file.complete(record);
                if (record.unknownKeys)
                    file.noteLeftOut(record);
                asRead &= file.adopt(std::move(record), store);
            }
            return asRead;
        }
        void findNewIds(IdChanges& changes) const override { file.findNewIdsOf(*this, changes); }
        std::vector<RecordDifference> differences(const IdChanges& changes) const override { return file.differencesOf(*this, changes); }
        std::vector<RecordLink> linksOf(std::size_t index) const override
        {
            std::vector<RecordLink> links;
            StoredRecord<R> record = records.at(index);
            file.visitLinks(record, *store, [&](std::string_view name, int& id) { links.push_back({std::string(name), id}); });
            return links;
        }
        void bringBack(std::size_t index, const IdChanges& changes) override
        {
            file.bringBack(file.asOfNow(*this, index, changes, file.ownIds(changes)), store);
        }
        RecordFileOf& file;
        TextStorePointer store = std::make_shared<TextStore>();
        StoredRecords<R> records;
        /// What the root holds beside the records.
        PlistValue rest = PlistValue::makeDict();
        /// A value that is not read was another one than that of a record of which nothing is known.
        bool passedOver = false;
    };

    struct Snapshot : FileSnapshot {
        explicit Snapshot(const RecordFileOf& owner) : file(owner) { }
        void write(PlistWriter& writer) const override { file.writeAll(*this, writer); }
        const RecordFileOf& file;
        StoredRecords<R> records;
        PlistValue rest = PlistValue::makeDict();
    };

    // Reading

    /// A record before its file was read: flags are off unless the file says otherwise, texts have the kind's defaults.
    static StoredRecord<R> blankRecord()
    {
        StoredRecord<R> record;
        for (const Row& row : R::fieldRows()) {
            if (row.flag)
                record.values.change().*row.flag = false;
        }
        return record;
    }

    static const Row* rowForKey(std::string_view key)
    {
        for (const Row& row : R::fieldRows()) {
            if (row.readKey == key)
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
    /// As a flag or a number is written that nobody set.
    static bool isBlankText(std::string_view text) { return text == "NO" || text == "0"; }
    static bool isOnlyWritten(const Row& row) { return row.stored == Stored::always && !row.text && row.key != row.readKey; }

    static void takeText(Values& values, const Row& row, std::string_view text, TextStore& store)
    {
        if (row.text)
            values.*row.text = store.addRepeating(text);
        else if (row.integer)
            values.*row.integer = numbers::leadingInt(text);
        else
            values.*row.flag = text == "YES";
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

    void takeValue(StoredRecord<R>& record, const std::string& key, PlistValue value, Parsed& parsed) const
    {
        TextStore& store = *parsed.store;
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
                return takeText(record.values.change(), *row, text, store);
            if (isOnlyWritten(key)) {
                parsed.passedOver |= !isBlankText(text);
                return;
            }
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
                    takeValue(record, name, fieldValue, parsed);
                parsed.records.push_back(std::move(record));
            }
        }
        return {};
    }

    Result<void> readPieces(FilePieces& pieces, Parsed& parsed) const
    {
        return plist::isBinary(pieces.piece()) ? readTree(pieces.piece(), parsed) : readTokens(pieces, parsed);
    }

    /// The tokens of a file that comes in pieces.
    struct Source {
        FilePieces& pieces;
        PlistTokens tokens {pieces.piece()};
        /// Everything of the piece before it is known to be UTF-8; the records are looked at one by one, while they are in the
        /// processor's cache.
        std::size_t checked = 0;

        /// After a record: on to the next piece, when this one ends here.
        void recordRead()
        {
            if (pieces.isWhole() || tokens.position() < pieces.piece().size())
                return;
            pieces.next();
            tokens.continueWith(pieces.piece());
            checked = 0;
        }
        /// So many bytes of the file are read.
        std::size_t bytesRead() const { return pieces.passed() + tokens.position(); }
    };

    /// Whatever else is wrong with a file, that it is no text comes first.
    Result<void> readTokens(FilePieces& pieces, Parsed& parsed) const
    {
        Source source {pieces};
        Result<void> read = readDocument(source, parsed);
        return isUtf8(pieces.piece().substr(source.checked)) ? read : Error {notUtf8};
    }

    Result<void> readDocument(Source& source, Parsed& parsed) const
    {
        PlistTokens& tokens = source.tokens;
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
                if (Result<void> read = readRecords(source, parsed); !read)
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

    Result<void> readRecords(Source& source, Parsed& parsed) const
    {
        PlistTokens& tokens = source.tokens;
        const StoredRecord<R> blank = blankRecord();
        for (;;) {
            const Token token = tokens.take("\n\t\t<dict>") ? Token::dictOpen : tokens.next();
            if (token == Token::arrayClose)
                return {};
            if (token != Token::dictOpen)
                return wrong(tokens, "an entry of the list is no dictionary");
            makeRoom(parsed.records, source);
            StoredRecord<R>& record = parsed.records.emplace_back(blank);
            readExpectedFields(tokens, record, parsed);
            if (!tokens.take(recordEnd)) {
                if (Result<void> read = readOtherFields(tokens, record, parsed); !read)
                    return read;
            }
            if (!isUtf8(tokens.bytes().substr(source.checked, tokens.position() - source.checked)))
                return Error {notUtf8};
            source.checked = tokens.position();
            source.recordRead();
        }
    }

    /// Before there are too many records to move: room for as many as the file holds, if the rest are as long as those so far.
    static void makeRoom(StoredRecords<R>& records, const Source& source)
    {
        constexpr std::size_t fewest = 64;
        if (records.size() == records.capacity() && records.size() >= fewest)
            records.reserve(records.size() + records.size() / 16 + records.size() * source.pieces.fileSize() / source.bytesRead());
    }

    /// The short way: text fields in the order they are written in. Stops at the first thing that is different.
    static void readExpectedFields(PlistTokens& tokens, StoredRecord<R>& record, Parsed& parsed)
    {
        TextStore& store = *parsed.store;
        Values& values = record.values.change();
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
                takeText(values, *expected.row, *text, store);
            else
                parsed.passedOver |= !isBlankText(*text);
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

    Result<void> readOtherFields(PlistTokens& tokens, StoredRecord<R>& record, Parsed& parsed) const
    {
        TextStore& store = *parsed.store;
        for (;;) {
            const Token token = tokens.next();
            if (token == Token::dictClose)
                return {};
            if (token != Token::key)
                return wrong(tokens, "the file ends inside a record");
            const std::string key = cleanUtf8(tokens.text());
            if (readExpectedNested(tokens, key, record, store)) {
                readExpectedFields(tokens, record, parsed);
                continue;
            }
            const Token first = tokens.next();
            const Row* row = first == Token::text ? rowForKey(key) : nullptr;
            if (row) {
                takeText(record.values.change(), *row, cleanUtf8(tokens.text()), store);
            } else {
                Result<PlistValue> value = plist::readValue(tokens, first);
                if (!value)
                    return value.error();
                takeValue(record, key, std::move(value).value(), parsed);
            }
            readExpectedFields(tokens, record, parsed);
        }
    }

    static constexpr char notUtf8[] = "the file is not UTF-8";
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

    // Comparing

    RecordComparison<R> comparison() const
    {
        return RecordComparison<R>({nestedKeys(), titleKeys(), fixedKeys(), tellingKeys(), filledInKeys()});
    }

    OwnIds ownIds(const IdChanges& changes) const
    {
        return [this, &changes](int earlier) { return changes.now(fileName(), earlier); };
    }

    /// The record as it would stand in the collection now.
    StoredRecord<R> asOfNow(const Parsed& earlier, std::size_t index, const IdChanges& changes, const OwnIds& ownIds) const
    {
        StoredRecord<R> record = earlier.records.at(index);
        record.id = ownIds(record.id);
        visitLinks(record, *earlier.store,
            [&](std::string_view file, int& named) { named = file == fileName() ? ownIds(named) : changes.now(file, named); });
        leaveOutMissing(record, changes);
        complete(record);
        return record;
    }

    /// What the collection holds, as the earlier records are compared with it.
    struct Present {
        StoredRecords<R> records;
        PresentById<R> byId;
    };
    Present presentRecords(const IdChanges& changes) const
    {
        Present present;
        collect(present.records);
        for (StoredRecord<R>& record : present.records) {
            leaveOutMissing(record, changes);
            present.byId[record.id] = &record;
        }
        return present;
    }

    void findNewIdsOf(const Parsed& earlier, IdChanges& changes) const
    {
        const Present present = presentRecords(changes);
        const auto visitOwnLinks = [&](StoredRecord<R>& record, const std::function<void(int&)>& use) {
            visitLinks(record, *earlier.store, [&](std::string_view file, int& id) {
                if (file == fileName())
                    use(id);
            });
        };
        const auto asOfNow = [&](std::size_t index, const OwnIds& ownIds) { return this->asOfNow(earlier, index, changes, ownIds); };
        NewIds<R> newIds({comparison(), earlier.records, present.byId, asOfNow, visitOwnLinks});
        changes.replace(fileName(), newIds.find(ownIds(changes)));
        if (!isNamedOnlyWhileThere())
            return;
        std::unordered_set<int> back;
        for (const StoredRecord<R>& record : earlier.records)
            back.insert(changes.now(fileName(), record.id));
        changes.setBack(fileName(), std::move(back));
    }

    std::vector<RecordDifference> differencesOf(const Parsed& earlier, const IdChanges& changes) const
    {
        const Present present = presentRecords(changes);
        const RecordComparison<R> comparison = this->comparison();
        const OwnIds ownIds = this->ownIds(changes);
        std::vector<RecordDifference> differences;
        for (std::size_t index = 0; index < earlier.records.size(); ++index) {
            const StoredRecord<R>& then = earlier.records[index];
            const StoredRecord<R> record = asOfNow(earlier, index, changes, ownIds);
            RecordDifference found {index, comparison.titleOf(then), ownerOf(then), then.id, SinceThen::gone, {}, {}};
            if (const auto now = present.byId.find(record.id); now != present.byId.end()) {
                found.sinceThen = SinceThen::changed;
                found.changedKeys = comparison.changedKeys(then, record, *now->second);
            } else if (record.id != then.id) {
                found.sinceThen = SinceThen::replaced;
                found.usedBy = comparison.titleOf(*present.byId.at(then.id));
            }
            if (found.sinceThen != SinceThen::changed || !found.changedKeys.empty())
                differences.push_back(std::move(found));
        }
        return differences;
    }

    // Writing

    /// Notes the first value that the next writing puts something else in the place of, though nobody changed it.
    void noteLeftOut(const StoredRecord<R>& record)
    {
        if (!m_leftOut.empty())
            return;
        const std::string_view key = RecordWriting<R>(nestedKeys()).passedOver(record);
        if (!key.empty())
            m_leftOut = '"' + std::string(key) + "\" of \"" + comparison().titleOf(record) + "\" holds what nobody expects there";
    }

    void writeRecords(const Snapshot& snapshot, PlistWriter& writer) const
    {
        const RecordWriting<R> writing(nestedKeys());
        writer.key(collectionKey());
        writer.openArray();
        const StoredRecords<R>& records = snapshot.records;
        // The values lie all over the memory: while one record is written, the processor already fetches a later one's.
        constexpr std::size_t fetchedAhead = 6;
        for (std::size_t n = 0; n < records.size(); ++n) {
            if (n + fetchedAhead < records.size())
                records[n + fetchedAhead].values.fetchAll();
            writing.write(records[n], writer);
        }
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
    /// In words; see leftOut().
    std::string m_leftOut;
};
