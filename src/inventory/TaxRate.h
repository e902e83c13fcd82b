// What the settings say of tax: a rate as it stands in the table of rates, and what prices include.
#pragma once

#include <string_view>

class MoneyFormatter;
class SettingsStore;

/// The percentage that a rate's text starts with, 0 when it starts with none. "17.5" is understood everywhere, and "17,5" where amounts are
/// written with a comma; a comma never groups here, since no rate needs it.
float taxRateIn(std::string_view text, const MoneyFormatter& money);

/// Prices are entered without tax, and tax is added on top.
bool pricesAreExclusive(const SettingsStore& settings);
