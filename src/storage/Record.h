// A record kind made from its plain values and its field table; the by-name operations stand here once for all kinds.
#pragma once

#include "foundation/Numbers.h"
#include "storage/FieldTable.h"
#include "storage/SharedValues.h"
#include "storage/TextSearch.h"
#include "storage/dataObject.h"

#include <unordered_map>

/// Derived is the record class and offers
///   static constexpr auto& fieldRows()                                   the FieldRow table of Values
///   static std::span<const DerivedField<Derived>> derivedFields()        computed names, may be empty.
template <class Derived, class Values_>
class Record : public dataObject {
public:
    using Values = Values_;
    using Row = FieldRow<Values>;

    const Values& values() const { return *m_values; }
    const SharedValues<Values>& sharedValues() const { return m_values; }
    /// For loading: the values as the file held them, their texts in the given store.
    void setValues(SharedValues<Values> values, TextStorePointer store)
    {
        m_values = std::move(values);
        setStore(std::move(store));
    }

    std::string getFieldByName(std::string_view name) const override
    {
        const auto found = readNames().find(name);
        if (found == readNames().end())
            return {};
        const ReadName& read = found->second;
        return read.row ? valueOf(*read.row) : read.derived->value(static_cast<const Derived&>(*this));
    }

    bool setFieldByName(std::string_view name, std::string_view value) override
    {
        if (name == "id") {
            if (!Derived::idIsSettable)
                return false;
            setID(numbers::leadingInt(value));
            noteChange();
            return true;
        }
        for (const Row& row : Derived::fieldRows()) {
            if (!(row.setInAnyCase ? holdsInAnyCase(row.setNames, name) : row.setNames.holds(name)))
                continue;
            assign(row, value);
            return true;
        }
        return false;
    }

    /// First the values, then their texts.
    void fetch(int step) const override
    {
        if (step == 0)
            m_values.fetchAll();
        if (step != 1)
            return;
        for (Text Values::*const text : Derived::shownTexts())
            (values().*text).fetch();
    }
    void fetchText(int step, std::size_t field) const override
    {
        const auto& rows = Derived::fieldRows();
        // A list may hold another kind as well, whose fields are others.
        const auto text = field < rows.size() ? rows[field].text : nullptr;
        if (!text)
            return fetch(step);
        if (step == 0)
            __builtin_prefetch(&(values().*text));
        if (step == 1)
            (values().*text).fetch();
    }
    std::optional<std::size_t> textField(std::string_view name) const override
    {
        const auto found = readNames().find(name);
        if (found == readNames().end() || !found->second.row || !found->second.row->text)
            return std::nullopt;
        return static_cast<std::size_t>(found->second.row - Derived::fieldRows().data());
    }
    /// The texts that nearly every record has of its own and lists show.
    static std::span<Text Values::*const> shownTexts() { return {}; }

    bool contains(std::string_view text) const override
    {
        const FoldedText folded(text);
        for (const Row& row : Derived::fieldRows()) {
            if (row.isSearched && folded.occursIn(values().*row.text))
                return true;
        }
        return false;
    }

    void appendSearchText(std::string& text) const override
    {
        for (const Row& row : Derived::fieldRows()) {
            if (row.isSearched)
                text.append((values().*row.text).view()).push_back('\n');
        }
    }

protected:
    /// Sets a field of the values; answers whether it changed.
    bool set(Text Values::*member, std::string_view value)
    {
        if (values().*member == value)
            return false;
        m_values.change().*member = keep(value);
        noteChange();
        return true;
    }
    template <class Plain>
    bool set(Plain Values::*member, Plain value) requires(!std::is_same_v<Plain, Text>)
    {
        if (values().*member == value)
            return false;
        m_values.change().*member = value;
        noteChange();
        return true;
    }
    /// For setting fields of a record that nobody looks at yet.
    Values& newValues() { return m_values.change(); }

private:
    /// What a name reads: a field or something worked out.
    struct ReadName {
        const Row* row = nullptr;
        const DerivedField<Derived>* derived = nullptr;
    };
    using ReadNames = std::unordered_map<std::string_view, ReadName>;

    /// Whole lists are read by name, so no name is looked for row by row.
    static const ReadNames& readNames()
    {
        static const ReadNames all = [] {
            ReadNames names;
            for (const Row& row : Derived::fieldRows()) {
                for (const std::string_view name : row.readNames.names) {
                    if (!name.empty())
                        names.try_emplace(name, ReadName {&row, nullptr});
                }
            }
            for (const DerivedField<Derived>& derived : Derived::derivedFields())
                names.try_emplace(derived.name, ReadName {nullptr, &derived});
            return names;
        }();
        return all;
    }
    std::string valueOf(const Row& row) const
    {
        if (row.text)
            return (values().*row.text).string();
        if (row.integer)
            return std::to_string(values().*row.integer);
        return flagText(values().*row.flag, row.words);
    }
    void assign(const Row& row, std::string_view value)
    {
        if (row.text)
            set(row.text, value);
        else if (row.integer)
            set(row.integer, numbers::leadingInt(value));
        else
            set(row.flag, flagFromText(value, row.setBy));
    }
    static bool holdsInAnyCase(const FieldNames& names, std::string_view name)
    {
        return std::any_of(
            names.names.begin(), names.names.end(), [&](std::string_view own) { return !own.empty() && equalInAnyCase(own, name); });
    }

    SharedValues<Values> m_values;
};
