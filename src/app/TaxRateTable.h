// The tax rates as a table whose cells are edited in place.
#pragma once

#include "foundation/plist/PlistValue.h"
#include "storage/qvDataSource.h"

#include <functional>

class MoneyFormatter;

struct TaxRate {
    std::string code;
    std::string description;
    std::string rate;
    /// The row as it was stored, with what it holds beside these three.
    PlistValue stored = PlistValue::makeDict();

    bool operator==(const TaxRate&) const = default;
};

class TaxRateTable : public qvDataSource {
public:
    /// The rates are somebody else's, who has the table asked again by reloadData() when they change.
    TaxRateTable(const SortSettings& sorting, Beeper& beeper, const MoneyFormatter& money, const std::vector<TaxRate>& rates);

    /// A cell was edited; the column is "code", "description" or "rate".
    std::function<void(std::string_view column, int row, std::string_view value)> onEdited;
    /// -1 when none is selected.
    int selectedRate() const { return m_selected; }
    void selectRate(int row) { m_selected = row; }
    /// What is wrong with the first rate that cannot be used as it stands, in one sentence; empty when all can.
    QString trouble() const;

    int numberOfRows() const override;
    std::string objectValue(std::string_view identifier, int row) const override;
    bool setObjectValue(std::string_view identifier, int row, std::string_view value) override;
    QString cellFault(std::string_view identifier, int row) const override;

private:
    const TaxRate* rateAt(int row) const;
    bool hasEarlierRate(std::string_view code, int row) const;

    const MoneyFormatter& m_money;
    const std::vector<TaxRate>& m_rates;
    int m_selected = -1;
};
