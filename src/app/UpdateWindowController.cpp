#include "app/UpdateWindowController.h"

#include "app/PrefsForm.h"
#include "app/UpdateNotes.h"
#include "desktop/AlertTexts.h"
#include "desktop/Desktop.h"
#include "desktop/TextTable.h"
#include "foundation/Log.h"
#include "foundation/Text.h"
#include "storage/Settings.h"

#include <QFileInfo>
#include <QLocale>
#include <QNetworkAccessManager>
#include <QTextDocument>

namespace {

std::string_view viewOf(const QByteArray& bytes)
{
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

/// Read by hands that know kilobytes and megabytes.
QString sizeText(qint64 bytes)
{
    return QLocale().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
}

QString endpointFault(const QString& address)
{
    if (address.isEmpty() || Fetch::mayAsk(QUrl(address, QUrl::StrictMode)))
        return {};
    return localText("An address for updates begins with https://.");
}

} // namespace

UpdateWindowController::UpdateWindowController(UpdateNeeds needs, UpdateLimits limits) : m_needs(std::move(needs)), m_limits(limits)
{
    form.setTitle(localText("Software Update"));
    form.getUpdate.run = [this] { pressGet(); };
    form.cancel.run = [this] { pressCancel(); };
    m_needs.preferences.automaticUpdateCheck.onEdited = [this] { setAutomatic(m_needs.preferences.automaticUpdateCheck.isOn()); };
    m_needs.preferences.updateEndpoint.onEdited = [this] { storeEndpoint(); };
    connect(&form, &Form::closed, this, &UpdateWindowController::endDownload);
}

UpdateWindowController::~UpdateWindowController()
{
    // Closing tells the windows, which are gone.
    form.disconnect(this);
}

// Settings

bool UpdateWindowController::isAutomatic() const
{
    return !m_needs.store.value(settings::automaticUpdateCheck) || m_needs.store.flag(settings::automaticUpdateCheck);
}

QString UpdateWindowController::endpoint() const
{
    return toQString(m_needs.store.text(settings::updateEndpoint).value_or("")).trimmed();
}

void UpdateWindowController::showSettings()
{
    PrefsForm& preferences = m_needs.preferences;
    preferences.automaticUpdateCheck.setOn(isAutomatic());
    preferences.updateEndpoint.setText(endpoint());
    preferences.updateEndpoint.setFault(endpointFault(endpoint()));
    Q_EMIT automaticChanged();
}

void UpdateWindowController::setAutomatic(bool automatic)
{
    m_needs.store.set(settings::automaticUpdateCheck, PlistValue::makeBoolean(automatic));
    m_needs.preferences.automaticUpdateCheck.setOn(automatic);
    Q_EMIT automaticChanged();
}

void UpdateWindowController::turnOnAutomaticCheck()
{
    setAutomatic(true);
}

void UpdateWindowController::storeEndpoint()
{
    TextField& field = m_needs.preferences.updateEndpoint;
    const QString address = field.text().trimmed();
    field.setFault(endpointFault(address));
    if (address.isEmpty())
        m_needs.store.remove(settings::updateEndpoint);
    else
        m_needs.store.setText(settings::updateEndpoint, address.toStdString());
}

// The check

void UpdateWindowController::begin()
{
    showSettings();
    if (isAutomatic() && !endpoint().isEmpty())
        check(Asked::byItself);
}

void UpdateWindowController::checkForUpdates()
{
    if (isLoading() || !m_ready.isEmpty()) {
        form.open();
        return;
    }
    if (endpoint().isEmpty()) {
        m_needs.alerts.ask({localText(alerts::noUpdate.title),
            localText("There is no address to ask. It is set in the preferences, on the page Look."), {localText("OK")}});
        return;
    }
    m_needs.showStatus(localText("Looking for an update…"));
    check(Asked::byPerson);
}

void UpdateWindowController::check(Asked asked)
{
    m_asked = asked;
    const QUrl address(endpoint(), QUrl::StrictMode);
    if (!Fetch::mayAsk(address)) {
        m_fetch.reset();
        failCheck(endpointFault(endpoint()));
        return;
    }
    startFetch(address, m_limits.description, &UpdateWindowController::readDescription);
}

void UpdateWindowController::startFetch(
    const QUrl& address, FetchLimits limits, void (UpdateWindowController::*finished)(const Result<void>&))
{
    m_bytes.clear();
    m_fetch = std::make_unique<Fetch>(network(), address, limits);
    m_fetch->onBytes = [this](QByteArrayView bytes) { m_bytes.append(bytes.data(), bytes.size()); };
    m_fetch->onFinished = [this, finished](const Result<void>& outcome) {
        m_fetch.reset();
        (this->*finished)(outcome);
    };
}

void UpdateWindowController::readDescription(const Result<void>& outcome)
{
    if (!outcome) {
        logLine("update connection failed");
        failCheck(QString::fromStdString(outcome.error().message));
        return;
    }
    Result<UpdateDescription> description = readUpdateDescription(viewOf(m_bytes));
    if (!description) {
        const QString reason = QString::fromStdString(description.error().message);
        failCheck(fillText(localText("What the update server describes cannot be read. %@"), {reason}));
        return;
    }
    m_found = std::move(description).value();
    compare();
}

void UpdateWindowController::compare()
{
    if (isNewer())
        fetchNotes();
    else
        endCheck(makeAlert(alerts::noUpdate));
}

bool UpdateWindowController::isNewer() const
{
    const std::optional<ProgramVersion> own = readVersion(m_needs.version);
    if (!m_found.number || !own) {
        logLine("no version to compare: " + m_found.version.toStdString() + ", " + m_needs.version.toStdString());
        return false;
    }
    const ProgramVersion& newest = *m_found.number;
    logFormat("newest version is %i.%i.%i", newest[0], newest[1], newest[2]);
    logFormat("this version is %i.%i.%i", (*own)[0], (*own)[1], (*own)[2]);
    return newest > *own;
}

void UpdateWindowController::fetchNotes()
{
    if (m_found.newInThisVersion.isValid())
        startFetch(m_found.newInThisVersion, m_limits.notes, &UpdateWindowController::takeNotes);
    else
        takeNotes(Error {localText("There is no address for it.").toStdString()});
}

void UpdateWindowController::takeNotes(const Result<void>& outcome)
{
    Result<std::unique_ptr<QTextDocument>> notes = outcome ? readUpdateNotes(viewOf(m_bytes)) : outcome.error();
    if (!notes)
        logFormat("error making string from data at %s - error %s", m_found.newInThisVersion.toDisplayString().toStdString().c_str(),
            notes.error().message.c_str());
    // Whoever shows the old ones lets go of them before they go.
    const std::unique_ptr<QTextDocument> shownBefore = std::exchange(m_notes, notes ? std::move(notes).value() : nullptr);
    Q_EMIT notesChanged();
    showUpdate();
}

void UpdateWindowController::showUpdate()
{
    if (m_asked == Asked::byPerson)
        m_needs.showStatus(fillText(localText("There is an update: version %@."), {m_found.version}));
    form.versions.setText(fillText(localText("Version %@ is available; this is %@."), {m_found.version, m_needs.version}));
    form.releaseDate.setText(m_found.releaseDate.isEmpty() ? QString() : fillText(localText("Released: %@"), {m_found.releaseDate}));
    form.progress.setText({});
    form.getUpdate.setCaption(localText("Get Update"));
    form.getUpdate.setEnabled(m_found.download.isValid());
    form.trouble.setText(m_found.download.isValid() ? QString() : localText("The update server gives no address to get it from."));
    form.cancel.setCaption(localText("Later"));
    form.open();
}

void UpdateWindowController::endCheck(const Alert& alert)
{
    if (m_asked == Asked::byItself)
        return;
    m_needs.showStatus(alert.text);
    m_needs.alerts.ask(alert);
}

void UpdateWindowController::failCheck(const QString& sentence)
{
    logLine(sentence.toStdString());
    endCheck({localText(alerts::noUpdate.title), sentence, {localText("OK")}});
}

// The download

QNetworkAccessManager& UpdateWindowController::network()
{
    if (!m_network)
        m_network = makeNetwork();
    return *m_network;
}

QString UpdateWindowController::downloadFolder() const
{
    return m_needs.user.home() + "/Downloads";
}

void UpdateWindowController::pressGet()
{
    if (!m_ready.isEmpty())
        openAndQuit();
    else if (!isLoading() && m_found.download.isValid())
        startDownload();
}

void UpdateWindowController::pressCancel()
{
    if (isLoading())
        endDownload();
    else
        form.close();
}

void UpdateWindowController::startDownload()
{
    form.trouble.setText({});
    form.progress.setText(localText("Connecting…"));
    form.getUpdate.setEnabled(false);
    form.cancel.setCaption(localText("Cancel"));
    m_download = std::make_unique<UpdateDownload>(network(), m_found.download, downloadFolder(), m_limits.download);
    m_download->onProgress = [this](qint64 received, qint64 total) {
        form.progress.setText(total > 0 ? fillText(localText("%@ of %@"), {sizeText(received), sizeText(total)}) : sizeText(received));
        Q_EMIT progressed(received, total);
    };
    m_download->onReceived = [this](qint64 received) {
        logFormat("finished loading, data is %i bytes", static_cast<int>(received));
        form.progress.setText(localText("Saving…"));
        // Giving up would have to wait for the disk as well.
        form.cancel.setEnabled(false);
        Q_EMIT progressed(0, 0);
    };
    m_download->onFinished = [this](const UpdateDownload::Outcome& outcome) { finishDownload(outcome); };
    Q_EMIT loadingChanged();
}

/// Also when nothing is being loaded.
void UpdateWindowController::endDownload()
{
    if (!m_download)
        return;
    m_download.reset();
    form.progress.setText({});
    form.getUpdate.setEnabled(true);
    form.cancel.setEnabled(true);
    form.cancel.setCaption(localText("Later"));
    Q_EMIT loadingChanged();
}

void UpdateWindowController::finishDownload(const UpdateDownload::Outcome& outcome)
{
    endDownload();
    if (outcome.failure) {
        const bool isSaving = *outcome.failure == UpdateDownload::Failure::saving;
        logLine(isSaving ? "unable to save to " + outcome.path.toStdString() : "update connection failed");
        logLine(outcome.reason.toStdString());
        form.trouble.setText(outcome.reason);
        return;
    }
    m_ready = outcome.path;
    openAndQuit();
}

void UpdateWindowController::openAndQuit()
{
    if (!QFileInfo::exists(m_ready)) {
        const QString gone = fillText(localText("%@ is not there any more."), {std::exchange(m_ready, {})});
        showUpdate();
        form.trouble.setText(gone);
        return;
    }
    if (m_needs.isEditing()) {
        showReady(localText("Something is being edited. Save or cancel it first."));
        return;
    }
    if (const QString reason = m_needs.saveEverything(); !reason.isEmpty()) {
        showReady(fillText(localText("Not everything could be saved: %@"), {reason}));
        return;
    }
    m_needs.opener.openUrl(QUrl::fromLocalFile(std::exchange(m_ready, {})));
    m_needs.opener.revealFolder(downloadFolder());
    form.close();
    m_needs.quit();
}

void UpdateWindowController::showReady(const QString& trouble)
{
    form.progress.setText(fillText(localText("The update is %@."), {m_ready}));
    form.trouble.setText(trouble);
    form.getUpdate.setCaption(localText("Open and Quit"));
    form.open();
}

void UpdateWindowController::openLink(const QUrl& address)
{
    if (address.scheme() == u"https" || address.scheme() == u"http")
        m_needs.opener.openUrl(address);
}

void UpdateWindowController::stop()
{
    m_fetch.reset();
    form.close();
}
