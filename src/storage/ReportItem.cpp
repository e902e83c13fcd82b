#include "storage/ReportItem.h"

#include "foundation/Numbers.h"
#include "storage/TextSearch.h"

#include <algorithm>

const ReportValue* ReportItem::valueOf(std::string_view name) const
{
    constexpr std::string_view prefix = "field";
    if (!name.starts_with(prefix))
        return nullptr;
    const int column = numbers::leadingInt(name.substr(prefix.size()));
    return column >= 1 && column <= static_cast<int>(m_values.size()) ? &m_values[static_cast<std::size_t>(column) - 1] : nullptr;
}

std::string ReportItem::getFieldByName(std::string_view name) const
{
    const ReportValue* value = valueOf(name);
    return value ? value->text.string() : std::string();
}

std::string ReportItem::kindOf(std::string_view name) const
{
    const ReportValue* value = valueOf(name);
    if (!value || value->kind == ReportValueKind::string)
        return "STRING";
    return value->kind == ReportValueKind::number ? "NUMBER" : "DATE";
}

bool ReportItem::contains(std::string_view text) const
{
    const FoldedText folded(text);
    return std::any_of(m_values.begin(), m_values.end(), [&](const ReportValue& value) { return folded.occursIn(value.text); });
}

void ReportItem::appendSearchText(std::string& text) const
{
    for (const ReportValue& value : m_values)
        text.append(value.text.view()).append(1, '\n');
}
