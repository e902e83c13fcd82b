#include "app/DatabaseSession.h"

#include "app/Places.h"
#include "app/PrefsController.h"
#include "desktop/AlertTexts.h"
#include "desktop/Desktop.h"
#include "desktop/TextTable.h"
#include "foundation/Folders.h"
#include "foundation/Log.h"
#include "storage/qvDataSource.h"

#include <QFileInfo>

#include <algorithm>

DatabaseSession::DatabaseSession(DatabaseSessionNeeds needs) : m_needs(needs), m_folder(needs.folder)
{
    m_folder.onSavedStateChanged = [this] { QMetaObject::invokeMethod(this, &DatabaseSession::noteSaved, Qt::QueuedConnection); };
}

void DatabaseSession::noteSaved()
{
    tellNews();
    Q_EMIT savedStateChanged();
}

void DatabaseSession::registerFile(RecordFile& file, qvDataSource& collection, std::vector<const qvDataSource*> alsoWrittenWith)
{
    m_folder.registerFile(file);
    m_entries.push_back({&file, &collection, std::move(alsoWrittenWith)});
    m_collections.push_back(&collection);
}

// Loading

void DatabaseSession::readDatabase()
{
    const QString folder = m_needs.preferences.actualDbLocation();
    const bool isThere = QFileInfo::exists(folder);
    openDatabase();
    // Perhaps a share that is not connected. The very first start finds no folder either.
    if (!isThere && folder != standardFolder())
        tellDamage({fillText(localText("%@ was not there when it was opened. It is made with the first save."), {folder})});
}

void DatabaseSession::openDatabase()
{
    const LoadReport report = m_folder.load(m_needs.preferences.actualDbLocation(), afterFile());
    Q_EMIT titleChanged();
    checkLock();
    tellDamage(report.damaged);
    // Somebody may have written between the reading and the lock; from now on nobody else does.
    if (!m_readonlymode) {
        readWhatChanged();
        Q_EMIT openedForWriting();
    }
    Q_EMIT databaseRead();
}

void DatabaseSession::readWhatChanged()
{
    if (!m_folder.changedSinceRead())
        return;
    logLine("the database changed since it was read, reading it again");
    clearCollections();
    tellDamage(m_folder.readAgain(afterFile()).damaged);
}

void DatabaseSession::clearCollections()
{
    for (qvDataSource* collection : m_collections) {
        collection->clearDeleteBuffer();
        collection->clear();
    }
}

void DatabaseSession::tellDamage(const QStringList& sentences)
{
    const auto known = m_damage.size();
    for (const QString& sentence : sentences) {
        if (!m_damage.contains(sentence))
            m_damage += sentence;
    }
    if (m_damage.size() != known)
        Q_EMIT damageFound(m_damage);
}

void DatabaseSession::tellAgain()
{
    if (!m_damage.isEmpty())
        Q_EMIT damageFound(m_damage);
}

DatabaseFolder::AfterFile DatabaseSession::afterFile()
{
    return [this](RecordFile& file, bool existed) {
        takeOver(file, existed);
        m_changesWhenRead[&file] = file.changes();
    };
}

void DatabaseSession::takeOver(RecordFile& file, bool existed)
{
    const Entry& entry = entryOf(file);
    const std::string_view name = file.fileName();
    if (!existed && name == recordFiles::contacts)
        logLine("can't find contacts at " + (m_folder.location() + '/' + file.fileName()).toStdString());
    Q_EMIT fileLoaded(&file);
    entry.collection->setDefaultSortNew(m_needs.preferences.getDefaultSortNew());
    entry.collection->applyCurrentSort();
    if (name == recordFiles::orders)
        logLine("filtering orders");
    entry.collection->filter();
}

const DatabaseSession::Entry& DatabaseSession::entryOf(const RecordFile& file) const
{
    return *std::find_if(m_entries.begin(), m_entries.end(), [&](const Entry& candidate) { return candidate.file == &file; });
}

void DatabaseSession::checkLock()
{
    m_hasNoLock = false;
    if (m_folder.lock().exists()) {
        meetLock();
        return;
    }
    if (m_folder.location() == standardFolder())
        makeFolders();
    const Result<bool> acquired = m_folder.lock().acquire();
    if (acquired && !acquired.value()) {
        meetLock();
        return;
    }
    m_hasNoLock = !acquired;
    logLine(acquired ? "lock written successfully" : "lock not written successfully");
    setReadOnly(false);
}

