#include "documents/Notepad.h"

#include "desktop/Alerts.h"
#include "desktop/TextTable.h"
#include "documents/rtf/RichPackage.h"
#include "documents/rtf/RtfWriter.h"
#include "foundation/Folders.h"
#include "foundation/Log.h"
#include "storage/RecoveryStore.h"

#include <QFileInfo>
#include <QFont>
#include <QTextDocument>

#include <utility>

namespace {

constexpr char notepadName[] = "/notepad.rtfd";
/// Without pictures it is one file.
constexpr char looseName[] = "/notepad.rtf";

bool somethingStandsAt(const QString& path)
{
    return folders::mayBeThere(path) || QFileInfo(path).isSymLink();
}

/// What is typed where no other font is in force: one that other programs know by its name in the file.
QFont typingFont()
{
    QFont font("Liberation Sans");
    font.setPointSizeF(12);
    return font;
}

} // namespace

Notepad::Notepad(const QString& databaseFolder, RecoveryStore& recovery, std::function<bool()> mayWrite)
    : m_path(databaseFolder + notepadName)
    , m_recovery(recovery)
    , m_mayWrite(std::move(mayWrite))
    , m_document(makeSealedDocument())
{
    m_document->setDefaultFont(typingFont());
}

Notepad::~Notepad() = default;

FileStamp Notepad::stamp() const
{
    return fileStamp(textFileIn(m_path).toStdString());
}

bool Notepad::isChanged() const
{
    return m_document->isModified();
}

void Notepad::load()
{
    m_stamp = stamp();
    const RichPackage package = readRichPackage(m_path);
    const std::unique_ptr<QTextDocument> before = std::exchange(m_document, makeDocument(package.text, m_path));
    m_document->setDefaultFont(typingFont());
    m_document->setModified(false);
    m_damage.clear();
    m_holdsMore = package.leavesOut;
    if (!package.damage.isEmpty() && somethingStandsAt(m_path)) {
        logLine(package.damage.toStdString());
        m_holdsMore = true;
        m_damage = package.damage + ". " + localText("The notepad shows as much of it as there is, and the file is kept when you save.");
    }
    Q_EMIT documentReplaced();
}

void Notepad::catchUp()
{
    // Where the file has gone, what was read of it stays.
    if (!isChanged() && stamp() != m_stamp && somethingStandsAt(textFileIn(m_path)))
        load();
    Q_EMIT readOnlyChecked();
}

bool Notepad::save()
{
    const bool nothingToWrite = !isChanged() && (somethingStandsAt(m_path) || isReadOnly());
    const Result<void> written = nothingToWrite ? Result<void>() : write();
    const QString reason = written ? QString() : QString::fromStdString(written.error().message);
    // It is tried again and again.
    if (!written && reason != m_unsavedReason)
        logLine(written.error().message);
    m_unsavedReason = reason;
    Q_EMIT savedStateChanged();
    return written.ok();
}

Result<void> Notepad::write()
{
    if (isReadOnly())
        return Error {localText("the default database, where the notepad lies, is open for reading only").toStdString()};
    Result<void> saved = keepOriginal();
    if (saved)
        saved = folders::make(QFileInfo(m_path).path());
    if (saved)
        saved = writeRichPackage(m_path, *m_document);
    if (!saved)
        return saved;
    m_stamp = stamp();
    m_holdsMore = false;
    m_damage.clear();
    m_document->setModified(false);
    return {};
}

Result<void> Notepad::keepOriginal()
{
    if (!somethingStandsAt(m_path))
        return {};
    if (m_holdsMore)
        return keep(KeptFor::unreadable);
    return stamp() == m_stamp ? Result<void>() : keep(KeptFor::foreign);
}

/// A copy, so that the pictures stay in their places. What cannot be copied, or is no package at all, goes there itself.
Result<void> Notepad::keep(KeptFor reason)
{
    if (QFileInfo(m_path).isDir() && m_recovery.keepCopy(m_path, reason))
        return {};
    return m_recovery.moveIn(m_path, reason);
}

QStringList Notepad::keepUnsaved()
{
    if (!isChanged())
        return {};
    const std::string text = writeRtf(takeApart(*m_document).text);
    const Result<QString> kept = m_recovery.keepBytes(QFileInfo(m_path).path() + looseName, text, KeptFor::unsaved);
    const QString sentence = fillText(localText("The notepad could not be saved: %@. "), {m_unsavedReason})
        + (kept ? fillText(localText("What it should hold is kept as %@."), {kept.value()})
                : QString::fromStdString(kept.error().message) + '.');
    logLine(sentence.toStdString());
    return {sentence};
}
