// What editing the settings does at once, and what is told beside their fields.
#include "app/PrefsController.h"

#include "desktop/ValueCheck.h"
#include "foundation/Numbers.h"

void PrefsController::openWindow()
{
    listDatabases();
    form.open();
}

void PrefsController::connectForm()
{
    form.dateFormat.onEdited = [this] {
        m_dateFormatChosen = true;
        switchDateFormat();
    };
    form.handlesTax.onEdited = [this] {
        enableTaxControls();
        removeHiddenColumns();
    };
    form.pricesTaxInclusive.onEdited = [this] { showPrices(); };
    for (TextField* word : {&form.termOrder, &form.termOrders, &form.termItem, &form.termItems, &form.termBOM})
        word->onEdited = [this] { Q_EMIT wordsChanged(); };
    form.statuses.onEdited = [this] { offerStatuses(); };
    form.colourStatus.onEdited = [this] { statusSelectorHasChanged(); };
    for (TextField* part : {&form.colourRed, &form.colourGreen, &form.colourBlue})
        part->onEdited = [this] { takeColourParts(); };
    form.completeStatus.onEdited = [this] {
        m_store.setText(settings::completeStatus, form.completeStatus.title().toStdString());
        Q_EMIT completeStatusChanged();
    };
    form.timeRate.onEdited = [this] { commit(form.timeRate); };
    form.timeUnit.onEdited = [this] { m_store.setText(settings::timeLoggingUnit, form.timeUnit.title().toStdString()); };
    form.addTaxRate.run = [this] { addTaxRate(); };
    form.deleteTaxRate.run = [this] { deleteSelectedRate(); };
    taxTable.onEdited = [this](std::string_view column, int row, std::string_view value) { setTaxRateValue(column, row, value); };
    connect(this, &PrefsController::taxRatesChanged, this, [this] {
        taxTable.reloadData();
        checkShippingCode();
    });
    form.ok.run = [this] {
        // Whoever confirms the settings has seen how dates are written.
        m_dateFormatChosen = true;
        OKButton();
    };
    form.leave.run = [this] { form.close(); };
}

void PrefsController::checkValues()
{
    checkFields(form,
        {
            {&form.stockWarn, values::wholeNumber()},
            {&form.timeRate, values::leadingNumber(numbers::leadingFloat)},
            {&form.colourRed, colourPartFault},
            {&form.colourGreen, colourPartFault},
            {&form.colourBlue, colourPartFault},
        });
    connect(&form, &Form::fieldChanged, this, [this](const FormField* field) {
        if (field == &form.taxShipping)
            checkShippingCode();
    });
}

/// What has a registered default is stored when it is edited, and only then.
void PrefsController::readOwnDefaults()
{
    readText(form.timeRate, settings::timeLoggingRate);
    form.timeUnit.setOrAddTitle(QString::fromStdString(m_store.text(settings::timeLoggingUnit).value_or("")));
}
