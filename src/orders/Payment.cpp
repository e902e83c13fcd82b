#include "orders/Payment.h"

#include "foundation/Dates.h"
#include "orders/Order.h"
#include "storage/Settings.h"

namespace {

constexpr std::array paymentDerivedFields {
    DerivedField<Payment> {"order:number", [](const Payment& payment) { return payment.getOrdernum(); }},
    DerivedField<Payment> {"ordernum", [](const Payment& payment) { return payment.getOrdernum(); }},
    DerivedField<Payment> {"order:title", [](const Payment& payment) { return payment.getTitle(); }},
    DerivedField<Payment> {"title", [](const Payment& payment) { return payment.getTitle(); }},
};

} // namespace

const char* recordDateFormat(const SettingsStore& settings)
{
    const PlistValue* chosen = settings.value(settings::dateFormat);
    return !chosen || !chosen->hasText() || chosen->raw() == "1" ? dates::monthFirst : dates::dayFirst;
}

ValueCheck recordDateCheck(const SettingsStore& settings)
{
    const ValueCheck asRead = values::date([&settings] { return recordDateFormat(settings); });
    return [&settings, asRead](std::string_view text) {
        const bool mayBeDayFirst = !settings.text(settings::dateFormat);
        return mayBeDayFirst && dates::readDate(text, dates::dayFirst) ? QString() : asRead(text);
    };
}

std::span<const DerivedField<Payment>> Payment::derivedFields()
{
    return paymentDerivedFields;
}

std::string Payment::getTitle() const
{
    return m_order ? std::string(m_order->getTitle()) : std::string();
}

std::string Payment::getOrdernum() const
{
    return m_order ? std::string(m_order->getOrderNum()) : std::string();
}

QDate Payment::getDatepaidasdate() const
{
    const char* format = recordDateFormat(m_settings);
    return dates::readDate(values().datePaid, format).value_or(dates::fallback());
}

bool Payment::contains(std::string_view text) const
{
    if (Record::contains(text))
        return true;
    const FoldedText folded(text);
    return m_order && (folded.occursIn(m_order->getTitle()) || folded.occursIn(m_order->getOrderNum()));
}

void Payment::appendSearchText(std::string& text) const
{
    Record::appendSearchText(text);
    if (m_order)
        text.append(m_order->getTitle()).append(1, '\n').append(m_order->getOrderNum()).append(1, '\n');
}

std::int64_t Payment::getDateByName(std::string_view nameAsDate) const
{
    return nameAsDate == "datepaidasdate" ? getDatepaidasdate().toJulianDay() : Record::getDateByName(nameAsDate);
}

float Payment::getNumericOrdernum() const
{
    return m_order ? m_order->getNumericOrdernum() : 0;
}
