// A record kind's fields, declared once: how each is named when read, when set, and in its file.
//
//     inline constexpr std::array billFields {
//         field<&BillValues::number>("number").searched(),
//         field<&BillValues::name>("name").alsoRead("surname").searched(),
//     };
//
// Reading and setting by name, searching, the record files and imports are loops over such a table.
#pragma once

#include "foundation/Text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string_view>

/// How a flag reads by name.
enum class FlagWords : unsigned char { upper /* YES, NO */, capital /* Yes, No */, lower /* yes, no */ };
/// When a field stands in the file.
enum class Stored : unsigned char { whenFilled, always };
/// Which text sets a flag by name.
enum class FlagSetBy : unsigned char { upperYes, capitalYes, capitalNo };

/// Whether two names are the same; by reference throughout, since the compiler refuses to copy parts of a table at build time.
constexpr bool sameName(const std::string_view& a, const std::string_view& b)
{
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a[i] != b[i])
            return false;
    }
    return true;
}

/// Up to three names, unused ones empty.
struct FieldNames {
    std::array<std::string_view, 3> names {};

    constexpr bool holds(const std::string_view& name) const
    {
        if (name.empty())
            return false;
        return sameName(names[0], name) || sameName(names[1], name) || sameName(names[2], name);
    }
    constexpr void add(std::string_view name) { *std::find(names.begin(), names.end(), std::string_view()) = name; }
};

template <class Values>
struct FieldRow {
    Text Values::*text = nullptr;
    int Values::*integer = nullptr;
    bool Values::*flag = nullptr;

    FieldNames readNames;
    FieldNames setNames;
    /// The key in the file, and the key it is read from where that differs.
    std::string_view key;
    std::string_view readKey;
    Stored stored = Stored::whenFilled;
    FlagWords words = FlagWords::upper;
    FlagSetBy setBy = FlagSetBy::upperYes;
    bool isSearched = false;
    bool setInAnyCase = false;

    /// Names of the file key only; reading and setting by name keep theirs.
    constexpr FieldRow stores(std::string_view fileKey) const
    {
        return changed([&](FieldRow& row) { row.key = row.readKey = fileKey; });
    }
    /// Reads from another key than it writes.
    constexpr FieldRow readsFrom(std::string_view fileKey) const
    {
        return changed([&](FieldRow& row) { row.readKey = fileKey; });
    }
    constexpr FieldRow always() const
    {
        return changed([](FieldRow& row) { row.stored = Stored::always; });
    }
    constexpr FieldRow alsoRead(std::string_view name) const
    {
        return changed([&](FieldRow& row) { row.readNames.add(name); });
    }
    constexpr FieldRow alsoSet(std::string_view name) const
    {
        return changed([&](FieldRow& row) { row.setNames.add(name); });
    }
    /// Read and set by this further name too.
    constexpr FieldRow also(std::string_view name) const { return alsoRead(name).alsoSet(name); }
    /// Not to be set by name.
    constexpr FieldRow getOnly() const
    {
        return changed([](FieldRow& row) { row.setNames = {}; });
    }
    /// Not to be read by name.
    constexpr FieldRow setOnly() const
    {
        return changed([](FieldRow& row) { row.readNames = {}; });
    }
    /// Neither read nor set by name.
    constexpr FieldRow unnamed() const { return getOnly().setOnly(); }
    constexpr FieldRow searched() const
    {
        return changed([](FieldRow& row) { row.isSearched = true; });
    }
    constexpr FieldRow inAnyCase() const
    {
        return changed([](FieldRow& row) { row.setInAnyCase = true; });
    }
    constexpr FieldRow shownAs(FlagWords flagWords) const
    {
        return changed([&](FieldRow& row) { row.words = flagWords; });
    }
    constexpr FieldRow setsBy(FlagSetBy flagSetBy) const
    {
        return changed([&](FieldRow& row) { row.setBy = flagSetBy; });
    }

private:
    template <class Change>
    constexpr FieldRow changed(Change change) const
    {
        FieldRow row = *this;
        change(row);
        return row;
    }
};

namespace field_detail {
template <class Values, class Member>
struct MemberPointer {
    using Owner = Values;
    using Type = Member;
};
template <class Values, class Member>
MemberPointer<Values, Member> inspect(Member Values::*);
} // namespace field_detail

/// A row for the member; its name is how it is read, set and stored until the words after it say otherwise.
template <auto member>
constexpr auto field(std::string_view name)
{
    using Inspected = decltype(field_detail::inspect(member));
    FieldRow<typename Inspected::Owner> row;
    if constexpr (std::is_same_v<typename Inspected::Type, Text>)
        row.text = member;
    else if constexpr (std::is_same_v<typename Inspected::Type, int>)
        row.integer = member;
    else
        row.flag = member;
    row.readNames.add(name);
    row.setNames.add(name);
    row.key = row.readKey = name;
    return row;
}

/// A name worked out from the record instead of stored.
template <class Record>
struct DerivedField {
    std::string_view name;
    std::string (*value)(const Record&);
};

constexpr bool shareName(const FieldNames& a, const FieldNames& b)
{
    for (std::size_t i = 0; i < a.names.size(); ++i) {
        if (b.holds(a.names[i]))
            return true;
    }
    return false;
}

/// True when no name is read, set or stored twice; for static_assert beside each table.
template <class Values, std::size_t count>
constexpr bool namesAreUnique(const std::array<FieldRow<Values>, count>& rows)
{
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t j = i + 1; j < count; ++j) {
            if (shareName(rows[i].readNames, rows[j].readNames) || shareName(rows[i].setNames, rows[j].setNames))
                return false;
            if (sameName(rows[i].key, rows[j].key) || sameName(rows[i].readKey, rows[j].readKey))
                return false;
        }
    }
    return true;
}

const char* flagText(bool value, FlagWords words);
bool flagFromText(std::string_view value, FlagSetBy setBy);
/// ASCII letters alike in any case.
bool equalInAnyCase(std::string_view left, std::string_view right);
