// What is edited row by row in the settings: tax rates, and what belongs to each order status.
#include "app/PrefsController.h"

#include "desktop/Alerts.h"
#include "desktop/TextTable.h"
#include "foundation/Log.h"
#include "foundation/Numbers.h"
#include "orders/StatusColours.h"

#include <cmath>

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

constexpr int fullPart = 255;

/// A part of a colour as it is typed, from 0 to 255.
int typedPart(std::string_view text)
{
    return std::clamp(numbers::leadingInt(text), 0, fullPart);
}

QString shownPart(float part)
{
    return QString::number(std::isfinite(part) ? std::lround(std::clamp(part, 0.0f, 1.0f) * fullPart) : 0);
}

} // namespace

void PrefsController::addTaxRate()
{
    logLine("add tax rate");
    m_taxRates.push_back({"", "Edit me", "0"});
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

void PrefsController::deleteSelectedRate()
{
    const int row = taxTable.selectedRate();
    deleteTaxRate(row);
    taxTable.selectRate(std::min(row, static_cast<int>(m_taxRates.size()) - 1));
}

/// Nobody has statuses of their own: there are none stored and none edited but those of a first start.
bool PrefsController::areStatusesUntouched() const
{
    const std::string first = PrefsForm().statuses.text().toStdString();
    return form.statuses.text().toStdString() == first && m_store.text(settings::statuses).value_or(first) == first;
}

bool PrefsController::takeOver(const PlistValue& offered, const char* key)
{
    const PlistValue* value = offered.find(key);
    if (value)
        m_store.set(key, *value);
    return value;
}

void PrefsController::takeOverUnsaved(const PlistValue& offered)
{
    if (isTaxUntouched()) {
        if (takeOver(offered, settings::handlesTax))
            readHandlesTax();
        if (takeOver(offered, settings::taxRates))
            readTaxRates();
    }
    if (areStatusesUntouched() && takeOver(offered, settings::statuses))
        readText(form.statuses, settings::statuses);
    if (!m_store.value(settings::flagColours))
        takeOver(offered, settings::flagColours);
    populateLists();
}

/// A code that no rate has leaves shipping without tax.
void PrefsController::checkShippingCode()
{
    const std::string code = form.taxShipping.text().toStdString();
    const bool known = code.empty() || getTaxRateForCode(code).has_value();
    form.taxShipping.setFault(known ? QString() : localText("No rate has this code, so shipping has no tax."));
}

/// The statuses to choose from follow their list while it is edited.
void PrefsController::offerStatuses()
{
    const QStringList statuses = getStatusList();
    form.colourStatus.setTitles(statuses);
    if (form.colourStatus.index() < 0)
        form.colourStatus.setIndex(0);
    form.completeStatus.setTitles(statuses);
    form.completeStatus.setOrAddTitle(QString::fromStdString(m_store.text(settings::completeStatus).value_or("")));
    showStatusColour();
}

QString PrefsController::colourPartFault(std::string_view text)
{
    const QString trimmed = QString::fromUtf8(text.data(), static_cast<int>(text.size())).trimmed();
    bool isNumber = false;
    const int part = trimmed.toInt(&isNumber);
    if (trimmed.isEmpty() || (isNumber && part >= 0 && part <= fullPart))
        return {};
    return fillText(localText("This is no number from 0 to 255; it counts as %@."), {QString::number(typedPart(text))});
}

void PrefsController::statusSelectorHasChanged()
{
    showStatusColour();
    Q_EMIT statusColourChanged();
}

void PrefsController::showStatusColour()
{
    const RgbColour colour = shownStatusColour();
    form.colourRed.setText(shownPart(colour.red));
    form.colourGreen.setText(shownPart(colour.green));
    form.colourBlue.setText(shownPart(colour.blue));
}

/// What is being typed stays as it is typed.
void PrefsController::takeColourParts()
{
    const auto part = [](const TextField& field) { return static_cast<float>(typedPart(field.text().toStdString())) / fullPart; };
    storeStatusColour({part(form.colourRed), part(form.colourGreen), part(form.colourBlue)});
}

std::optional<RgbColour> PrefsController::chosenStatusColour() const
{
    const PlistValue* stored = m_store.value(settings::flagColours);
    return stored ? statusColour(*stored, form.colourStatus.title().toStdString()) : std::nullopt;
}

RgbColour PrefsController::shownStatusColour() const
{
    return chosenStatusColour().value_or(RgbColour {1, 1, 1});
}

void PrefsController::setColorForStatus(const RgbColour& colour)
{
    storeStatusColour(colour);
    showStatusColour();
}

void PrefsController::storeStatusColour(const RgbColour& colour)
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
