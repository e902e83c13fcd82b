#include "storage/RecoveryStore.h"

#include "desktop/Desktop.h"
#include "foundation/Dates.h"
#include "foundation/Folders.h"
#include "foundation/Log.h"
#include "foundation/SafeFile.h"
#include "foundation/TemporaryFiles.h"
#include "foundation/Text.h"
#include "foundation/plist/PlistReader.h"
#include "foundation/plist/PlistWriter.h"
#include "storage/Generations.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>

namespace {

constexpr int daysToKeep = 90;
/// A copy as old as that stands for a new one: it stays for two months at least.
constexpr int daysToCountOn = 30;
/// Things of one name and second; more than that and something is wrong with the disk.
constexpr int mostAlike = 1000;
/// Of "20240301-101530".
constexpr int stampLength = 15;
constexpr char aboutFolder[] = "/.about/";
constexpr char originKey[] = "origin";
constexpr char reasonKey[] = "reason";

struct ReasonName {
    KeptFor reason;
    const char* name;
};
/// As the reasons are spelled on disk.
constexpr std::array reasonNames {ReasonName {KeptFor::unreadable, "unreadable"}, ReasonName {KeptFor::foreign, "foreign"},
    ReasonName {KeptFor::unsaved, "unsaved"}, ReasonName {KeptFor::displaced, "displaced"},
    ReasonName {KeptFor::attachments, "attachments"}, ReasonName {KeptFor::pictures, "pictures"},
    ReasonName {KeptFor::upgraded, "upgraded"}, ReasonName {KeptFor::unknown, "unknown"}};

const char* nameOf(KeptFor reason)
{
    return std::find_if(reasonNames.begin(), reasonNames.end(), [&](const ReasonName& entry) { return entry.reason == reason; })->name;
}

KeptFor reasonNamed(std::string_view name)
{
    const auto found = std::find_if(reasonNames.begin(), reasonNames.end(), [&](const ReasonName& entry) { return entry.name == name; });
    return found == reasonNames.end() ? KeptFor::unknown : found->reason;
}

QString textOf(const PlistValue& about, const char* key)
{
    const PlistValue* value = about.find(key);
    return value ? QString::fromStdString(value->asText()) : QString();
}

} // namespace

Result<QString> RecoveryStore::place(const QString& name, const Placing& put)
{
    if (Result<void> made = folders::makePrivate(m_folder); !made)
        return made.error();
    const QString stamp = QString::fromStdString(dates::write(m_clock.now(), dates::stamp));
    for (int n = 0; n < mostAlike; ++n) {
        const QString place = m_folder + '/' + stamp + (n > 0 ? "-" + QString::number(n) : QString()) + ' ' + name;
        const Result<bool> done = put(place);
        if (!done)
            return done.error();
        if (done.value())
            return place;
    }
    return Error {(m_folder + '/' + stamp + ' ' + name).toStdString() + " exists already, and so does every name like it"};
}

// Keeping

Result<QString> RecoveryStore::keepCopy(const QString& path, KeptFor reason)
{
    if (QFileInfo(path).isDir())
        return keepFolder(path, reason);
    if (const std::optional<QString> kept = keptLately(path, reason))
        return *kept;
    const FileBytes file = readRecords(path.toStdString());
    if (file.trouble != ReadTrouble::none)
        return Error {file.reason};
    return keepBytes(path, file.bytes, reason);
}

/// It gets its place when the copy is complete.
Result<QString> RecoveryStore::keepFolder(const QString& path, KeptFor reason)
{
    if (Result<void> made = folders::makePrivate(m_folder); !made)
        return made.error();
    const QString name = QFileInfo(path).fileName();
    const QString unfinished = m_folder + "/." + name + ".unfinished";
    folders::remove(unfinished);
    const Result<void> copied = folders::copyTree(QFileInfo(path).canonicalFilePath(), unfinished);
    const Result<QString> kept =
        copied ? place(name, [&](const QString& free) { return folders::moveIfFree(unfinished, free); }) : copied.error();
    if (kept)
        describe(kept.value(), path, reason);
    else
        folders::remove(unfinished);
    return kept;
}

std::optional<QString> RecoveryStore::keptLately(const QString& path, KeptFor reason) const
{
    for (const KeptThing& thing : things()) {
        const bool isOfFile = thing.origin == path && thing.reason == reason && thing.since.daysTo(m_clock.now()) <= daysToCountOn;
        if (isOfFile && folders::haveSameBytes(path, thing.path))
            return thing.path;
    }
    return std::nullopt;
}

Result<QString> RecoveryStore::keepBytes(const QString& path, std::string_view bytes, KeptFor reason)
{
    const Result<QString> kept =
        place(QFileInfo(path).fileName(), [&](const QString& free) { return createExclusively(free.toStdString(), bytes); });
    if (kept)
        describe(kept.value(), path, reason);
    return kept;
}

