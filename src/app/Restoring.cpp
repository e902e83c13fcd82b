#include "app/Restoring.h"

#include "app/DatabaseSession.h"
#include "desktop/Alerts.h"
#include "desktop/TextTable.h"
#include "foundation/SafeFile.h"
#include "storage/DatabaseFolder.h"

#include <algorithm>

Restoring::Restoring(RestoringNeeds needs)
    : TextRows(needs.sorting, needs.beeper, {{localText("Kind"), 110}, {localText("Record"), 300}, {localText("Since then"), 300}})
    , m_needs(std::move(needs))
{
}

std::vector<Generation> Restoring::generations() const
{
    return m_needs.folder.generations().of(m_needs.folder.location());
}

QStringList Restoring::look(const Generation& generation)
{
    QStringList troubles;
    m_earlier.clear();
    for (RecordFile* file : m_needs.folder.files()) {
        const FileBytes bytes = readWholeFile((generation.folder + '/' + file->fileName()).toStdString());
        if (bytes.trouble == ReadTrouble::missing)
            continue;
        Result<std::unique_ptr<ParsedFile>> parsed =
            bytes.trouble == ReadTrouble::none ? file->parse(bytes.bytes) : Result<std::unique_ptr<ParsedFile>>(Error {bytes.reason});
        if (parsed)
            m_earlier.emplace_back(file, std::move(parsed).value());
        else
            troubles += fillText(localText("%@ of that time could not be read (%@)."),
                {QString::fromLatin1(file->fileName()), QString::fromStdString(parsed.error().message)});
    }
    compare();
    return troubles;
}

void Restoring::compare()
{
    m_differences.clear();
    for (const auto& [file, parsed] : m_earlier) {
        for (RecordDifference& record : parsed->differences())
            m_differences.push_back({file, parsed.get(), std::move(record)});
    }
    listDifferences();
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
    if (record.isGone)
        return localText("Deleted").toStdString();
    QStringList keys;
    for (const std::string& key : record.changedKeys)
        keys += QString::fromStdString(key);
    return fillText(localText("Changed: %@"), {keys.join(", ")}).toStdString();
}

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

/// What is written with a record's file and belongs to it goes along: an order's lines.
void Restoring::addBelonging(std::set<std::size_t>& chosen) const
{
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
}

Result<void> Restoring::bringBack(std::set<std::size_t> chosen)
{
    if (chosen.empty() || !m_needs.session.readOnlyCheck())
        return {};
    if (m_needs.isEditing())
        return Error {localText("Close the editors that are open first.").toStdString()};
    m_needs.folder.writeEverything();
    if (const QString reason = m_needs.folder.unsavedReason(); !reason.isEmpty())
        return Error {reason.toStdString()};
    if (Result<void> kept = m_needs.folder.keepGeneration(); !kept)
        return kept;
    addBelonging(chosen);
    std::vector<RecordFile*> touched;
    for (const std::size_t index : chosen) {
        const Difference& difference = m_differences[index];
        difference.parsed->bringBack(difference.record.index);
        for (RecordFile* file : m_needs.session.filesWrittenWith(*difference.file)) {
            if (std::find(touched.begin(), touched.end(), file) == touched.end())
                touched.push_back(file);
        }
    }
    m_needs.session.recordsRestored(touched);
    compare();
    return {};
}
