#include "storage/DatabaseFolder.h"

#include "desktop/Desktop.h"
#include "foundation/Folders.h"
#include "foundation/Log.h"
#include "foundation/SafeFile.h"
#include "foundation/plist/PlistWriter.h"
#include "storage/RecoveryStore.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <future>
#include <iterator>

#include <sys/stat.h>

namespace {

std::string pathIn(const QString& folder, const RecordFile& file)
{
    return (folder + '/' + file.fileName()).toStdString();
}

/// A record file as it came from the disk, before its collection has it.
struct ReadFile {
    std::string path;
    bool exists = false;
    /// None when there is no file, or when it could not be read for the reason given.
    std::unique_ptr<ParsedFile> parsed;
    std::string reason;
};

/// Reads the new contents that an interrupted write left, when there are such, else the file itself.
ReadFile readRecordFile(RecordFile& file, const std::string& ownPath, const std::string& instead)
{
    ReadFile result {instead.empty() ? ownPath : instead, false, {}, {}};
    FileBytes bytes = readWholeFile(result.path);
    if (bytes.trouble == ReadTrouble::missing && !instead.empty()) {
        // Another program has put them into their place meanwhile.
        result.path = ownPath;
        bytes = readWholeFile(ownPath);
    }
    result.exists = bytes.trouble != ReadTrouble::missing;
    result.reason = bytes.reason;
    if (bytes.trouble != ReadTrouble::none)
        return result;
    Result<std::unique_ptr<ParsedFile>> parsed = file.parse(bytes.bytes);
    if (parsed)
        result.parsed = std::move(parsed).value();
    else
        result.reason = parsed.error().message;
    return result;
}

void writeSnapshot(const FileSnapshot& snapshot, SafeFile& target)
{
    PlistWriter writer([&](std::string_view bytes) { target.append(bytes); });
    snapshot.write(writer);
}

} // namespace

DatabaseFolder::DatabaseFolder(RecoveryStore& recovery, const Clock& clock, const User& user)
    : m_recovery(recovery)
    , m_lock(clock, user)
    , m_worker([this] { work(); })
{
}

DatabaseFolder::~DatabaseFolder()
{
    {
        const std::lock_guard guard(m_mutex);
        m_stopping = true;
    }
    m_changed.notify_all();
    m_worker.join();
}

// Reading

std::optional<DatabaseFolder::Identity> DatabaseFolder::identityOf(const QString& folder)
{
    struct stat status { };
    if (::stat(folder.toStdString().c_str(), &status) != 0)
        return std::nullopt;
    return Identity {status.st_dev, status.st_ino};
}

DatabaseFolder::Stamp DatabaseFolder::stampOf(const std::string& path)
{
    struct stat status { };
    if (::stat(path.c_str(), &status) != 0)
        return {};
    return {static_cast<long long>(status.st_ino), status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec, status.st_ctim.tv_sec,
        status.st_ctim.tv_nsec};
}

LoadReport DatabaseFolder::load(const QString& location, const AfterFile& afterFile)
{
    drain();
    m_location = location;
    m_lock.setFolder(location);
    m_repaired = false;
    return readAgain(afterFile);
}

bool DatabaseFolder::changedSinceRead() const
{
    return std::any_of(m_files.begin(), m_files.end(), [this](const RecordFile* file) {
        const auto read = m_stamps.find(file);
        return read != m_stamps.end() && read->second != stampOf(pathIn(m_location, *file));
    });
}

void DatabaseFolder::forgetState()
{
    const std::lock_guard guard(m_mutex);
    m_unsaved.clear();
    m_damaged.clear();
    m_identity = identityOf(m_location);
    m_keptElsewhere.clear();
    m_folderGone = false;
}

LoadReport DatabaseFolder::readAgain(const AfterFile& afterFile)
{
    drain();
    forgetState();
    // Before anything is looked at: what changes from here on shows later.
    for (const RecordFile* file : m_files)
        m_stamps[file] = stampOf(pathIn(m_location, *file));
    LoadReport report;
    const std::map<std::string, std::string> instead = FileGroup::interrupted(m_location.toStdString());
    const auto startReading = [&](RecordFile& file) {
        file.forget();
        const auto interrupted = instead.find(file.fileName());
        const std::string other = interrupted == instead.end() ? std::string() : interrupted->second;
        return std::async(
            std::launch::async, [&file, path = pathIn(m_location, file), other] { return readRecordFile(file, path, other); });
    };
    // One file is read ahead while the one before it is read and handed over; they are handed over in their order.
    std::future<ReadFile> next = m_files.empty() ? std::future<ReadFile>() : startReading(*m_files.front());
    for (std::size_t i = 0; i < m_files.size(); ++i) {
        std::future<ReadFile> current = std::exchange(next, {});
        if (i + 1 < m_files.size())
            next = startReading(*m_files[i + 1]);
        const ReadFile read = current.get();
        RecordFile& file = *m_files[i];
        if (read.parsed)
            read.parsed->adopt();
        else if (read.exists)
            tellDamaged(file, read.path, read.reason, report);
        file.loaded();
        afterFile(file, read.exists);
    }
    return report;
}