Result<void> RecoveryStore::moveIn(const QString& path, KeptFor reason)
{
    const Result<QString> kept = place(QFileInfo(path).fileName(), [&](const QString& free) { return folders::moveIfFree(path, free); });
    if (!kept)
        return kept.error();
    describe(kept.value(), path, reason);
    return {};
}

QString RecoveryStore::aboutPath(const QString& place) const
{
    return m_folder + aboutFolder + QFileInfo(place).fileName() + ".plist";
}

/// The thing is safe by now: a description that cannot be written is missed, no more.
void RecoveryStore::describe(const QString& place, const QString& origin, KeptFor reason) const
{
    PlistValue about = PlistValue::makeDict();
    about.set(originKey, PlistValue(cleanUtf8(origin.toStdString())));
    about.set(reasonKey, PlistValue(std::string(nameOf(reason))));
    const QString path = aboutPath(place);
    Result<void> written = folders::make(QFileInfo(path).path());
    if (written)
        written = writeFileSafely(path.toStdString(), plist::write(about));
    if (!written)
        logLine(written.error().message);
}

// Looking

KeptThing RecoveryStore::thingAt(const QString& place) const
{
    const QFileInfo entry(place);
    KeptThing thing;
    thing.path = place;
    const QString name = entry.fileName();
    const std::optional<QDateTime> stamp = dates::read(name.left(stampLength).toStdString(), dates::stamp);
    thing.since = stamp.value_or(entry.lastModified());
    thing.name = stamp ? name.mid(name.indexOf(' ') + 1) : name;
    const Result<PlistValue> about = plist::read(readWholeFile(aboutPath(place).toStdString()).bytes);
    if (about) {
        thing.origin = textOf(about.value(), originKey);
        thing.reason = reasonNamed(textOf(about.value(), reasonKey).toStdString());
    }
    return thing;
}

std::vector<KeptThing> RecoveryStore::things() const
{
    std::vector<KeptThing> found;
    const QStringList entries = QDir(m_folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System);
    for (const QString& entry : entries) {
        if (entry != Generations::folderName)
            found.push_back(thingAt(m_folder + '/' + entry));
    }
    std::stable_sort(found.begin(), found.end(), [](const KeptThing& a, const KeptThing& b) { return a.since > b.since; });
    return found;
}

Result<void> RecoveryStore::copyOut(const KeptThing& thing, const QString& target)
{
    return folders::copyTree(thing.path, target);
}

void RecoveryStore::giveUp(const QString& place)
{
    QFile::remove(place);
    QFile::remove(aboutPath(place));
}

void RecoveryStore::removeLeftovers() const
{
    temporaries::removeAbandoned(m_folder.toStdString());
    temporaries::removeAbandoned((m_folder + aboutFolder).toStdString());
    // Another program of the same person may be at one of today's.
    const QDir folder(m_folder);
    for (const QFileInfo& entry : folder.entryInfoList({".*.unfinished"}, QDir::AllEntries | QDir::Hidden | QDir::System)) {
        if (entry.lastModified().daysTo(m_clock.now()) > 1)
            folders::remove(entry.filePath());
    }
}

int RecoveryStore::cleanUp(const QStringList& sentences)
{
    removeLeftovers();
    const QString told = sentences.join('\n');
    int gone = 0;
    for (const KeptThing& thing : things()) {
        // However old it looks: the clock may have stood years back when it came.
        if (told.contains(thing.path) || thing.since.daysTo(m_clock.now()) <= daysToKeep || !folders::moveToTrash(thing.path))
            continue;
        QFile::remove(aboutPath(thing.path));
        ++gone;
    }
    if (gone > 0)
        logFormat("%i things older than %i days went from the recovery store into the trash", gone, daysToKeep);
    return gone;
}

// The note

QString RecoveryStore::notePath() const
{
    return m_folder + "/.to tell.txt";
}

void RecoveryStore::leaveNote(const QStringList& sentences)
{
    if (sentences.isEmpty())
        return;
    std::string note(readWholeFile(notePath().toStdString()).bytes);
    for (const QString& sentence : sentences)
        note += QString(sentence).replace('\n', ' ').toStdString() + '\n';
    Result<void> left = folders::makePrivate(m_folder);
    if (left)
        left = writeFileSafely(notePath().toStdString(), note);
    if (!left)
        logLine(left.error().message);
}

QStringList RecoveryStore::takeNote()
{
    const FileBytes note = readWholeFile(notePath().toStdString());
    if (note.trouble == ReadTrouble::none)
        QFile::remove(notePath());
    return toQString(note.bytes).split('\n', Qt::SkipEmptyParts);
}
