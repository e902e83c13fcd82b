#include "storage/RecoveryStore.h"

#include "desktop/Desktop.h"
#include "foundation/Dates.h"
#include "foundation/Folders.h"
#include "foundation/Log.h"
#include "foundation/SafeFile.h"
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
/// Things of one name and second; more than that and something is wrong with the disk.
constexpr int mostAlike = 1000;
/// Of "20240301-101530".
constexpr int stampLength = 15;
constexpr char originKey[] = "origin";
constexpr char reasonKey[] = "reason";

struct ReasonName {
    KeptFor reason;
    const char* name;
};
/// As the reasons are spelled on disk.
constexpr std::array reasonNames {ReasonName {KeptFor::unreadable, "unreadable"}, ReasonName {KeptFor::foreign, "foreign"},
    ReasonName {KeptFor::unsaved, "unsaved"}, ReasonName {KeptFor::displaced, "displaced"},
    ReasonName {KeptFor::attachments, "attachments"}, ReasonName {KeptFor::unknown, "unknown"}};

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

/// Nobody but the user may look into it.
Result<void> makePrivateFolder(const QString& folder)
{
    Result<void> made = folders::make(folder);
    if (made)
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return made;
}

} // namespace

Result<QString> RecoveryStore::place(const QString& name, const Placing& put)
{
    if (Result<void> made = makePrivateFolder(m_folder); !made)
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
    const FileBytes file = readWholeFile(path.toStdString());
    if (file.trouble != ReadTrouble::none)
        return Error {file.reason};
    return keepBytes(path, file.bytes, reason);
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
    return m_folder + "/.about/" + QFileInfo(place).fileName() + ".plist";
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

int RecoveryStore::cleanUp()
{
    int gone = 0;
    for (const KeptThing& thing : things()) {
        if (thing.since.daysTo(m_clock.now()) <= daysToKeep || !QFile::moveToTrash(thing.path))
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
    std::string note = readWholeFile(notePath().toStdString()).bytes;
    for (const QString& sentence : sentences)
        note += QString(sentence).replace('\n', ' ').toStdString() + '\n';
    Result<void> left = makePrivateFolder(m_folder);
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
    return QString::fromStdString(note.bytes).split('\n', Qt::SkipEmptyParts);
}
