// How a record gets into its file: its keys in their order, and between them what the kind does not know.
#pragma once

#include "foundation/plist/PlistValue.h"
#include "foundation/plist/PlistWriter.h"
#include "storage/FieldTable.h"
#include "storage/RecordFile.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// The key every record has beside its fields.
inline constexpr std::string_view idKey = "id";

template <class R>
class RecordWriting {
public:
    explicit RecordWriting(std::span<const NestedKey<R>> nestedKeys)
    {
        m_keys.push_back({idKey});
        for (const Row& row : R::fieldRows())
            m_keys.push_back({row.key, &row});
        for (const NestedKey<R>& nested : nestedKeys)
            m_keys.push_back({nested.key, nullptr, &nested});
        std::sort(m_keys.begin(), m_keys.end(), [](const auto& a, const auto& b) { return a.key < b.key; });
    }

    void write(const StoredRecord<R>& record, PlistWriter& writer) const
    {
        writer.openDict();
        if (record.unknownKeys)
            writeWithUnknown(record, writer);
        else
            writeOwn(record, writer);
        writer.closeDict();
    }

    /// The first key under which the record's own value takes the place of one that was kept as unknown; empty when there is none.
    std::string_view passedOver(const StoredRecord<R>& record) const
    {
        const auto isPassedOver = [&](const Key& key) {
            return isWritten(key, record) && !isBlank(key, record) && record.unknownKeys && record.unknownKeys->find(key.key);
        };
        const auto found = std::find_if(m_keys.begin(), m_keys.end(), isPassedOver);
        return found == m_keys.end() ? std::string_view() : found->key;
    }

private:
    using Row = FieldRow<typename R::Values>;

    /// Root, list, record.
    static constexpr std::size_t depthOfKeys = 3;

    /// A key of a record in the file, with what stands behind it.
    struct Key {
        std::string_view key;
        const Row* row = nullptr;
        const NestedKey<R>* nested = nullptr;
        /// Of the row: asked of every record.
        Text R::Values::*text = row ? row->text : nullptr;
        bool isAlwaysWritten = row && row->stored == Stored::always;
        /// What stands before the text of a record's key.
        PlistWriter::Opening opening = PlistWriter::opening(key, depthOfKeys);
    };

    /// Nearly all that is written are texts: they are met first.
    void writeOwn(const StoredRecord<R>& record, PlistWriter& writer) const
    {
        const typename R::Values& values = *record.values;
        for (const Key& key : m_keys) {
            if (key.text) {
                const std::string_view text = values.*key.text;
                if (!text.empty() || key.isAlwaysWritten)
                    writer.textAfter(key.opening, text);
            } else if (isWritten(key, record))
                writeEntry(key, record, writer);
        }
    }

    static bool isWritten(const Key& key, const StoredRecord<R>& record)
    {
        if (key.nested)
            return key.nested->filled(record);
        if (!key.row || key.row->stored == Stored::always || !key.row->text)
            return true;
        return !((*record.values).*key.row->text).isEmpty();
    }

    /// Whether the record has nothing of its own to put in the place of a value that could not be read as what it should be.
    static bool isBlank(const Key& key, const StoredRecord<R>& record)
    {
        if (!key.row)
            return false;
        if (key.row->text)
            return ((*record.values).*key.row->text).isEmpty();
        return key.row->integer ? (*record.values).*key.row->integer == 0 : !((*record.values).*key.row->flag);
    }

    static void writeEntry(const Key& key, const StoredRecord<R>& record, PlistWriter& writer)
    {
        if (key.nested) {
            writer.key(key.key);
            return key.nested->write(record, writer);
        }
        if (!key.row)
            return writeNumber(key, record.id, writer);
        if (key.row->text)
            return writer.textAfter(key.opening, (*record.values).*key.row->text);
        if (key.row->integer)
            return writeNumber(key, (*record.values).*key.row->integer, writer);
        writer.textAfter(key.opening, (*record.values).*key.row->flag ? "YES" : "NO");
    }

    static void writeNumber(const Key& key, int number, PlistWriter& writer)
    {
        std::array<char, std::numeric_limits<int>::digits10 + 2> digits;
        const char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
        writer.textAfter(key.opening, std::string_view(digits.data(), static_cast<std::size_t>(end - digits.data())));
    }

    void writeWithUnknown(const StoredRecord<R>& record, PlistWriter& writer) const
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
        for (const Key& key : m_keys) {
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

    std::vector<Key> m_keys;
};
