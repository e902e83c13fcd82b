#include "storage/DatabaseFolder.h"

#include "desktop/Desktop.h"
#include "foundation/ByteRelay.h"
#include "foundation/Folders.h"
#include "foundation/Log.h"
#include "foundation/SafeFile.h"
#include "foundation/WrittenMark.h"
#include "foundation/plist/PlistWriter.h"
#include "storage/FileComparison.h"
#include "storage/ReadFile.h"
#include "storage/RecoveryStore.h"

#include <algorithm>
#include <future>
#include <iterator>
#include <new>

#include <sys/stat.h>

namespace {

/// The two that change together.
bool isOrdersOrLines(const RecordFile& file)
{
    const std::string_view name = file.fileName();
    return name == recordFiles::orders || name == recordFiles::lines;
}

bool isAmong(const std::vector<RecordFile*>& files, const RecordFile* file)
{
    return std::find(files.begin(), files.end(), file) != files.end();
}

void writeSnapshot(const FileSnapshot& snapshot, SafeFile& target)
{
    // The records are put into words here while the words before are written on another thread.
    ByteRelay relay([&](std::string_view bytes) { target.append(bytes); });
    PlistWriter writer([&](std::string& bytes) { relay.exchange(bytes); });
    snapshot.write(writer);
    relay.finish();
}

} // namespace

DatabaseFolder::DatabaseFolder(RecoveryStore& recovery, const Clock& clock, const User& user)
    : m_recovery(recovery)
    , m_generations(recovery.folder(), clock)
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

std::string DatabaseFolder::pathIn(const QString& folder, const RecordFile& file)
{
    return (folder + '/' + file.fileName()).toStdString();
}

// Reading

std::optional<DatabaseFolder::Identity> DatabaseFolder::identityOf(const QString& folder)
{
    struct stat status { };
    // A file in the folder's place is no folder that could come loose.
    if (::stat(folder.toStdString().c_str(), &status) != 0 || !S_ISDIR(status.st_mode))
        return std::nullopt;
    return Identity {status.st_dev, status.st_ino};
}

LoadReport DatabaseFolder::load(const QString& location, const AfterFile& afterFile)
{
    drain();
    m_location = location;
    m_lock.setFolder(location);
    m_repaired = false;
    return readAgain(afterFile);
}

bool DatabaseFolder::isAsKnown(const RecordFile& file) const
{
    return m_known.isAsNoted(file, pathIn(m_location, file));
}

bool DatabaseFolder::changedSinceRead() const
{
    return std::any_of(m_files.begin(), m_files.end(), [this](const RecordFile* file) { return !isAsKnown(*file); });
}

Result<void> DatabaseFolder::keepingStamps(const std::function<Result<void>()>& change)
{
    std::vector<const RecordFile*> known;
    std::copy_if(m_files.begin(), m_files.end(), std::back_inserter(known), [this](const RecordFile* file) { return isAsKnown(*file); });
    Result<void> done = change();
    for (const RecordFile* file : known)
        m_known.noteAgain(*file, pathIn(m_location, *file));
    return done;
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
        m_known.note(*file, pathIn(m_location, *file));
    LoadReport report;
    const Result<std::map<std::string, std::string>> interrupted = FileGroup::interrupted(m_location.toStdString());
    if (!interrupted)
        tellUnreadable(interrupted.error().message, report);
    const std::map<std::string, std::string> instead = interrupted ? interrupted.value() : std::map<std::string, std::string>();
    const auto startReading = [&](RecordFile& file) {
        file.forget();
        const auto found = instead.find(file.fileName());
        const std::string other = found == instead.end() ? std::string() : found->second;
        if (!other.empty())
            m_known.noteInstead(file, other);
        return std::async(
            std::launch::async, [&file, path = pathIn(m_location, file), other] { return ReadFile::read(file, path, other); });
    };
    // One file is read ahead while the one before it is read and handed over; they are handed over in their order.
    std::future<ReadFile> next = m_files.empty() ? std::future<ReadFile>() : startReading(*m_files.front());
    for (std::size_t i = 0; i < m_files.size(); ++i) {
        std::future<ReadFile> current = std::exchange(next, {});
        if (i + 1 < m_files.size())
            next = startReading(*m_files[i + 1]);
        const ReadFile read = current.get();
        RecordFile& file = *m_files[i];
        if (read.parsed) {
            adopt(file, *read.parsed, read.isMarked);
            tellLeftOut(file, report);
        } else if (read.exists)
            tellDamaged(file, read.path, read.reason, report);
        file.loaded();
        afterFile(file, read.exists);
    }
    m_mustKeepState = !report.damaged.isEmpty();
    return report;
}

