#include "storage/Generations.h"

#include "desktop/Desktop.h"
#include "foundation/Dates.h"
#include "foundation/Folders.h"
#include "foundation/Log.h"
#include "foundation/SafeFile.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <set>

namespace {

constexpr int mostGenerations = 50;
/// Given up at a time: a clock that is wrong for a day must not cost all that looks old then.
constexpr std::size_t mostGivenUp = 2;
constexpr qint64 daysOfAll = 14;
constexpr qint64 daysOfWeeks = 91;

/// The stretch of time that an older generation stands for alone.
std::pair<int, int> stretchOf(const QDate& date, qint64 age)
{
    if (age > daysOfWeeks)
        return {date.year(), date.month()};
    int year = 0;
    const int week = date.weekNumber(&year);
    // Weeks and months are counted apart.
    return {-year, week};
}

/// What was broken off, by a program that died or a disk that was full.
void removeUnfinished(const QString& place)
{
    const QDir folder(place);
    for (const QString& entry : folder.entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot)) {
        if (entry.startsWith('.'))
            folders::remove(folder.filePath(entry));
    }
}

} // namespace

QString Generations::placeOf(const QString& database) const
{
    const QByteArray hash = QCryptographicHash::hash(database.toUtf8(), QCryptographicHash::Sha1).toHex().left(8);
    return m_folder + '/' + QFileInfo(database).completeBaseName() + '-' + QString::fromLatin1(hash);
}

bool Generations::hasToday(const QString& database)
{
    const std::pair<QString, QDate> asked(database, m_clock.today());
    if (m_known == asked)
        return true;
    const std::vector<Generation> kept = of(database);
    const bool found =
        std::any_of(kept.begin(), kept.end(), [&](const Generation& generation) { return generation.since.date() == asked.second; });
    if (found)
        m_known = asked;
    return found;
}

Result<void> Generations::keep(const QString& database, const QStringList& fileNames) const
{
    const QString stamp = QString::fromStdString(dates::write(m_clock.now(), dates::stamp));
    const QString place = placeOf(database);
    removeUnfinished(place);
    // Under a hidden name until it is whole.
    const QString unfinished = place + "/." + stamp;
    const Result<bool> collected = collect(database, fileNames, unfinished);
    if (!collected) {
        folders::remove(unfinished);
        return collected.error();
    }
    if (!collected.value())
        return {};
    QString target = place + '/' + stamp;
    for (int n = 1; QFileInfo::exists(target); ++n)
        target = place + '/' + stamp + '-' + QString::number(n);
    if (Result<void> moved = folders::move(unfinished, target); !moved) {
        folders::remove(unfinished);
        return moved;
    }
    thin(database, target);
    return {};
}

/// Answers whether there was something to collect.
Result<bool> Generations::collect(const QString& database, const QStringList& fileNames, const QString& folder) const
{
    int files = 0;
    for (const QString& name : fileNames) {
        const QString source = database + '/' + name;
        if (!folders::mayBeFile(source))
            continue;
        if (files == 0) {
            // The recovery store, which nobody else may look into.
            Result<void> made = folders::makePrivate(QFileInfo(m_folder).path());
            if (made)
                made = folders::make(folder);
            if (!made)
                return made.error();
        }
        if (Result<void> kept = folders::linkOrCopy(source, folder + '/' + name); !kept)
            return kept.error();
        ++files;
    }
    if (files == 0)
        return false;
    const Result<void> flushed = flushFolder(folder.toStdString());
    return flushed ? Result<bool>(true) : Result<bool>(flushed.error());
}

std::vector<Generation> Generations::of(const QString& database) const
{
    constexpr int stampLength = 15;
    std::vector<Generation> found;
    const QDir place(placeOf(database));
    for (const QString& entry : place.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (const std::optional<QDateTime> since = dates::read(entry.left(stampLength).toStdString(), dates::stamp))
            found.push_back({place.filePath(entry), *since});
    }
    std::stable_sort(found.begin(), found.end(),
        [](const Generation& a, const Generation& b) { return a.since != b.since ? a.since > b.since : a.folder > b.folder; });
    return found;
}

std::vector<std::size_t> Generations::superfluous(std::span<const QDateTime> newestFirst, const QDateTime& now)
{
    std::vector<std::size_t> given;
    std::set<std::pair<int, int>> stretches;
    std::vector<std::size_t> staying;
    // From the oldest on: the first of each stretch stays.
    for (std::size_t i = newestFirst.size(); i-- > 0;) {
        const qint64 age = newestFirst[i].daysTo(now);
        if (age <= daysOfAll || stretches.insert(stretchOf(newestFirst[i].date(), age)).second)
            staying.push_back(i);
        else
            given.push_back(i);
    }
    // Where the clock went back, those of the last days are the oldest.
    const auto isOfOtherDays = [&](std::size_t i) { return newestFirst[i].daysTo(now) < 0 || newestFirst[i].daysTo(now) > daysOfAll; };
    std::stable_partition(staying.begin(), staying.end(), isOfOtherDays);
    const std::size_t tooMany = staying.size() - std::min<std::size_t>(staying.size(), mostGenerations);
    given.insert(given.end(), staying.begin(), staying.begin() + static_cast<std::ptrdiff_t>(tooMany));
    std::sort(given.begin(), given.end());
    return given;
}

/// What was just kept stays, also when the clock stands before everything else.
void Generations::thin(const QString& database, const QString& newest) const
{
    const std::vector<Generation> kept = of(database);
    std::vector<QDateTime> times;
    for (const Generation& generation : kept)
        times.push_back(generation.since);
    std::vector<std::size_t> given = superfluous(times, m_clock.now());
    std::erase_if(given, [&](std::size_t index) { return kept[index].folder == newest; });
    // The oldest are the last.
    for (std::size_t n = 0; n < std::min(given.size(), mostGivenUp); ++n) {
        const QString& folder = kept[given[given.size() - 1 - n]].folder;
        folders::remove(folder);
        if (folders::mayBeThere(folder))
            logLine("an earlier state could not be removed: " + folder.toStdString());
    }
}