/// A folder that could not be locked, because it was not there yet or for another reason, is locked before anything is written into it,
/// once that can be done. False when somebody else was faster, or has been in it meanwhile: nothing may be written, and the news say where
/// what it should hold is kept.
bool DatabaseSession::lockLate(QStringList& news)
{
    if (!m_hasNoLock)
        return true;
    const Result<bool> acquired = m_folder.lock().acquire();
    if (!acquired)
        return true;
    m_hasNoLock = false;
    if (acquired.value() && !m_folder.changedSinceRead()) {
        logLine("lock written successfully");
        return true;
    }
    news += m_folder.keepInstead(changedFiles());
    if (!acquired.value()) {
        meetLock();
        return false;
    }
    // A share that was not connected when it was read, or whose lock came and went: what is in it now was never seen.
    m_folder.lock().release();
    news += fillText(localText("%@ could not be locked when it was opened, and its files are others now. Nothing is written into it. "
                               "Start Vendaro again to work with them."),
        {m_folder.location()});
    setReadOnly(true);
    return false;
}

/// Those whose records are no longer what was read. Where changes are not counted, all that have any.
std::vector<RecordFile*> DatabaseSession::changedFiles() const
{
    std::vector<RecordFile*> changed;
    for (const Entry& entry : m_entries) {
        const std::optional<std::uint64_t> changes = entry.file->changes();
        const auto whenRead = m_changesWhenRead.find(entry.file);
        const bool isAsRead = whenRead != m_changesWhenRead.end() && whenRead->second == changes;
        if (changes ? !isAsRead : entry.collection->getCount() > 0)
            changed.push_back(entry.file);
    }
    return changed;
}

void DatabaseSession::meetLock()
{
    m_lockInfo = m_folder.lock().read();
    setReadOnly(true);
    const std::string reason = m_lockInfo.reason.value_or(DatabaseLock::openReason);
    if (reason == DatabaseLock::openReason)
        Q_EMIT locked();
    else if (reason == DatabaseLock::offlineReason)
        m_needs.alerts.ask(makeAlert(alerts::offlineDatabase, {}, {toQString(m_lockInfo.user), toQString(m_lockInfo.datetime)}));
}

void DatabaseSession::setReadOnly(bool readOnly)
{
    if (m_readonlymode == readOnly)
        return;
    m_readonlymode = readOnly;
    Q_EMIT readOnlyChanged();
}

QString DatabaseSession::windowTitle() const
{
    const QString name = QString::fromStdString(m_needs.preferences.getDatabaseName());
    return name.isEmpty() ? QString("Vendaro") : "Vendaro - " + name;
}

// Writing

bool DatabaseSession::readOnlyCheck()
{
    QStringList news;
    if (!m_readonlymode)
        lockLate(news);
    tellDamage(news);
    if (m_readonlymode)
        m_needs.alerts.ask(alerts::readOnlyMode);
    return !m_readonlymode;
}

bool DatabaseSession::mayWriteInto(const QString& folder) const
{
    if (folder != m_folder.location())
        return !DatabaseLock::standsIn(folder);
    const bool isOthers = m_hasNoLock && (DatabaseLock::standsIn(folder) || m_folder.changedSinceRead());
    return !m_readonlymode && !isOthers;
}

std::vector<RecordFile*> DatabaseSession::filesOf(const qvDataSource& sender) const
{
    std::vector<RecordFile*> files;
    for (const Entry& entry : m_entries) {
        const auto& also = entry.alsoWrittenWith;
        if (entry.collection == &sender || std::find(also.begin(), also.end(), &sender) != also.end())
            files.push_back(entry.file);
    }
    return files;
}

std::vector<RecordFile*> DatabaseSession::filesWrittenWith(const RecordFile& file) const
{
    return filesOf(*entryOf(file).collection);
}

void DatabaseSession::recordsRestored(const std::vector<RecordFile*>& files)
{
    for (RecordFile* file : files)
        takeOver(*file, true);
    filterOthers();
    write(files, DatabaseFolder::When::now);
}

void DatabaseSession::write(const std::vector<RecordFile*>& files, DatabaseFolder::When when)
{
    if (m_readonlymode)
        return;
    makeFolders();
    QStringList news;
    if (lockLate(news)) {
        m_folder.write(files, when);
        news += m_folder.takeNews();
    }
    tellDamage(news);
}

