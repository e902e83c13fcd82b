// Says beside a field that its text is not the kind of value the field holds.
//
// What does not read stays as it was typed and counts as nothing. That is never changed here: the person is only told.
#pragma once

#include "desktop/Form.h"

#include <string_view>

class MoneyFormatter;

/// What is wrong with a text, in one sentence; empty when nothing is. Nothing is wrong with an empty text.
using ValueCheck = std::function<QString(std::string_view text)>;

namespace values {

/// A sum of money.
ValueCheck amount(const MoneyFormatter& money);
/// A number that is no money: a percentage, a quantity.
ValueCheck number(const MoneyFormatter& money);
/// The same, where something else decides whether it reads.
ValueCheck number(std::function<bool(std::string_view)> reads);
/// A number of which only the digits before anything else count.
ValueCheck wholeNumber();
/// The same for a number with decimals: what it counts as is what reads answers.
ValueCheck leadingNumber(std::function<float(std::string_view)> reads);
/// A date of the pattern, which is asked at each check: the user may choose another format.
ValueCheck date(std::function<const char*()> pattern);

} // namespace values

struct CheckedField {
    TextField* field;
    ValueCheck check;
};

/// Checks the fields whenever their text changes, by whomever, and sets their faults. The fields are the form's own.
void checkFields(Form& form, std::vector<CheckedField> fields);
