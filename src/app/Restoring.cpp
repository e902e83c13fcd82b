#include "app/Restoring.h"

#include "app/DatabaseSession.h"
#include "desktop/Alerts.h"
#include "desktop/TextTable.h"
#include "storage/DatabaseFolder.h"

#include <QFileInfo>

#include <algorithm>
#include <chrono>
#include <map>

Restoring::Restoring(RestoringNeeds needs)
    : TextRows(needs.sorting, needs.beeper, {{localText("Kind"), 110}, {localText("Record"), 300}, {localText("Since then"), 300}})
    , m_needs(std::move(needs))
{
}

Restoring::~Restoring()
{
    cancelLooking();
}

std::vector<Generation> Restoring::generations() const
{
    return m_needs.folder.generations().of(m_needs.folder.location());
}

// Reading

void Restoring::startLooking(const Generation& generation)
{
    cancelLooking();
    m_earlier.clear();
    m_differences.clear();
    m_newIds = {};
    m_troubles.clear();
    listDifferences();
    std::erase_if(m_readers, [](const auto& reader) { return reader.wait_for(std::chrono::seconds(0)) == std::future_status::ready; });
    m_reading = std::make_shared<Reading>();
    m_readers.push_back(std::async(std::launch::async,
        [this, reading = m_reading, folder = generation.folder, files = m_needs.folder.files()] { read(reading, folder, files); }));
}

void Restoring::cancelLooking()
{
    if (!m_reading)
        return;
    m_reading->isGivenUp = true;
    m_reading.reset();
    m_earlier.clear();
    m_differences.clear();
}

/// On the reader's thread: nothing of the program is touched here but through what is sent home.
void Restoring::read(const std::shared_ptr<Reading>& reading, const QString& folder, const std::vector<RecordFile*>& files)
{
    const auto sizeOf = [&](const RecordFile* file) { return QFileInfo(folder + '/' + file->fileName()).size() + 1; };
    qint64 all = 0;
    for (const RecordFile* file : files)
        all += sizeOf(file);
    qint64 done = 0;
    for (RecordFile* file : files) {
        if (reading->isGivenUp)
            return;
        const std::string path = (folder + '/' + file->fileName()).toStdString();
        done += sizeOf(file);
        const auto part = std::make_shared<Part>(Part {file, ReadFile::read(*file, path, {}), static_cast<int>(done * 100 / all)});
        QMetaObject::invokeMethod(
            &m_home,
            [this, reading, part] {
                if (reading == m_reading)
                    takeOver(*part);
            },
            Qt::QueuedConnection);
    }
    QMetaObject::invokeMethod(
        &m_home,
        [this, reading] {
            if (reading == m_reading)
                finishLooking();
        },
        Qt::QueuedConnection);
}

void Restoring::takeOver(Part& part)
{
    std::unique_ptr<ParsedFile>& parsed = part.read.parsed;
    if (parsed) {
        parsed->findNewIds(m_newIds);
        compareFile(*part.file, *parsed);
        m_earlier.emplace_back(part.file, std::move(parsed));
    } else if (part.read.exists)
        m_troubles += fillText(localText("%@ of that time could not be read (%@)."),
            {QString::fromLatin1(part.file->fileName()), QString::fromStdString(part.read.reason)});
    if (onProgress)
        onProgress(part.percent);
}

void Restoring::finishLooking()
{
    m_reading.reset();
    // A record may name one of a file that was compared after its own.
    if (m_newIds.isEmpty())
        listDifferences();
    else
        compare();
    if (onLooked)
        onLooked(m_troubles);
}

// Comparing

void Restoring::compareFile(RecordFile& file, ParsedFile& parsed)
{
    for (RecordDifference& record : parsed.differences(m_newIds))
        m_differences.push_back({&file, &parsed, std::move(record)});
}

void Restoring::compare()
{
    findNewIds();
    m_differences.clear();
    for (const auto& [file, parsed] : m_earlier)
        compareFile(*file, *parsed);
    listDifferences();
}

/// Who is back is known by what it names, too, in files before or after its own. No two files name each other, not even by way of others,
/// so that each round settles at least one more of them.
void Restoring::findNewIds()
{
    for (std::size_t round = 0; round < m_earlier.size(); ++round) {
        const IdChanges before = m_newIds;
        for (const auto& [file, parsed] : m_earlier)
            parsed->findNewIds(m_newIds);
        if (m_newIds == before)
            return;
    }
}

void Restoring::listDifferences()
{
    std::vector<std::vector<std::string>> rows;
    for (const Difference& difference : m_differences)
        rows.push_back({localText(difference.file->recordName()).toStdString(), titleOf(difference), whatHappened(difference.record)});
    setRows(rows);
}

std::string Restoring::titleOf(const Difference& difference) const
{
    if (difference.record.owner == 0)
        return difference.record.title;
    return fillText(
        localText("%@, of order %@"), {QString::fromStdString(difference.record.title), QString::number(difference.record.owner)})
        .toStdString();
}

