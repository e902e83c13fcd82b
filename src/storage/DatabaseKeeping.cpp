// What of a database goes into the recovery store: what is unsaved, what went into another folder, and what a write takes the place of.
#include "storage/DatabaseFolder.h"

#include "foundation/Folders.h"
#include "foundation/Log.h"
#include "foundation/plist/PlistWriter.h"
#include "storage/RecoveryStore.h"

QStringList DatabaseFolder::keepUnsaved()
{
    drain();
    std::vector<RecordFile*> unsaved;
    QStringList elsewhere;
    for (RecordFile* file : unsavedFiles()) {
        const std::lock_guard guard(m_mutex);
        if (m_unsaved.at(file).isElsewhere)
            elsewhere += QString::fromLatin1(file->fileName()) + " was written into another folder than was opened. A copy is kept as "
                + m_keptElsewhere.at(file) + ".";
        else
            unsaved.push_back(file);
    }
    return keepInstead(unsaved) + elsewhere;
}

QStringList DatabaseFolder::keepInstead(std::span<RecordFile* const> files)
{
    QStringList sentences;
    for (const RecordFile* file : files) {
        const Result<QString> kept = keepInRecovery(*file, *file->snapshot(), KeptFor::unsaved);
        const std::string sentence = std::string(file->fileName()) + " could not be written. "
            + (kept ? "What it should hold is kept as " + kept.value().toStdString() : kept.error().message) + ".";
        logLine(sentence);
        sentences += QString::fromStdString(sentence);
    }
    return sentences;
}

Result<QString> DatabaseFolder::keepInRecovery(const RecordFile& file, const FileSnapshot& snapshot, KeptFor reason)
{
    std::string bytes;
    PlistWriter writer([&](std::string_view piece) { bytes += piece; });
    snapshot.write(writer);
    return m_recovery.keepBytes(QString::fromStdString(pathIn(m_location, file)), bytes, reason);
}

/// Into the recovery store as well: the folder that was opened may come back and know nothing of this.
void DatabaseFolder::keepElsewhere(const Piece& piece)
{
    const Result<QString> kept = keepInRecovery(*piece.file, *piece.snapshot, KeptFor::displaced);
    if (!kept) {
        logLine(kept.error().message);
        // The copy of before stays, and is not the newest any more.
        m_keptElsewhere.erase(piece.file);
        return;
    }
    logLine("the database's folder is another one than was opened; a copy is kept as " + kept.value().toStdString());
    const auto [place, first] = m_keptElsewhere.try_emplace(piece.file, kept.value());
    if (first)
        return;
    m_recovery.giveUp(place->second);
    place->second = kept.value();
}

Result<void> DatabaseFolder::keepWhatIsThere(const QString& folder, const RecordFile& file)
{
    if (Result<void> kept = keepDamagedOriginal(folder, file); !kept || folder != m_location || isAsKnown(file))
        return kept;
    return keepForeign(file);
}

/// Somebody else works in the folder in spite of the lock, or unlocked it.
Result<void> DatabaseFolder::keepForeign(const RecordFile& file)
{
    const QString path = QString::fromStdString(pathIn(m_location, file));
    if (!folders::mayBeFile(path))
        return {};
    const Result<QString> kept = m_recovery.keepCopy(path, KeptFor::foreign);
    if (!kept)
        return kept.error();
    const std::string sentence = std::string(file.fileName())
        + " was changed by somebody else and is written over now. What they wrote is kept as " + kept.value().toStdString() + ".";
    logLine(sentence);
    const std::lock_guard guard(m_mutex);
    m_news += QString::fromStdString(sentence);
    return {};
}

Result<void> DatabaseFolder::keepDamagedOriginal(const QString& folder, const RecordFile& file)
{
    {
        const std::lock_guard guard(m_mutex);
        if (!m_damaged.contains(&file))
            return {};
    }
    const QString original = QString::fromStdString(pathIn(folder, file));
    if (folders::mayBeThere(original)) {
        if (const Result<QString> kept = m_recovery.keepCopy(original, KeptFor::unreadable); !kept)
            return kept.error();
    }
    const std::lock_guard guard(m_mutex);
    m_damaged.erase(&file);
    return {};
}
