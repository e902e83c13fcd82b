// Earlier states of databases: once a day, before anything is written, the record files as they are go into the recovery store.
//
// Files are kept as hard links where the disk allows it, which costs nothing: a record file is always replaced, never written into.
// At most fifty states of a database are kept, the fewer the older they are. No more than two are given up at a time.
#pragma once

#include "foundation/Result.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <span>
#include <vector>

class Clock;

struct Generation {
    /// Holds the record files under their own names.
    QString folder;
    /// Local time.
    QDateTime since;
};

class Generations {
public:
    /// What the folder is called in the recovery store.
    static constexpr char folderName[] = "Generations";

    /// folder: the recovery store's.
    Generations(const QString& recoveryFolder, const Clock& clock) : m_folder(recoveryFolder + '/' + folderName), m_clock(clock) { }

    /// Whether the day has a generation already. Looks on disk until it has.
    bool hasToday(const QString& database);
    /// Keeps those of the files that the database has.
    Result<void> keep(const QString& database, const QStringList& fileNames) const;
    /// The newest first.
    std::vector<Generation> of(const QString& database) const;

    /// Which to give up, as places in newestFirst: every one of the last fourteen days stays, then the first of each week for a quarter
    /// of a year, then the first of each month; fifty at most. Of more, those of the last fourteen days go last.
    static std::vector<std::size_t> superfluous(std::span<const QDateTime> newestFirst, const QDateTime& now);

private:
    /// Databases of one name in different places have different folders.
    QString placeOf(const QString& database) const;
    Result<bool> collect(const QString& database, const QStringList& fileNames, const QString& folder) const;
    void thin(const QString& database, const QString& newest) const;

    QString m_folder;
    const Clock& m_clock;
    /// The last database and day that had one.
    std::pair<QString, QDate> m_known;
};
