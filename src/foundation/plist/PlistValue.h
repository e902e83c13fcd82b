// A property-list value: text, numbers, flags, dates, data, lists and dictionaries.
//
// Numbers and dates keep the text they were read from, so that what was not changed is written back as it was.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class PlistValue {
public:
    enum class Kind : unsigned char { text, integer, real, boolean, date, data, array, dict };
    using Array = std::vector<PlistValue>;
    using Dict = std::vector<std::pair<std::string, PlistValue>>;

    /// The empty text.
    PlistValue() = default;
    explicit PlistValue(std::string text) : m_text(std::move(text)) { }

    static PlistValue makeInteger(std::int64_t number);
    static PlistValue makeReal(double number);
    static PlistValue makeBoolean(bool value);
    /// As written in a file: "2020-05-05T10:39:44Z", "42", "3.50".
    static PlistValue makeScalar(Kind kind, std::string text);
    /// Raw bytes.
    static PlistValue makeData(std::string bytes);
    static PlistValue makeArray() { return PlistValue(Kind::array); }
    static PlistValue makeDict() { return PlistValue(Kind::dict); }

    Kind kind() const { return m_kind; }
    bool isArray() const { return m_kind == Kind::array; }
    bool isDict() const { return m_kind == Kind::dict; }
    /// Whether the value can stand where a text is expected: everything but data, lists and dictionaries.
    bool hasText() const { return m_kind != Kind::data && !isArray() && !isDict(); }
    /// The text where a text is expected: true is "YES", false "NO", numbers and dates as written; empty for the others.
    std::string asText() const;
    /// The bytes of data, the text of a scalar as written.
    const std::string& raw() const { return m_text; }
    bool isTrue() const { return m_kind == Kind::boolean && m_text == "YES"; }

    const Array& array() const { return m_array; }
    Array& array() { return m_array; }
    void append(PlistValue value) { m_array.push_back(std::move(value)); }

    /// In the order they were set or read.
    const Dict& dict() const { return m_dict; }
    const PlistValue* find(std::string_view key) const;
    PlistValue* find(std::string_view key);
    /// Replaces the value of a key that is there.
    void set(std::string_view key, PlistValue value);
    void remove(std::string_view key);

    bool operator==(const PlistValue& other) const;

private:
    explicit PlistValue(Kind kind) : m_kind(kind) { }

    Kind m_kind = Kind::text;
    std::string m_text;
    Array m_array;
    Dict m_dict;
};