void DatabaseFolder::tellDamaged(RecordFile& file, const std::string& path, const std::string& reason, LoadReport& report)
{
    const Result<QString> kept = m_recovery.keepCopy(QString::fromStdString(path));
    const std::string where = kept ? "Its original is kept as " + kept.value().toStdString() + "."
                                   : "Its original could not be copied yet: " + kept.error().message + ".";
    if (!kept) {
        const std::lock_guard guard(m_mutex);
        m_damaged.insert(&file);
    }
    const std::string sentence = std::string(file.fileName()) + " could not be read (" + reason + "). " + where;
    logLine(sentence);
    report.damaged += QString::fromStdString(sentence);
}

// Writing

void DatabaseFolder::write(std::span<RecordFile* const> files, When when)
{
    Job job {m_location, {}};
    for (RecordFile* file : files)
        job.pieces.push_back({file, std::shared_ptr<FileSnapshot>(file->snapshot())});
    enqueue(std::move(job));
    if (when == When::now)
        drain();
}

void DatabaseFolder::enqueue(Job job)
{
    {
        const std::lock_guard guard(m_mutex);
        m_jobs.push_back(std::move(job));
    }
    m_changed.notify_all();
}

void DatabaseFolder::drain()
{
    std::unique_lock guard(m_mutex);
    m_changed.wait(guard, [this] { return m_jobs.empty() && !m_busy; });
}

void DatabaseFolder::retry()
{
    const std::vector<RecordFile*> unsaved = unsavedFiles();
    if (!unsaved.empty())
        write(unsaved, When::inBackground);
}

std::vector<RecordFile*> DatabaseFolder::unsavedFiles() const
{
    const std::lock_guard guard(m_mutex);
    std::vector<RecordFile*> unsaved;
    std::copy_if(
        m_files.begin(), m_files.end(), std::back_inserter(unsaved), [this](RecordFile* file) { return m_unsaved.contains(file); });
    return unsaved;
}

QString DatabaseFolder::unsavedReason() const
{
    const std::lock_guard guard(m_mutex);
    if (!m_unsaved.empty())
        return m_unsaved.begin()->second;
    return m_folderGone ? m_location + " is not the folder that was opened" : QString();
}

QStringList DatabaseFolder::keepUnsaved()
{
    drain();
    QStringList sentences;
    for (const RecordFile* file : unsavedFiles()) {
        const Result<QString> kept = keepInRecovery(*file, *file->snapshot());
        const std::string sentence = std::string(file->fileName()) + " could not be written. "
            + (kept ? "What it should hold is kept as " + kept.value().toStdString() : kept.error().message) + ".";
        logLine(sentence);
        sentences += QString::fromStdString(sentence);
    }
    return sentences;
}

Result<QString> DatabaseFolder::keepInRecovery(const RecordFile& file, const FileSnapshot& snapshot)
{
    std::string bytes;
    PlistWriter writer([&](std::string_view piece) { bytes += piece; });
    snapshot.write(writer);
    return m_recovery.keepBytes(file.fileName(), bytes);
}

void DatabaseFolder::work()
{
    std::unique_lock guard(m_mutex);
    for (;;) {
        m_changed.wait(guard, [this] { return m_stopping || !m_jobs.empty(); });
        if (m_jobs.empty())
            return;
        const Job job = std::move(m_jobs.front());
        m_jobs.pop_front();
        m_busy = true;
        guard.unlock();
        perform(job);
        if (onSavedStateChanged)
            onSavedStateChanged();
        guard.lock();
        m_busy = false;
        m_changed.notify_all();
    }
}

void DatabaseFolder::perform(const Job& job)
{
    if (Result<void> prepared = prepareFolder(job.folder); !prepared) {
        for (const Piece& piece : job.pieces)
            settled(piece, prepared);
        return;
    }
    if (!isWhereItWas(job.folder))
        std::for_each(job.pieces.begin(), job.pieces.end(), [this](const Piece& piece) { keepElsewhere(piece); });
    std::vector<Piece> pieces;
    for (const Piece& piece : job.pieces) {
        if (Result<void> kept = keepDamagedOriginal(job.folder, *piece.file); !kept)
            settled(piece, kept);
        else
            pieces.push_back(piece);
    }
    const Result<void> written = writeGroup(job.folder, pieces);
    if (written || pieces.size() == 1) {
        for (const Piece& piece : pieces)
            settled(piece, written);
        return;
    }
    writeAlone({job.folder, std::move(pieces)});
}

