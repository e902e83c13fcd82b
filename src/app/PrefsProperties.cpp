// What travels with a database: read from the open one, committed to it.
#include "app/PrefsController.h"

#include <array>

namespace {

constexpr std::array databaseTexts {
    &PrefsForm::currency, &PrefsForm::currencyCode, &PrefsForm::orderPrefix, &PrefsForm::itemPrefix, &PrefsForm::contactPrefix};

} // namespace

void PrefsController::readDatabaseProperties()
{
    m_actualDbLocation = QString::fromStdString(getDbLocation());
    readDatabaseText(form.currency, CopyToUser::yes);
    readDatabaseText(form.currencyCode, CopyToUser::yes);
    readDatabaseText(form.orderPrefix, CopyToUser::no);
    readDatabaseText(form.itemPrefix, CopyToUser::no);
    readDatabaseText(form.contactPrefix, CopyToUser::no);
}

void PrefsController::completeDatabaseProperties()
{
    if (!m_properties.objectForKey(actualDbLocation(), settings::currency))
        readDatabaseProperties();
}

void PrefsController::keepDatabaseProperties()
{
    for (TextField PrefsForm::*text : databaseTexts) {
        if ((form.*text).text() != m_committedTexts[(form.*text).name()])
            writeDatabaseText(form.*text);
    }
}

void PrefsController::readDatabaseText(TextField& field, CopyToUser copy)
{
    const std::string key = field.name().toStdString();
    readOwnText(field, key.c_str());
    const std::optional<std::string> own = m_properties.objectForKey(actualDbLocation(), key);
    if (own)
        field.setText(QString::fromStdString(*own));
    else
        writeProperty(actualDbLocation(), field.text(), key);
    if (own && copy == CopyToUser::yes)
        m_store.setText(key, *own);
    m_committedTexts[field.name()] = field.text();
}

void PrefsController::writeDatabaseTexts()
{
    for (TextField PrefsForm::*text : databaseTexts)
        writeDatabaseText(form.*text);
}

void PrefsController::writeDatabaseText(const TextField& field)
{
    commit(field);
    writeProperty(actualDbLocation(), field.text(), field.name().toStdString());
    m_committedTexts[field.name()] = field.text();
}

void PrefsController::writeProperty(const QString& folder, const QString& text, std::string_view key)
{
    if (m_needs.mayWriteInto(folder))
        m_properties.setObjectForKey(folder, text.toStdString(), key);
}