std::string Restoring::whatHappened(const RecordDifference& record)
{
    if (record.sinceThen == SinceThen::gone)
        return localText("Deleted").toStdString();
    if (record.sinceThen == SinceThen::replaced)
        return fillText(localText("Deleted; its number is used by %@"), {QString::fromStdString(record.usedBy)}).toStdString();
    QStringList keys;
    for (const std::string& key : record.changedKeys)
        keys += QString::fromStdString(key);
    return fillText(localText("Changed: %@"), {keys.join(", ")}).toStdString();
}

// Bringing back

Result<void> Restoring::bringBackSelected()
{
    const std::vector<std::size_t> places = selectedPlaces();
    return bringBack({places.begin(), places.end()});
}

Result<void> Restoring::bringBackAll()
{
    std::set<std::size_t> chosen;
    for (std::size_t i = 0; i < m_differences.size(); ++i)
        chosen.insert(i);
    return bringBack(std::move(chosen));
}

/// What is written with a record's file and belongs to it goes along: an order's lines. Answers whether there were any.
bool Restoring::addLines(std::set<std::size_t>& chosen) const
{
    const std::size_t before = chosen.size();
    std::set<std::pair<const RecordFile*, int>> owners;
    for (const std::size_t index : chosen) {
        const Difference& difference = m_differences[index];
        for (const RecordFile* file : m_needs.session.filesWrittenWith(*difference.file)) {
            if (file != difference.file)
                owners.emplace(file, difference.record.id);
        }
    }
    for (std::size_t i = 0; i < m_differences.size(); ++i) {
        const Difference& difference = m_differences[i];
        if (difference.record.owner != 0 && owners.contains({difference.file, difference.record.owner}))
            chosen.insert(i);
    }
    return chosen.size() != before;
}

/// What a record names by a number that another has by now goes along, since it would name the other; so does what it belongs to, and
/// what it can name only while that is there. Answers whether there was any.
bool Restoring::addNamed(std::set<std::size_t>& chosen) const
{
    const std::size_t before = chosen.size();
    std::map<std::pair<std::string, int>, std::size_t> lost;
    for (std::size_t i = 0; i < m_differences.size(); ++i) {
        const Difference& difference = m_differences[i];
        if (difference.record.sinceThen != SinceThen::changed)
            lost[{difference.file->fileName(), difference.record.id}] = i;
    }
    for (const std::size_t index : std::set<std::size_t>(chosen)) {
        const Difference& difference = m_differences[index];
        for (const RecordLink& link : difference.parsed->linksOf(difference.record.index)) {
            const auto found = lost.find({link.fileName, link.id});
            if (found == lost.end())
                continue;
            const Difference& named = m_differences[found->second];
            const bool isOwner = link.fileName == recordFiles::orders && link.id == difference.record.owner;
            if (isOwner || named.record.sinceThen == SinceThen::replaced || named.file->isNamedOnlyWhileThere())
                chosen.insert(found->second);
        }
    }
    return chosen.size() != before;
}

/// The list may be older than what was done since.
std::set<std::size_t> Restoring::placesAfterComparing(const std::set<std::size_t>& chosen)
{
    std::set<std::pair<const RecordFile*, std::size_t>> records;
    for (const std::size_t place : chosen)
        records.emplace(m_differences[place].file, m_differences[place].record.index);
    compare();
    std::set<std::size_t> places;
    for (std::size_t i = 0; i < m_differences.size(); ++i) {
        if (records.contains({m_differences[i].file, m_differences[i].record.index}))
            places.insert(i);
    }
    return places;
}

Result<void> Restoring::bringBack(std::set<std::size_t> chosen)
{
    if (chosen.empty() || isLooking() || !m_needs.session.readOnlyCheck())
        return {};
    if (m_needs.isEditing())
        return Error {localText("Close the editors that are open first.").toStdString()};
    m_needs.folder.writeEverything();
    if (const QString reason = m_needs.folder.unsavedReason(); !reason.isEmpty())
        return Error {reason.toStdString()};
    if (Result<void> kept = m_needs.folder.keepGeneration(); !kept)
        return kept;
    chosen = placesAfterComparing(chosen);
    while (addLines(chosen) || addNamed(chosen)) { }
    std::vector<RecordFile*> touched;
    // In the order of the files: an order is there before its lines come.
    for (const std::size_t index : chosen) {
        const Difference& difference = m_differences[index];
        difference.parsed->bringBack(difference.record.index, m_newIds);
        for (RecordFile* file : m_needs.session.filesWrittenWith(*difference.file)) {
            if (std::find(touched.begin(), touched.end(), file) == touched.end())
                touched.push_back(file);
        }
    }
    m_needs.session.recordsRestored(touched);
    compare();
    return {};
}
