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

namespace {

std::string pathIn(const QString& folder, const RecordFile& file)
{
    return (folder + '/' + file.fileName()).toStdString();
}

void writeSnapshot(const FileSnapshot& snapshot, SafeFile& target)
{
    PlistWriter writer([&](std::string_view bytes) { target.append(bytes); });
    snapshot.write(writer);
}

} // namespace

DatabaseFolder::DatabaseFolder(RecoveryStore& recovery, const Clock& clock, const User& user)
    : m_recovery(recovery), m_clock(clock), m_user(user), m_lock(clock, user), m_worker([this] { work(); })
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

LoadReport DatabaseFolder::load(const QString& location, const std::function<void(RecordFile&, bool existed)>& afterFile)
{
    drain();
    m_location = location;
    m_lock.setFolder(location);
    m_repaired = false;
    {
        const std::lock_guard guard(m_mutex);
        m_unsaved.clear();
        m_damaged.clear();
        m_reason.clear();
    }
    LoadReport report;
    const std::map<std::string, std::string> instead = FileGroup::interrupted(location.toStdString());
    for (RecordFile* file : m_files) {
        file->forget();
        const auto interrupted = instead.find(file->fileName());
        const std::string path = interrupted == instead.end() ? pathIn(location, *file) : interrupted->second;
        const bool exists = QFileInfo::exists(QString::fromStdString(path));
        if (exists) {
            Result<std::unique_ptr<ParsedFile>> parsed = parseFile(*file, path, report);
            if (parsed)
                parsed.value()->adopt();
        }
        file->loaded();
        afterFile(*file, exists);
    }
    return report;
}

Result<std::unique_ptr<ParsedFile>> DatabaseFolder::parseFile(RecordFile& file, const std::string& path, LoadReport& report)
{
    const FileBytes bytes = readWholeFile(path);
    if (bytes.trouble != ReadTrouble::none) {
        tellDamaged(file, path, bytes.reason, report);
        return Error {bytes.reason};
    }
    Result<std::unique_ptr<ParsedFile>> parsed = file.parse(bytes.bytes);
    if (!parsed)
        tellDamaged(file, path, parsed.error().message, report);
    return parsed;
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
    std::vector<RecordFile*> unsaved;
    {
        const std::lock_guard guard(m_mutex);
        unsaved.assign(m_unsaved.begin(), m_unsaved.end());
    }
    if (!unsaved.empty())
        write(unsaved, When::inBackground);
}

QString DatabaseFolder::unsavedReason() const
{
    const std::lock_guard guard(m_mutex);
    return m_unsaved.empty() ? QString() : m_reason;
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
    m_repaired = true;
    return FileGroup::repair(folder.toStdString());
}

Result<void> DatabaseFolder::keepDamagedOriginal(const QString& folder, const RecordFile& file)
{
    {
        const std::lock_guard guard(m_mutex);
        if (!m_damaged.contains(&file))
            return {};
    }
    const Result<QString> kept = m_recovery.keepCopy(QString::fromStdString(pathIn(folder, file)));
    if (!kept)
        return kept.error();
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
    m_unsaved.insert(piece.file);
    m_reason = QString::fromStdString(result.error().message);
}

// Copying

Result<void> DatabaseFolder::copyTo(const QString& target)
{
    drain();
    const QString from = QFileInfo(m_location).canonicalFilePath();
    const QString into = QFileInfo(QFileInfo(target).absolutePath()).canonicalFilePath();
    if (from.isEmpty() || (into + '/').startsWith(from + '/'))
        return Error {"a database cannot be copied into itself"};
    const QString unfinished = target + ".unfinished";
    QDir(unfinished).removeRecursively();
    if (Result<void> copied = folders::copyTree(m_location, unfinished); !copied)
        return copied;
    const std::string lock = (unfinished + "/lock.xml").toStdString();
    if (Result<void> locked = writeFileSafely(lock, m_lock.contents(DatabaseLock::offlineReason)); !locked)
        return locked;
    if (!QFile::rename(unfinished, target))
        return Error {target.toStdString() + " could not be put into its place"};
    return {};
}
