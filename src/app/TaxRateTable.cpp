#include "app/TaxRateTable.h"

#include "desktop/Alerts.h"
#include "desktop/TextTable.h"
#include "desktop/ValueCheck.h"
#include "inventory/TaxRate.h"

#include <algorithm>

TaxRateTable::TaxRateTable(const SortSettings& sorting, Beeper& beeper, const MoneyFormatter& money, const std::vector<TaxRate>& rates)
    : qvDataSource(sorting, beeper)
    , m_money(money)
    , m_rates(rates)
{
    list.columns = {
        {"code", localText("Code"), 90, ColumnAlign::left, true, true},
        {"description", localText("Description"), 320, ColumnAlign::left, true, true},
        {"rate", localText("Rate %"), 110, ColumnAlign::right, true, true},
    };
}

int TaxRateTable::numberOfRows() const
{
    return static_cast<int>(m_rates.size());
}

const TaxRate* TaxRateTable::rateAt(int row) const
{
    return row >= 0 && row < numberOfRows() ? &m_rates[static_cast<std::size_t>(row)] : nullptr;
}

std::string TaxRateTable::objectValue(std::string_view identifier, int row) const
{
    const TaxRate* rate = rateAt(row);
    if (!rate)
        return {};
    if (identifier == "code")
        return rate->code;
    if (identifier == "description")
        return rate->description;
    return identifier == "rate" ? rate->rate : std::string();
}

bool TaxRateTable::setObjectValue(std::string_view identifier, int row, std::string_view value)
{
    if (!rateAt(row) || !onEdited)
        return false;
    onEdited(identifier, row, value);
    return true;
}

bool TaxRateTable::hasEarlierRate(std::string_view code, int row) const
{
    return std::any_of(m_rates.begin(), m_rates.begin() + row, [code](const TaxRate& rate) { return rate.code == code; });
}

QString TaxRateTable::cellFault(std::string_view identifier, int row) const
{
    const TaxRate* rate = rateAt(row);
    if (!rate)
        return {};
    if (identifier == "rate")
        return values::leadingNumber([this](std::string_view text) { return taxRateIn(text, m_money); })(rate->rate);
    if (identifier == "code" && hasEarlierRate(rate->code, row))
        return localText("A rate further up has the same code; this one is never used.");
    return {};
}

QString TaxRateTable::trouble() const
{
    for (int row = 0; row < numberOfRows(); ++row) {
        for (const char* column : {"code", "rate"}) {
            if (const QString fault = cellFault(column, row); !fault.isEmpty())
                return fillText(localText("Code \"%@\", rate \"%@\": %@"),
                    {QString::fromStdString(rateAt(row)->code), QString::fromStdString(rateAt(row)->rate), fault});
        }
    }
    return {};
}
