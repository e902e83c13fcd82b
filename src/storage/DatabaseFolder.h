// The database folder on disk: reading all its record files, and writing them so that nothing is ever lost.
//
// Before a day's first write what the files hold is kept as a generation. Every write is a snapshot taken on the main thread and
// written by one worker in the order asked for. Files asked for together change together or not at all. A file that cannot be written
// stays unsaved and goes with the next write of its collection and with every retry. Reading never changes the folder; an interrupted
// write is read through and put right before the first write. When the folder is no longer the one that was read (a share came loose),
// writing goes on and a copy goes to the recovery store; it counts as unsaved until it is in its own folder. What somebody else wrote
// into it meanwhile goes there before it is written over.
#pragma once

#include "foundation/Result.h"
#include "storage/DatabaseLock.h"
#include "storage/Generations.h"
#include "storage/KnownFiles.h"
#include "storage/RecordFile.h"
#include "storage/RecoveryStore.h"

#include <QString>
#include <QStringList>

#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <span>
#include <thread>
#include <vector>

/// What a load met.
struct LoadReport {
    /// One sentence for each file that could not be read, naming the file, the place in it and where its original was kept.
    QStringList damaged;
};

class DatabaseFolder {
public:
    DatabaseFolder(RecoveryStore& recovery, const Clock& clock, const User& user);
    ~DatabaseFolder();

    /// In the order the files are to be read in.
    void registerFile(RecordFile& file) { m_files.push_back(&file); }
    const std::vector<RecordFile*>& files() const { return m_files; }

    /// The folder that was loaded; every write goes there.
    const QString& location() const { return m_location; }
    DatabaseLock& lock() { return m_lock; }
    const Generations& generations() const { return m_generations; }

    using AfterFile = std::function<void(RecordFile&, bool existed)>;
    /// Reads every registered file that exists. afterFile runs after each file's records were taken over, missing ones included.
    LoadReport load(const QString& location, const AfterFile& afterFile);
    /// Whether a record file came, went or changed since it was read.
    bool changedSinceRead() const;
    /// Reads the loaded folder once more; the lock stays as it is. The collections must be empty.
    LoadReport readAgain(const AfterFile& afterFile);

    enum class When { now, inBackground };
    /// Writes the files as they are at this moment, together. With now they are on disk when it returns, after all asked for before.
    void write(std::span<RecordFile* const> files, When when);
    /// Sees to it that all files hold what they should: those that do not are written.
    void writeEverything();
    /// Keeps the files as they are on disk as a generation, after all that was asked for before.
    Result<void> keepGeneration();
    /// Waits until everything asked for is written (or has failed).
    void drain();
    /// Tries again what could not be written.
    void retry();

    /// Empty when nothing is known to be unsaved, else why something is not.
    QString unsavedReason() const;
    /// Whether something that was asked for is still to be written.
    bool isWriting() const;
    /// Puts what could not be written into the recovery store, as it is now; one sentence for each file that is not where it belongs.
    QStringList keepUnsaved();
    /// Puts what the files should hold into the recovery store, since they may not be written; one sentence for each.
    QStringList keepInstead(std::span<RecordFile* const> files);
    /// What the person should know of the writes since this was asked last, one sentence each.
    QStringList takeNews();
    /// Runs on the worker's thread after a write; the program posts it to its own.
    std::function<void()> onSavedStateChanged;

    /// A copy for reading elsewhere, with its own lock; what is unsaved is not in it.
    Result<void> copyTo(const QString& target);

private:
    struct Piece {
        RecordFile* file;
        std::shared_ptr<FileSnapshot> snapshot;
        /// Of the file's changes, those that are in the snapshot.
        std::optional<std::uint64_t> changes;
    };
    struct Job {
        QString folder;
        std::vector<Piece> pieces;
        /// Nobody said that anything changed.
        bool mayBeThereAlready = false;
        /// What went into a folder in the place of the one that was opened waits until that one is back.
        bool isAgain = false;
    };
    struct Unsaved {
        QString reason;
        /// It is written, but into a folder that took the place of the one that was opened, and a copy is kept.
        bool isElsewhere = false;
    };

    /// What tells a folder from another one that took its place.
    using Identity = std::pair<unsigned long long, unsigned long long>;

    static std::string pathIn(const QString& folder, const RecordFile& file);
    static std::optional<Identity> identityOf(const QString& folder);
    void adopt(RecordFile& file, ParsedFile& parsed, bool isMarked);
    Job jobFor(std::span<RecordFile* const> files) const;
    bool isAsKnown(const RecordFile& file) const;
    /// Does what changes the files' stamps but not their contents: what was as it was known to be still is afterwards.
    Result<void> keepingStamps(const std::function<Result<void>()>& change);
    QStringList fileNames() const;
    void forgetState();
    void tellDamaged(RecordFile& file, const std::string& path, const std::string& reason, LoadReport& report);
    void tellLeftOut(const RecordFile& file, LoadReport& report);
    void tellUnreadable(const std::string& reason, LoadReport& report);
    static bool isOfSameFiles(const Job& one, const Job& other);
    void enqueue(Job job);
    void work();
    void perform(const Job& job);
    void attempt(const Job& job);
    void writeJob(const Job& job);
    Job withoutWhatIsElsewhere(const Job& job) const;
    std::vector<Piece> piecesToWrite(const Job& job);
    Job withoutWhatIsThere(const Job& job);
    void keepState();
    Result<void> writeGroup(const QString& folder, std::span<const Piece> pieces);
    void noteWritten(const Piece& piece);
    void writeAlone(const Job& job);
    void settled(const Piece& piece, const Result<void>& result);
    Result<void> prepareFolder(const QString& folder);
    std::vector<RecordFile*> unsavedFiles() const;
    bool isWhereItWas(const QString& folder);
    QString goneReason() const;
    void keepElsewhere(const Piece& piece);
    Result<QString> keepInRecovery(const RecordFile& file, const FileSnapshot& snapshot, KeptFor reason);
    Result<void> keepWhatIsThere(const QString& folder, const RecordFile& file);
    Result<void> keepDamagedOriginal(const QString& folder, const RecordFile& file);
    Result<void> keepForeign(const RecordFile& file);

    RecoveryStore& m_recovery;
    Generations m_generations;
    DatabaseLock m_lock;
    QString m_location;
    std::vector<RecordFile*> m_files;
    /// Of the loaded folder. For the worker while it has something to do.
    KnownFiles m_known;
    /// Something did not read: before the first write the files go into a generation as they are. For the worker, as above.
    bool m_mustKeepState = false;

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<Job> m_jobs;
    std::map<RecordFile*, Unsaved> m_unsaved;
    /// Files of the loaded folder that did not read, or not with everything in them, and whose originals are not kept yet.
    std::set<const RecordFile*> m_damaged;
    /// Of the loaded folder; none until there is one.
    std::optional<Identity> m_identity;
    /// The newest copy of each file that was written while the folder was another one.
    std::map<const RecordFile*, QString> m_keptElsewhere;
    QStringList m_news;
    bool m_folderGone = false;
    bool m_busy = false;
    /// The worker is at a job; m_busy lasts until what became of it is told, too.
    bool m_performing = false;
    bool m_stopping = false;
    bool m_repaired = false;
    std::thread m_worker;
};
