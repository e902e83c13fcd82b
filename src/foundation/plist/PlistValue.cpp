#include "foundation/plist/PlistValue.h"

#include <algorithm>
#include <charconv>

PlistValue PlistValue::makeInteger(std::int64_t number)
{
    return makeScalar(Kind::integer, std::to_string(number));
}

PlistValue PlistValue::makeReal(double number)
{
    char buffer[64];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, number);
    return makeScalar(Kind::real, std::string(buffer, end.ptr));
}

PlistValue PlistValue::makeBoolean(bool value)
{
    return makeScalar(Kind::boolean, value ? "YES" : "NO");
}

PlistValue PlistValue::makeScalar(Kind kind, std::string text)
{
    PlistValue value(kind);
    value.m_text = std::move(text);
    return value;
}

PlistValue PlistValue::makeData(std::string bytes)
{
    return makeScalar(Kind::data, std::move(bytes));
}

std::string PlistValue::asText() const
{
    return hasText() ? m_text : std::string();
}

const PlistValue* PlistValue::find(std::string_view key) const
{
    const auto found = std::find_if(m_dict.begin(), m_dict.end(), [&](const auto& entry) { return entry.first == key; });
    return found == m_dict.end() ? nullptr : &found->second;
}

PlistValue* PlistValue::find(std::string_view key)
{
    return const_cast<PlistValue*>(std::as_const(*this).find(key));
}

void PlistValue::set(std::string_view key, PlistValue value)
{
    if (PlistValue* existing = find(key))
        *existing = std::move(value);
    else
        m_dict.emplace_back(std::string(key), std::move(value));
}

void PlistValue::remove(std::string_view key)
{
    std::erase_if(m_dict, [&](const auto& entry) { return entry.first == key; });
}

bool PlistValue::operator==(const PlistValue& other) const
{
    if (m_kind != other.m_kind || m_text != other.m_text || m_array != other.m_array || m_dict.size() != other.m_dict.size())
        return false;
    return std::all_of(m_dict.begin(), m_dict.end(), [&](const auto& entry) {
        const PlistValue* value = other.find(entry.first);
        return value && *value == entry.second;
    });
}
