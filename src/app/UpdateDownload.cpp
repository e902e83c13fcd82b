#include "app/UpdateDownload.h"

#include "desktop/Alerts.h"
#include "desktop/TextTable.h"
#include "foundation/Folders.h"
#include "foundation/TemporaryFiles.h"

#include <QFile>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QNetworkAccessManager>

namespace {

/// In bytes; the temporary file's name is longer.
constexpr qsizetype longestName = 200;

/// Whether opening the file might run it.
bool isProgram(const QString& name, const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return true;
    const QMimeDatabase kinds;
    for (const QMimeType& kind : {kinds.mimeTypeForFileNameAndData(name, &file), kinds.mimeTypeForData(&file)}) {
        if (kind.inherits("application/x-executable") || kind.inherits("application/x-desktop"))
            return true;
    }
    return false;
}

void takeRightToRun(const QString& path)
{
    const QFile::Permissions running = QFile::ExeOwner | QFile::ExeUser | QFile::ExeGroup | QFile::ExeOther;
    QFile::setPermissions(path, QFile::permissions(path) & ~running);
}

} // namespace

Result<QString> UpdateDownload::fileName(const QUrl& address)
{
    // A slash that is spelled by its number belongs to the name, which then is none.
    const QString name = QUrl::fromPercentEncoding(address.fileName(QUrl::FullyEncoded).toUtf8());
    if (!folders::isSingleComponent(name) || name.startsWith('.') || name.toUtf8().size() > longestName || name != name.simplified())
        return Error {fillText(localText("The update's address %@ names no file."), {address.toDisplayString()}).toStdString()};
    return name;
}

UpdateDownload::UpdateDownload(QNetworkAccessManager& network, const QUrl& address, const QString& folder, FetchLimits limits)
{
    const Result<QString> name = fileName(address);
    m_path = folder + '/' + (name ? name.value() : QString());
    if (!name) {
        finish(Failure::saving, QString::fromStdString(name.error().message));
        return;
    }
    if (const Result<void> made = folders::make(folder); !made) {
        finish(Failure::saving, QString::fromStdString(made.error().message));
        return;
    }
    begin(network, address, folder, limits);
}

void UpdateDownload::begin(QNetworkAccessManager& network, const QUrl& address, const QString& folder, FetchLimits limits)
{
    // What a crash left of earlier ones.
    temporaries::removeAbandoned(folder.toStdString());
    m_file.emplace(m_path.toStdString());
    m_fetch = std::make_unique<Fetch>(network, address, limits);
    m_fetch->onBytes = [this](QByteArrayView bytes) { takeBytes(bytes); };
    m_fetch->onProgress = [this](qint64 received, qint64 total) {
        if (onProgress && !m_finished)
            onProgress(received, total);
    };
    m_fetch->onFinished = [this](const Result<void>& outcome) { received(outcome); };
}

UpdateDownload::~UpdateDownload()
{
    m_isGivenUp = true;
    if (m_storing.valid())
        m_storing.wait();
}

void UpdateDownload::takeBytes(QByteArrayView bytes)
{
    if (m_finished)
        return;
    m_received += bytes.size();
    m_file->append({bytes.data(), static_cast<std::size_t>(bytes.size())});
    // A full disk is no reason to load the rest.
    if (m_file->hasFailed())
        finish(Failure::saving, QString::fromStdString(m_file->prepare().error().message));
}

void UpdateDownload::received(const Result<void>& outcome)
{
    if (m_finished)
        return;
    if (!outcome) {
        finish(Failure::connection, QString::fromStdString(outcome.error().message));
        return;
    }
    if (onReceived)
        onReceived(m_received);
    store();
}

void UpdateDownload::store()
{
    m_storing = std::async(std::launch::async, [this] {
        const Result<void> stored = putInPlace();
        QMetaObject::invokeMethod(
            this,
            [this, stored] {
                if (stored)
                    finish();
                else
                    finish(Failure::saving, QString::fromStdString(stored.error().message));
            },
            Qt::QueuedConnection);
    });
}

/// On a thread of its own.
Result<void> UpdateDownload::putInPlace()
{
    if (Result<void> prepared = m_file->prepare(); !prepared)
        return prepared;
    const QString temporary = QString::fromStdString(m_file->temporaryPath());
    if (isProgram(QFileInfo(m_path).fileName(), temporary))
        return Error {fillText(localText("%@ is a program, which Vendaro does not open."), {QFileInfo(m_path).fileName()}).toStdString()};
    takeRightToRun(temporary);
    if (m_isGivenUp || folders::haveSameBytes(temporary, m_path))
        return {};
    const QFileInfo standing(m_path);
    if (standing.exists() || standing.isSymLink()) {
        if (Result<void> moved = folders::moveToTrash(m_path); !moved)
            return moved;
    }
    return m_file->commit();
}

void UpdateDownload::finish(std::optional<Failure> failure, const QString& reason)
{
    if (std::exchange(m_finished, true))
        return;
    // The fetch may be in the middle of saying something, and whoever hears of it may delete this.
    const auto tell = [this, outcome = Outcome {m_path, failure, reason}] {
        m_fetch.reset();
        m_file.reset();
        const auto told = onFinished;
        if (told)
            told(outcome);
    };
    QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
}
