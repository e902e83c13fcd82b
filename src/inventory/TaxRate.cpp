#include "inventory/TaxRate.h"

#include "foundation/Money.h"
#include "foundation/Numbers.h"
#include "storage/Settings.h"

#include <algorithm>

namespace {

bool writesDecimalComma(const MoneyFormatter& money)
{
    return money.read("0,5") == 0.5;
}

} // namespace

float taxRateIn(std::string_view text, const MoneyFormatter& money)
{
    std::string rate(text);
    const auto comma = std::find(rate.begin(), rate.end(), ',');
    if (comma != rate.end() && writesDecimalComma(money))
        *comma = '.';
    return numbers::leadingFloat(rate);
}

bool pricesAreExclusive(const SettingsStore& settings)
{
    return settings.text(settings::pricesTaxInclusive) == "1";
}