void DatabaseSession::retry()
{
    if (m_readonlymode)
        return;
    QStringList news;
    if (lockLate(news))
        m_folder.retry();
    tellDamage(news);
}

/// Of writes in the background it is told when they are done.
void DatabaseSession::tellNews()
{
    tellDamage(m_folder.takeNews());
}

void DatabaseSession::writeDatabase(const qvDataSource& sender)
{
    write(filesOf(sender), DatabaseFolder::When::now);
}

void DatabaseSession::writeDatabaseInBackground(const qvDataSource& sender)
{
    write(filesOf(sender), DatabaseFolder::When::inBackground);
}

void DatabaseSession::saveEverything()
{
    QStringList news;
    writeAll(news);
    tellDamage(news);
}

QStringList DatabaseSession::writeEverything()
{
    QStringList news;
    if (!writeAll(news))
        return news;
    news += m_folder.keepUnsaved();
    if (!m_folder.lock().release())
        logLine("error: lock not removed from database");
    return news;
}

/// False when nothing may be written.
bool DatabaseSession::writeAll(QStringList& news)
{
    // The end may come before there was time to read anything.
    if (m_readonlymode || m_folder.location().isEmpty())
        return false;
    makeFolders();
    if (!lockLate(news))
        return false;
    m_folder.writeEverything();
    news += m_folder.takeNews();
    return true;
}

QString DatabaseSession::standardFolder() const
{
    return folders::expandHome(places::defaultDatabase, m_needs.user.home());
}

void DatabaseSession::makeFolders()
{
    const QString standard = standardFolder();
    if (!QFileInfo::exists(standard)) {
        if (const Result<void> made = folders::make(standard); !made)
            logLine(made.error().message);
        // A new database has nothing to upgrade.
        m_needs.settings.set(settings::askAboutUpgrading, PlistValue::makeBoolean(true));
    }
    if (const Result<void> made = folders::make(m_folder.location()); !made)
        logLine(made.error().message);
}

// Switching, unlocking, copying

void DatabaseSession::switchDatabase()
{
    Q_EMIT aboutToSwitch();
    m_damage.clear();
    Q_EMIT damageFound(m_damage);
    m_needs.preferences.keepDatabaseProperties();
    tellDamage(writeEverything());
    clearCollections();
    m_needs.preferences.readDatabaseProperties();
    openDatabase();
    filterOthers();
}

void DatabaseSession::filterOthers()
{
    for (qvDataSource* collection : m_filteredAfterSwitch)
        collection->filter();
}

void DatabaseSession::unlockDatabase()
{
    Q_EMIT unlocked();
    if (!m_folder.lock().exists()) {
        m_needs.alerts.ask(alerts::databaseNotLocked);
        return;
    }
    const LockInfo asked = m_folder.lock().read();
    if (m_needs.alerts.ask(alerts::unlockDatabase) != 1)
        return;
    const Result<bool> opened = m_folder.lock().forceOpen(asked);
    if (!opened) {
        logLine(opened.error().message);
        m_needs.alerts.ask({localText(alerts::unlockDatabase.title), QString::fromStdString(opened.error().message), {localText("OK")}});
        return;
    }
    if (!opened.value()) {
        // While the question was there, its lock went. Whoever may hold another one was not asked about.
        if (m_folder.lock().exists())
            meetLock();
        else
            m_needs.alerts.ask(alerts::databaseNotLocked);
        return;
    }
    // Whoever held the lock may have written until a moment ago; what was read then must not be written over it.
    if (m_folder.changedSinceRead()) {
        Q_EMIT aboutToSwitch();
        readWhatChanged();
        Q_EMIT databaseRead();
    }
    setReadOnly(false);
}

void DatabaseSession::copyDatabase()
{
    const std::optional<QString> target =
        m_needs.panels.saveFile({localText("Choose a location and name for the copy database"), "vendb", {}, {}, {}, {}});
    if (!target) {
        logLine("lock not written into copy successfully");
        return;
    }
    if (const Result<void> copied = m_folder.copyTo(*target); !copied) {
        logLine(copied.error().message);
        logLine("lock not written into copy successfully");
        m_needs.alerts.ask({localText("Copy database"), QString::fromStdString(copied.error().message), {localText("OK")}});
    }
}