/// After a failed group: orders and their lines stay together, every other file goes by itself.
void DatabaseFolder::writeAlone(const Job& job)
{
    const auto belongTogether = [](const Piece& piece) {
        const std::string_view name = piece.file->fileName();
        return name == "orders.xml" || name == "itemsordered.xml";
    };
    std::vector<Piece> together;
    for (const Piece& piece : job.pieces) {
        if (belongTogether(piece))
            together.push_back(piece);
        else
            settled(piece, writeGroup(job.folder, {&piece, 1}));
    }
    const Result<void> written = writeGroup(job.folder, together);
    for (const Piece& piece : together)
        settled(piece, written);
}

Result<void> DatabaseFolder::writeGroup(const QString& folder, std::span<const Piece> pieces)
{
    if (pieces.empty())
        return {};
    FileGroup group(folder.toStdString());
    for (const Piece& piece : pieces)
        writeSnapshot(*piece.snapshot, group.add(piece.file->fileName()));
    return group.commit();
}

Result<void> DatabaseFolder::prepareFolder(const QString& folder)
{
    if (Result<void> made = folders::make(folder); !made)
        return made;
    if (m_repaired || folder != m_location)
        return {};
    // What cannot be put right yet goes on being read through, and holds no other file up.
    const Result<void> repaired = FileGroup::repair(folder.toStdString());
    m_repaired = repaired.ok();
    if (!repaired)
        logLine(repaired.error().message);
    return {};
}

/// Whether the folder is still the one that was read; a folder that was not there then is taken as it was made.
bool DatabaseFolder::isWhereItWas(const QString& folder)
{
    const std::optional<Identity> now = identityOf(folder);
    const std::lock_guard guard(m_mutex);
    if (folder != m_location)
        return true;
    if (!m_identity)
        m_identity = now;
    m_folderGone = m_identity != now;
    return !m_folderGone;
}

/// Into the recovery store as well: the folder that was opened may come back and know nothing of this.
void DatabaseFolder::keepElsewhere(const Piece& piece)
{
    const Result<QString> kept = keepInRecovery(*piece.file, *piece.snapshot);
    if (!kept) {
        logLine(kept.error().message);
        return;
    }
    logLine("the database's folder is another one than was opened; a copy is kept as " + kept.value().toStdString());
    const auto [place, first] = m_keptElsewhere.try_emplace(piece.file, kept.value());
    if (first)
        return;
    QFile::remove(place->second);
    place->second = kept.value();
}

Result<void> DatabaseFolder::keepDamagedOriginal(const QString& folder, const RecordFile& file)
{
    {
        const std::lock_guard guard(m_mutex);
        if (!m_damaged.contains(&file))
            return {};
    }
    const QString original = QString::fromStdString(pathIn(folder, file));
    if (QFileInfo::exists(original)) {
        if (const Result<QString> kept = m_recovery.keepCopy(original); !kept)
            return kept.error();
    }
    const std::lock_guard guard(m_mutex);
    m_damaged.erase(&file);
    return {};
}

void DatabaseFolder::settled(const Piece& piece, const Result<void>& result)
{
    const std::lock_guard guard(m_mutex);
    if (result) {
        m_unsaved.erase(piece.file);
        return;
    }
    logLine(std::string(piece.file->logName()) + " not written successfully");
    logLine(result.error().message);
    m_unsaved[piece.file] = QString::fromStdString(result.error().message);
}

// Copying

Result<void> DatabaseFolder::copyTo(const QString& target)
{
    drain();
    const QString from = QFileInfo(m_location).canonicalFilePath();
    const QString into = QFileInfo(QFileInfo(target).absolutePath()).canonicalFilePath();
    if (from.isEmpty() || (into + '/').startsWith(from + '/'))
        return Error {"a database cannot be copied into itself"};
    if (QFileInfo::exists(target))
        return Error {target.toStdString() + " exists already"};
    // A name that nothing has: what stands there already is somebody else's.
    QString unfinished = target + ".unfinished";
    for (int i = 1; QFileInfo::exists(unfinished) || QFileInfo(unfinished).isSymLink(); ++i)
        unfinished = target + ".unfinished-" + QString::number(i);
    Result<void> copied = folders::copyTree(m_location, unfinished);
    if (copied)
        copied = writeFileSafely((unfinished + "/lock.xml").toStdString(), m_lock.contents(DatabaseLock::offlineReason));
    if (copied && !QFile::rename(unfinished, target))
        copied = Error {target.toStdString() + " could not be put into its place"};
    if (!copied)
        QDir(unfinished).removeRecursively();
    return copied;
}
