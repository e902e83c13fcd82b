#include "desktop/ValueCheck.h"

#include "desktop/Alerts.h"
#include "desktop/TextTable.h"
#include "foundation/Dates.h"
#include "foundation/Money.h"
#include "foundation/Numbers.h"
#include "foundation/Trimmed.h"

#include <algorithm>

namespace {

/// A date whose day cannot be taken for a month.
const QDate exampleDate(2024, 12, 25);

bool isWholeNumber(std::string_view text)
{
    text = trimmed(text);
    if (text.starts_with('-') || text.starts_with('+'))
        text.remove_prefix(1);
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char letter) { return letter >= '0' && letter <= '9'; });
}

/// Whether nothing stands behind the number that is read. A comma may stand for the point where it is read as one.
bool readsToItsEnd(std::string_view text, const std::function<float(std::string_view)>& reads)
{
    std::string withPoint(trimmed(text));
    if (numbers::decimal(withPoint))
        return true;
    if (const auto comma = withPoint.find(','); comma != std::string::npos)
        withPoint[comma] = '.';
    return numbers::decimal(withPoint) && reads(text) == reads(withPoint);
}

QString dateSentence(const char* pattern)
{
    return fillText(localText("This is not a date like %@; it counts as %@."),
        {QString::fromStdString(dates::write(exampleDate, pattern)), QString::fromStdString(dates::write(dates::fallback(), pattern))});
}

} // namespace

ValueCheck values::amount(const MoneyFormatter& money)
{
    return [&money](std::string_view text) {
        return trimmed(text).empty() || money.read(text) ? QString() : localText("This does not read as an amount; it counts as 0.");
    };
}

ValueCheck values::number(const MoneyFormatter& money)
{
    return number([&money](std::string_view text) { return money.read(text).has_value(); });
}

ValueCheck values::number(std::function<bool(std::string_view)> reads)
{
    return [reads = std::move(reads)](std::string_view text) {
        return trimmed(text).empty() || reads(text) ? QString() : localText("This does not read as a number; it counts as 0.");
    };
}

ValueCheck values::wholeNumber()
{
    return [](std::string_view text) {
        if (trimmed(text).empty() || isWholeNumber(text))
            return QString();
        return fillText(localText("This does not read as a whole number; it counts as %@."), {QString::number(numbers::leadingInt(text))});
    };
}

ValueCheck values::leadingNumber(std::function<float(std::string_view)> reads)
{
    return [reads = std::move(reads)](std::string_view text) {
        if (trimmed(text).empty() || readsToItsEnd(text, reads))
            return QString();
        const std::string counted = numbers::general(static_cast<double>(reads(text)));
        return fillText(localText("This does not read as a number; it counts as %@."), {QString::fromStdString(counted)});
    };
}

ValueCheck values::date(std::function<const char*()> pattern)
{
    return [pattern = std::move(pattern)](std::string_view text) {
        const char* wanted = pattern();
        return trimmed(text).empty() || dates::readDate(text, wanted) ? QString() : dateSentence(wanted);
    };
}

void checkFields(Form& form, std::vector<CheckedField> fields)
{
    QObject::connect(&form, &Form::fieldChanged, &form, [fields = std::move(fields)](FormField* changed) {
        for (const CheckedField& checked : fields) {
            if (checked.field == changed)
                checked.field->setFault(checked.check(checked.field->text().toStdString()));
        }
    });
}
