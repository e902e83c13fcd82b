// The open database: which folder it is, who holds its lock, and which file belongs to which collection.
//
// It is what collections ask before they change anything (WriteGate), and it reads, writes, switches and unlocks the folder in the
// order the rules give. It asks and tells through signals and alerts; it shows nothing.
#pragma once

#include "storage/DatabaseFolder.h"
#include "storage/WriteGate.h"

#include <QObject>

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

class Alerts;
class FilePanels;
class PrefsController;
class SettingsStore;
class User;
class qvDataSource;

struct DatabaseSessionNeeds {
    DatabaseFolder& folder;
    PrefsController& preferences;
    SettingsStore& settings;
    Alerts& alerts;
    FilePanels& panels;
    const User& user;
};

class DatabaseSession : public QObject, public WriteGate {
    Q_OBJECT
public:
    explicit DatabaseSession(DatabaseSessionNeeds needs);

    /// A record file, the collection it belongs to, and further collections whose saving takes it along.
    void registerFile(RecordFile& file, qvDataSource& collection, std::vector<const qvDataSource*> alsoWrittenWith = {});
    /// A collection that is emptied by a switch but has no file of its own.
    void registerCollection(qvDataSource& collection) { m_collections.push_back(&collection); }
    /// A collection whose filter runs once more when another database was opened.
    void filterAfterSwitch(qvDataSource& collection) { m_filteredAfterSwitch.push_back(&collection); }

    /// Loads the database at the location setting; a folder elsewhere that is not there is told.
    void readDatabase();
    /// Everything is written, the collections are emptied, and the database at the location setting is loaded.
    void switchDatabase();
    /// Writes every file and takes the lock away. One sentence for each file that could not be written, which says where what it
    /// should hold is kept.
    QStringList writeEverything();
    /// Writes every file and goes on; what could not be written stays unsaved.
    void saveEverything();
    /// Tries again what could not be written.
    void retry();
    /// The user's wish to work in spite of a lock.
    void unlockDatabase();
    void copyDatabase();
    /// Records of the files came back from an earlier state: their lists are asked again and the files are written.
    void recordsRestored(const std::vector<RecordFile*>& files);
    /// The files that a save of this file's collection writes, itself included.
    std::vector<RecordFile*> filesWrittenWith(const RecordFile& file) const;
    /// Adds to what the person is told; see damageFound.
    void tellDamage(const QStringList& sentences);
    /// Tells once more what was told, for whoever was not listening yet.
    void tellAgain();

    bool readOnlyCheck() override;
    bool isReadOnly() const override { return m_readonlymode; }
    void writeDatabase(const qvDataSource& sender) override;
    void writeDatabaseInBackground(const qvDataSource& sender) override;
    void setChangeFlag() override { }

    /// Whether anything may be written into the folder: the open database unless it is read-only, any other unless it is locked.
    bool mayWriteInto(const QString& folder) const;
    QString originalDbLocation() const { return m_folder.location(); }
    /// "Vendaro", or "Vendaro - " and the database's name.
    QString windowTitle() const;
    const LockInfo& lockInfo() const { return m_lockInfo; }

Q_SIGNALS:
    /// Everything that belongs to the records closes: editors, pickers, documents.
    void aboutToSwitch();
    /// After a file's records were taken over: sort, then filter.
    void fileLoaded(RecordFile* file);
    /// The database was loaded and nobody else's lock stood in the way.
    void openedForWriting();
    void databaseRead();
    /// The lock-information sheet is to be shown.
    void locked();
    void unlocked();
    void readOnlyChanged();
    void titleChanged();
    /// Something was written, or could not be; see DatabaseFolder::unsavedReason().
    void savedStateChanged();
    /// All that could not be read, or written at the end, since this database was asked for: one sentence each, none to begin with.
    void damageFound(const QStringList& sentences);

private:
    struct Entry {
        RecordFile* file;
        qvDataSource* collection;
        std::vector<const qvDataSource*> alsoWrittenWith;
    };

    const Entry& entryOf(const RecordFile& file) const;
    std::vector<RecordFile*> filesOf(const qvDataSource& sender) const;
    void openDatabase();
    void filterOthers();
    void write(const std::vector<RecordFile*>& files, DatabaseFolder::When when);
    bool writeAll(QStringList& news);
    /// The default database's.
    QString standardFolder() const;
    void makeFolders();
    void tellNews();
    void noteSaved();
    void readWhatChanged();
    void clearCollections();
    DatabaseFolder::AfterFile afterFile();
    void takeOver(RecordFile& file, bool existed);
    void checkLock();
    bool lockLate(QStringList& news);
    std::vector<RecordFile*> changedFiles() const;
    void meetLock();
    void setReadOnly(bool readOnly);

    DatabaseSessionNeeds m_needs;
    DatabaseFolder& m_folder;
    std::vector<Entry> m_entries;
    /// RecordFile::changes() of each.
    std::map<const RecordFile*, std::optional<std::uint64_t>> m_changesWhenRead;
    std::vector<qvDataSource*> m_collections;
    std::vector<qvDataSource*> m_filteredAfterSwitch;
    LockInfo m_lockInfo;
    QStringList m_damage;
    bool m_readonlymode = false;
    /// There was no lock, and none could be written.
    bool m_hasNoLock = false;
};
