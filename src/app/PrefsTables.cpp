// The tables of the settings: tax rates, and the colours of order statuses.
#include "app/PrefsController.h"

#include "foundation/Log.h"
#include "orders/StatusColours.h"

namespace {

PlistValue colourEntry(PlistValue entry, const QString& status, const RgbColour& colour)
{
    const auto component = [](float value) { return PlistValue(QString::number(static_cast<double>(value), 'f', 6).toStdString()); };
    entry.set("Status", PlistValue(status.toStdString()));
    entry.set("redComponent", component(colour.red));
    entry.set("greenComponent", component(colour.green));
    entry.set("blueComponent", component(colour.blue));
    entry.set("alphaComponent", component(1));
    return entry;
}

bool isFor(const PlistValue& entry, const QString& status)
{
    const PlistValue* name = entry.isDict() ? entry.find("Status") : nullptr;
    return name && name->asText() == status.toStdString();
}

} // namespace

void PrefsController::addTaxRate()
{
    logLine("add tax rate");
    m_taxRates.push_back({"", "Edit me", "0", PlistValue::makeDict()});
    Q_EMIT taxRatesChanged();
}

void PrefsController::deleteTaxRate(int row)
{
    if (row < 0 || row >= static_cast<int>(m_taxRates.size()))
        return;
    m_taxRates.erase(m_taxRates.begin() + row);
    Q_EMIT taxRatesChanged();
}

void PrefsController::setTaxRateValue(std::string_view column, int row, std::string_view value)
{
    if (row < 0 || row >= static_cast<int>(m_taxRates.size()))
        return;
    TaxRate& rate = m_taxRates[static_cast<std::size_t>(row)];
    if (column == "code")
        rate.code = value;
    else if (column == "description")
        rate.description = value;
    else if (column == "rate")
        rate.rate = value;
    Q_EMIT taxRatesChanged();
}

void PrefsController::statusSelectorHasChanged()
{
    Q_EMIT statusColourChanged();
}

RgbColour PrefsController::shownStatusColour() const
{
    constexpr RgbColour white {1, 1, 1};
    const PlistValue* stored = m_store.value(settings::flagColours);
    return stored ? statusColour(*stored, form.colourStatus.title().toStdString()).value_or(white) : white;
}

void PrefsController::setColorForStatus(const RgbColour& colour)
{
    const QString status = form.colourStatus.title();
    if (form.colourStatus.index() < 0)
        return;
    const PlistValue* stored = m_store.value(settings::flagColours);
    PlistValue entries = PlistValue::makeArray();
    bool replaced = false;
    if (stored && stored->isArray()) {
        for (const PlistValue& entry : stored->array()) {
            const bool first = !replaced && isFor(entry, status);
            entries.append(first ? colourEntry(entry, status, colour) : entry);
            replaced = replaced || first;
        }
    }
    if (!replaced)
        entries.append(colourEntry(PlistValue::makeDict(), status, colour));
    m_store.set(settings::flagColours, std::move(entries));
    Q_EMIT statusColourChanged();
}
