// The databases of the user: listing, choosing, making and renaming them.
#include "app/PrefsController.h"

#include "app/Places.h"
#include "desktop/AlertTexts.h"
#include "desktop/Desktop.h"
#include "desktop/TextTable.h"
#include "foundation/Folders.h"
#include "foundation/Log.h"

#include <QDir>
#include <QFileInfo>

QString PrefsController::supportFolder() const
{
    return expanded(places::support);
}

QString PrefsController::shownName(const QString& folder) const
{
    const std::optional<std::string> name = m_properties.objectForKey(folder, settings::dbName);
    return name ? QString::fromStdString(*name) : QFileInfo(folder).completeBaseName();
}

void PrefsController::listDatabases()
{
    const QString selected = m_databaseFiles.value(form.databases.index());
    m_databaseFiles = QDir(supportFolder()).entryList({"*.vendb"}, QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    QStringList names;
    for (const QString& file : m_databaseFiles)
        names += shownName(supportFolder() + '/' + file);
    form.databases.setTitles(names);
    form.databases.setIndex(static_cast<int>(m_databaseFiles.indexOf(selected)));
    const QFileInfo open(actualDbLocation());
    if (form.databases.index() < 0 && open.path() == supportFolder())
        form.databases.setIndex(static_cast<int>(m_databaseFiles.indexOf(open.fileName())));
}

void PrefsController::selectDatabase()
{
    const QString file = m_databaseFiles.value(form.databases.index());
    if (file.isEmpty() || supportFolder() + '/' + file == actualDbLocation())
        return;
    if (m_needs.alerts.ask(alerts::switchDatabase) != 0) {
        form.databases.setIndex(-1);
        return;
    }
    form.dbLocation.setText(places::support + ('/' + file));
    switchToFormsLocation();
}

void PrefsController::switchToFormsLocation()
{
    setDbLocation(QString::fromStdString(getDbLocation()));
    m_needs.switchDatabase();
}

void PrefsController::renameDatabase(const QString& name)
{
    const QString file = m_databaseFiles.value(form.databases.index());
    if (file.isEmpty())
        return;
    const QString folder = supportFolder() + '/' + file;
    if (m_needs.mayWriteInto(folder))
        writeProperty(folder, name, settings::dbName);
    else
        m_needs.alerts.ask(alerts::readOnlyMode);
    listDatabases();
}

void PrefsController::newDatabaseMenuItem()
{
    newDatabase.displayName.setText({});
    newDatabase.fileName.setText({});
    newDatabase.open();
    newDatabase.focus(newDatabase.displayName);
}

void PrefsController::makeNewDatabase()
{
    const QString displayName = newDatabase.displayName.text();
    const QString name = newDatabase.fileName.text().isEmpty() ? displayName : newDatabase.fileName.text();
    if (!folders::isSingleComponent(name + ".vendb")) {
        m_needs.alerts.ask({localText("New database"), localText("The name of a database cannot contain \"/\"."), {localText("OK")}});
        return;
    }
    const QString location = places::support + ('/' + name) + ".vendb";
    const QString folder = expanded(location);
    if (const Result<void> made = folders::make(folder); !made) {
        logLine(made.error().message);
        m_needs.alerts.ask({localText("New database"), QString::fromStdString(made.error().message), {localText("OK")}});
        return;
    }
    newDatabase.close();
    form.dbLocation.setText(location);
    logLine("new name is " + name.toStdString());
    writeProperty(folder, displayName, settings::dbName);
    switchToFormsLocation();
}

void PrefsController::chooseDbLocation(const char* title, const char* prompt, const char* nameLabel, const char* fileType)
{
    SavePanel panel;
    panel.title = localText(title);
    panel.prompt = localText(prompt);
    panel.nameLabel = localText(nameLabel);
    panel.fileType = QString::fromLatin1(fileType);
    panel.folder = QFileInfo(expanded(QString::fromStdString(getDbLocation()))).path();
    const std::optional<QString> chosen = m_needs.panels.saveFile(panel);
    if (!chosen)
        return;
    form.dbLocation.setText(*chosen);
    m_needs.alerts.ask(alerts::locationChosen);
}

void PrefsController::selectDbLocation()
{
    chooseDbLocation("Choose an existing database", "Choose", "database name", "vendb");
}

void PrefsController::createDbLocation()
{
    chooseDbLocation("Create new database", "Create", "", "");
}

void PrefsController::setDbLocationToDefault()
{
    if (m_needs.alerts.ask(alerts::switchToDefaultDatabase) == 0) {
        form.dbLocation.setText(places::defaultDatabase);
        form.databases.setIndex(-1);
    }
    switchToFormsLocation();
}