/// What is in a file that this program wrote need not be compared as long as nobody changes the records.
void DatabaseFolder::adopt(RecordFile& file, ParsedFile& parsed, bool isMarked)
{
    const bool asRead = parsed.adopt();
    if (asRead && isMarked && file.leftOut().empty())
        m_known.noteContents(file, file.changes());
}

void DatabaseFolder::tellDamaged(RecordFile& file, const std::string& path, const std::string& reason, LoadReport& report)
{
    const Result<QString> kept = m_recovery.keepCopy(QString::fromStdString(path), KeptFor::unreadable);
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

void DatabaseFolder::tellLeftOut(const RecordFile& file, LoadReport& report)
{
    const std::string what = file.leftOut();
    if (what.empty())
        return;
    {
        const std::lock_guard guard(m_mutex);
        m_damaged.insert(&file);
    }
    const std::string sentence = std::string(file.fileName()) + ": " + what + ". The file is kept before it is written over.";
    logLine(sentence);
    report.damaged += QString::fromStdString(sentence);
}

/// Without the interrupted write the files may be from different moments: each is kept before anything takes its place.
void DatabaseFolder::tellUnreadable(const std::string& reason, LoadReport& report)
{
    {
        const std::lock_guard guard(m_mutex);
        m_damaged.insert(m_files.begin(), m_files.end());
    }
    const std::string sentence = "An interrupted write could not be read (" + reason + "). Each file is kept before it is written.";
    logLine(sentence);
    report.damaged += QString::fromStdString(sentence);
}

// Writing

DatabaseFolder::Job DatabaseFolder::jobFor(std::span<RecordFile* const> files) const
{
    // The window waits for them: the others are taken while the first is taken here. Where no thread can be had, all are taken here.
    std::vector<std::future<std::shared_ptr<FileSnapshot>>> snapshots;
    std::vector<std::optional<std::uint64_t>> changes;
    for (const RecordFile* file : files) {
        const auto where = file == files.front() ? std::launch::deferred : std::launch::async | std::launch::deferred;
        changes.push_back(file->changes());
        snapshots.push_back(std::async(where, [file] { return std::shared_ptr<FileSnapshot>(file->snapshot()); }));
    }
    Job job {m_location, {}};
    for (std::size_t i = 0; i < files.size(); ++i)
        job.pieces.push_back({files[i], snapshots[i].get(), changes[i]});
    return job;
}

void DatabaseFolder::write(std::span<RecordFile* const> files, When when)
{
    enqueue(jobFor(files));
    if (when == When::now)
        drain();
}

void DatabaseFolder::writeEverything()
{
    drain();
    std::vector<RecordFile*> files;
    const std::vector<RecordFile*> unsaved = unsavedFiles();
    std::copy_if(m_files.begin(), m_files.end(), std::back_inserter(files),
        [&](const RecordFile* file) { return isAmong(unsaved, file) || !m_known.holdsAll(*file, pathIn(m_location, *file)); });
    Job job = jobFor(files);
    job.mayBeThereAlready = true;
    enqueue(std::move(job));
    drain();
}

QStringList DatabaseFolder::fileNames() const
{
    QStringList names;
    for (const RecordFile* file : m_files)
        names += file->fileName();
    return names;
}

Result<void> DatabaseFolder::keepGeneration()
{
    drain();
    return keepingStamps([this] { return m_generations.keep(m_location, fileNames()); });
}

QStringList DatabaseFolder::takeNews()
{
    const std::lock_guard guard(m_mutex);
    return std::exchange(m_news, {});
}

bool DatabaseFolder::isOfSameFiles(const Job& one, const Job& other)
{
    const auto isOfSameFile = [](const Piece& piece, const Piece& same) { return piece.file == same.file; };
    return one.folder == other.folder
        && std::equal(one.pieces.begin(), one.pieces.end(), other.pieces.begin(), other.pieces.end(), isOfSameFile);
}

void DatabaseFolder::enqueue(Job job)
{
    {
        const std::lock_guard guard(m_mutex);
        // Of the same files the newest state is enough.
        if (!m_jobs.empty() && isOfSameFiles(m_jobs.back(), job)) {
            job.isAgain = job.isAgain && m_jobs.back().isAgain;
            m_jobs.back() = std::move(job);
        } else
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
    if (unsaved.empty())
        return;
    Job job = jobFor(unsaved);
    job.isAgain = true;
    enqueue(std::move(job));
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
        return m_unsaved.begin()->second.reason;
    return m_folderGone ? goneReason() : QString();
}

QString DatabaseFolder::goneReason() const
{
    return m_location + " is not the folder that was opened";
}

bool DatabaseFolder::isWriting() const
{
    const std::lock_guard guard(m_mutex);
    return m_performing || !m_jobs.empty();
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
        m_busy = m_performing = true;
        guard.unlock();
        perform(job);
        guard.lock();
        m_performing = false;
        guard.unlock();
        if (onSavedStateChanged)
            onSavedStateChanged();
        guard.lock();
        m_busy = false;
        m_changed.notify_all();
    }
}

/// Whatever happens, the pieces are either where they belong or known to be unsaved.
void DatabaseFolder::perform(const Job& job)
{
    std::string reason;
    try {
        attempt(job);
        return;
    } catch (const std::bad_alloc&) {
        reason = "There was not enough memory for writing";
    } catch (const std::exception& trouble) {
        reason = std::string("Writing came to nothing: ") + trouble.what();
    }
    for (const Piece& piece : job.pieces)
        settled(piece, Error {reason});
}

void DatabaseFolder::attempt(const Job& job)
{
    if (Result<void> prepared = prepareFolder(job.folder); !prepared) {
        for (const Piece& piece : job.pieces)
            settled(piece, prepared);
        return;
    }
    if (isWhereItWas(job.folder)) {
        if (job.folder == m_location)
            keepState();
        writeJob(job);
        return;
    }
    const Job rest = job.isAgain ? withoutWhatIsElsewhere(job) : job;
    for (const Piece& piece : rest.pieces)
        keepElsewhere(piece);
    writeJob(rest);
}

void DatabaseFolder::writeJob(const Job& job)
{
    std::vector<Piece> pieces = piecesToWrite(job.mayBeThereAlready ? withoutWhatIsThere(job) : job);
    const Result<void> written = writeGroup(job.folder, pieces);
    if (written || pieces.size() == 1) {
        for (const Piece& piece : pieces)
            settled(piece, written);
        return;
    }
    writeAlone({job.folder, std::move(pieces)});
}

/// As long as another folder stands there, writing into it once is enough.
DatabaseFolder::Job DatabaseFolder::withoutWhatIsElsewhere(const Job& job) const
{
    const std::lock_guard guard(m_mutex);
    Job rest {job.folder, {}};
    std::copy_if(job.pieces.begin(), job.pieces.end(), std::back_inserter(rest.pieces), [this](const Piece& piece) {
        const auto found = m_unsaved.find(piece.file);
        return found == m_unsaved.end() || !found->second.isElsewhere;
    });
    return rest;
}

/// What yesterday left, before anything of today takes its place; and once more when a file did not read, since the others may lose what
/// refers to it.
void DatabaseFolder::keepState()
{
    if (!m_mustKeepState && m_generations.hasToday(m_location))
        return;
    const Result<void> kept = keepingStamps([this] { return m_generations.keep(m_location, fileNames()); });
    if (kept)
        m_mustKeepState = false;
    else
        logLine(kept.error().message);
}

/// Those that nothing irreplaceable stands in the way of. Of orders and lines both wait when one has to.
std::vector<DatabaseFolder::Piece> DatabaseFolder::piecesToWrite(const Job& job)
{
    std::vector<std::pair<Piece, Result<void>>> kept;
    Result<void> keptOfPair;
    for (const Piece& piece : job.pieces) {
        kept.emplace_back(piece, keepWhatIsThere(job.folder, *piece.file));
        if (isOrdersOrLines(*piece.file) && !kept.back().second)
            keptOfPair = kept.back().second;
    }
    std::vector<Piece> pieces;
    for (const auto& [piece, own] : kept) {
        const Result<void>& result = isOrdersOrLines(*piece.file) ? keptOfPair : own;
        if (result)
            pieces.push_back(piece);
        else
            settled(piece, result);
    }
    return pieces;
}

/// What a file holds already, byte for byte, is not written again: ending a day's work costs nothing when all is saved. Whatever may not
/// outlast a power cut is written, and everything while an interrupted commit is read through.
DatabaseFolder::Job DatabaseFolder::withoutWhatIsThere(const Job& job)
{
    const auto interrupted = FileGroup::interrupted(job.folder.toStdString());
    if (!interrupted || !interrupted.value().empty())
        return job;
    const std::vector<RecordFile*> unsaved = unsavedFiles();
    std::vector<std::future<bool>> answers;
    for (const Piece& piece : job.pieces) {
        const auto isThere = [&piece, &unsaved, path = pathIn(job.folder, *piece.file)] {
            return !isAmong(unsaved, piece.file) && holdsAlready(path, *piece.snapshot);
        };
        answers.push_back(std::async(std::launch::async | std::launch::deferred, isThere));
    }
    Job rest {job.folder, {}};
    for (std::size_t i = 0; i < answers.size(); ++i) {
        if (!answers[i].get())
            rest.pieces.push_back(job.pieces[i]);
        else if (job.folder == m_location && isAsKnown(*job.pieces[i].file))
            noteWritten(job.pieces[i]);
    }
    return rest;
}

/// After a failed group: orders and their lines stay together, every other file goes by itself.
void DatabaseFolder::writeAlone(const Job& job)
{
    std::vector<Piece> together;
    for (const Piece& piece : job.pieces) {
        if (isOrdersOrLines(*piece.file))
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
    std::vector<std::pair<const Piece*, const SafeFile*>> files;
    for (const Piece& piece : pieces) {
        SafeFile& file = group.add(piece.file->fileName());
        files.emplace_back(&piece, &file);
        writeSnapshot(*piece.snapshot, file);
    }
    Result<void> written = group.commit();
    // What got into its place is ours, also when another of the group did not.
    for (const auto& [piece, safeFile] : files) {
        if (folder == m_location && safeFile->isInPlace())
            noteWritten(*piece);
    }
    return written;
}

/// The file in the loaded folder holds just that.
void DatabaseFolder::noteWritten(const Piece& piece)
{
    const std::string path = pathIn(m_location, *piece.file);
    writtenMark::put(path);
    m_known.note(*piece.file, path, piece.changes);
}

Result<void> DatabaseFolder::prepareFolder(const QString& folder)
{
    if (Result<void> made = folders::make(folder); !made)
        return made;
    if (m_repaired || folder != m_location)
        return {};
    // What cannot be put right yet goes on being read through, and holds no other file up.
    const Result<void> repaired = keepingStamps([&] { return FileGroup::repair(folder.toStdString()); });
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

void DatabaseFolder::settled(const Piece& piece, const Result<void>& result)
{
    const std::lock_guard guard(m_mutex);
    if (result && !m_folderGone) {
        m_unsaved.erase(piece.file);
        return;
    }
    if (result) {
        m_unsaved[piece.file] = {goneReason(), m_keptElsewhere.contains(piece.file)};
        return;
    }
    logLine(std::string(piece.file->logName()) + " not written successfully");
    logLine(result.error().message);
    m_unsaved[piece.file] = {QString::fromStdString(result.error().message)};
}
