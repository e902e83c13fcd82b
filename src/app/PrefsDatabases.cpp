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

void PrefsController::connectDatabases()
{
    form.databases.onEdited = [this] { selectDatabase(); };
    form.newDatabase.run = [this] { newDatabaseMenuItem(); };
    form.selectDbLocation.run = [this] { selectDbLocation(); };
    form.createDbLocation.run = [this] { createDbLocation(); };
    form.setDbLocationToDefault.run = [this] { setDbLocationToDefault(); };
    newDatabase.setTitle(localText("New database"));
    newDatabase.displayName.onEdited = [this] { checkNewName(); };
    newDatabase.fileName.onEdited = [this] { checkNewName(); };
    newDatabase.confirm.run = [this] { makeNewDatabase(); };
    newDatabase.cancel.run = [this] {
        newDatabase.close();
        switchToFormsLocation();
    };
}

QString PrefsController::supportFolder() const
{
    return expanded(places::support);
}

/// A row without words could not be told from the others.
QString PrefsController::shownName(const QString& folder) const
{
    const std::string name = m_properties.objectForKey(folder, settings::dbName).value_or("");
    return name.empty() ? QFileInfo(folder).completeBaseName() : QString::fromStdString(name);
}

void PrefsController::listDatabases()
{
    const QString selected = m_databaseFiles.value(form.databases.index());
    m_databaseFiles = QDir(supportFolder()).entryList({"*.vendb"}, QDir::Dirs | QDir::NoDotAndDotDot | QDir::CaseSensitive, QDir::Name);
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
    const bool isNamed = !name.trimmed().isEmpty();
    form.databases.setFault(isNamed ? QString() : localText("A database needs a name; it keeps the one it has."));
    const QString folder = supportFolder() + '/' + file;
    if (isNamed && m_needs.mayWriteInto(folder))
        writeProperty(folder, name, settings::dbName);
    else if (isNamed)
        m_needs.alerts.ask(alerts::readOnlyMode);
    listDatabases();
    Q_EMIT databaseRenamed();
}

void PrefsController::newDatabaseMenuItem()
{
    newDatabase.displayName.setText({});
    newDatabase.fileName.setText({});
    checkNewName();
    newDatabase.open();
    newDatabase.focus(newDatabase.displayName);
}

QString PrefsController::newDatabaseName() const
{
    return newDatabase.fileName.text().isEmpty() ? newDatabase.displayName.text() : newDatabase.fileName.text();
}

/// Says beside the fields what the names would make.
void PrefsController::checkNewName()
{
    const QString name = newDatabaseName();
    const QString folder = name + ".vendb";
    const bool usable = folders::isSingleComponent(folder);
    const QString fault = usable ? QString() : localText("The name of a database cannot contain \"/\".");
    const bool byFileName = !newDatabase.fileName.text().isEmpty();
    newDatabase.displayName.setFault(byFileName ? QString() : fault);
    newDatabase.fileName.setFault(byFileName ? fault : QString());
    if (name.isEmpty())
        newDatabase.fileName.setCaption(localText("Enter a name: without one the database is missing from the list of databases."));
    else if (!usable)
        newDatabase.fileName.setCaption(localText("Enter a file name without \"/\"."));
    else if (QFileInfo::exists(supportFolder() + '/' + folder))
        newDatabase.fileName.setCaption(fillText(localText("\"%@\" is there already: it is opened and takes the name above."), {folder}));
    else
        newDatabase.fileName.setCaption(fillText(localText("It is kept as \"%@\"."), {folder}));
}

void PrefsController::makeNewDatabase()
{
    const QString displayName = newDatabase.displayName.text();
    const QString name = newDatabaseName();
    TextField& named = newDatabase.fileName.text().isEmpty() ? newDatabase.displayName : newDatabase.fileName;
    if (!named.fault().isEmpty()) {
        newDatabase.focus(named);
        return;
    }
    const QString location = places::support + ('/' + name) + ".vendb";
    const QString folder = expanded(location);
    if (const Result<void> made = folders::make(folder); !made) {
        logLine(made.error().message);
        named.setFault(QString::fromStdString(made.error().message));
        newDatabase.focus(named);
        return;
    }
    newDatabase.close();
    form.dbLocation.setText(location);
    logLine("new name is " + name.toStdString());
    writeProperty(folder, displayName, settings::dbName);
    switchToFormsLocation();
}

void PrefsController::chooseDbLocation(
    const char* title, const char* prompt, const char* nameLabel, const char* fileType, SavePanel::What what)
{
    SavePanel panel;
    panel.title = localText(title);
    panel.prompt = localText(prompt);
    panel.nameLabel = localText(nameLabel);
    panel.fileType = QString::fromLatin1(fileType);
    panel.what = what;
    panel.folder = QFileInfo(expanded(QString::fromStdString(getDbLocation()))).path();
    const std::optional<QString> chosen = m_needs.panels.saveFile(panel);
    if (!chosen)
        return;
    form.dbLocation.setText(*chosen);
    m_needs.alerts.ask(alerts::locationChosen);
}

void PrefsController::selectDbLocation()
{
    chooseDbLocation("Choose an existing database", "Choose", "database name", "vendb", SavePanel::What::existingFolder);
}

void PrefsController::createDbLocation()
{
    chooseDbLocation("Create new database", "Create", "", "", SavePanel::What::newFile);
}

bool PrefsController::isFormsLocationOpen() const
{
    return expanded(QString::fromStdString(getDbLocation())) == actualDbLocation();
}

void PrefsController::setDbLocationToDefault()
{
    if (m_needs.alerts.ask(alerts::switchToDefaultDatabase) == 0) {
        form.dbLocation.setText(places::defaultDatabase);
        form.databases.setIndex(-1);
    }
    switchToFormsLocation();
}
