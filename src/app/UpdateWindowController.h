// The update check: asks the server whether there is a newer version, shows what is new in it, and brings it.
//
// Nothing is asked of the network while no address is set. Everything goes on beside the person's work; what goes wrong is told only to
// who wanted to know, and logged.
#pragma once

#include "app/UpdateDescription.h"
#include "app/UpdateDownload.h"
#include "desktop/Form.h"

class Alerts;
class Opener;
class PrefsForm;
class QTextDocument;
class SettingsStore;
class User;
struct Alert;

class UpdateForm : public Form {
public:
    /// Which version there is, and which this one is.
    TextField versions {*this, "versions"};
    TextField releaseDate {*this, "releaseDate"};
    /// How far the download is, or what to do next; empty when there is nothing to say.
    TextField progress {*this, "progress"};
    /// What went wrong; empty when nothing did.
    TextField trouble {*this, "trouble"};
    CommandField getUpdate {*this, "getUpdate"};
    CommandField cancel {*this, "cancelUpdate"};
};

struct UpdateNeeds {
    SettingsStore& store;
    PrefsForm& preferences;
    Alerts& alerts;
    Opener& opener;
    const User& user;
    /// Of this program.
    QString version;
    std::function<void(const QString& line)> showStatus;
    /// Whether an editor is open, which may hold what was typed and is not saved.
    std::function<bool()> isEditing;
    /// Writes all there is; answers why something could not be written, empty when all is on the disk.
    std::function<QString()> saveEverything;
    std::function<void()> quit;
};

/// How long and how much of each is waited for.
struct UpdateLimits {
    FetchLimits description {256 * 1024, std::chrono::seconds(20), std::chrono::seconds(60)};
    FetchLimits notes {64 * 1024, std::chrono::seconds(20), std::chrono::seconds(60)};
    FetchLimits download {qint64(1) << 30, std::chrono::seconds(60), {}};
};

class UpdateWindowController : public QObject {
    Q_OBJECT
public:
    explicit UpdateWindowController(UpdateNeeds needs, UpdateLimits limits = {});
    ~UpdateWindowController() override;

    UpdateForm form;

    /// At the start: the automatic check, unless it is switched off.
    void begin();
    /// The person wants to know.
    void checkForUpdates();
    void turnOnAutomaticCheck();
    /// Whether the check runs at each start.
    bool isAutomatic() const;
    /// Nothing is asked or brought any more.
    void stop();

    /// What is new; none before a newer version was found, or when it could not be read.
    QTextDocument* notes() const { return m_notes.get(); }
    /// Opens a link of the notes in the browser.
    void openLink(const QUrl& address);
    bool isLoading() const { return m_download != nullptr; }

Q_SIGNALS:
    void automaticChanged();
    void notesChanged();
    /// What came of the download and how much there is, in bytes; no total while it is not known.
    void progressed(qint64 received, qint64 total);
    /// A download began, ended or was given up.
    void loadingChanged();

private:
    enum class Asked { byItself, byPerson };
    void showSettings();
    void setAutomatic(bool automatic);
    void storeEndpoint();
    QString endpoint() const;
    void check(Asked asked);
    void readDescription(const Result<void>& outcome);
    void compare();
    bool isNewer() const;
    void fetchNotes();
    void takeNotes(const Result<void>& outcome);
    void showUpdate();
    void endCheck(const Alert& alert);
    void failCheck(const QString& sentence);
    void startFetch(const QUrl& address, FetchLimits limits, void (UpdateWindowController::*finished)(const Result<void>&));
    void pressGet();
    void pressCancel();
    void startDownload();
    void finishDownload(const UpdateDownload::Outcome& outcome);
    void endDownload();
    void openAndQuit();
    void showReady(const QString& trouble = {});
    QNetworkAccessManager& network();
    QString downloadFolder() const;

    UpdateNeeds m_needs;
    UpdateLimits m_limits;
    Asked m_asked = Asked::byItself;
    UpdateDescription m_found;
    std::unique_ptr<QTextDocument> m_notes;
    /// The downloaded update, until it was opened.
    QString m_ready;
    std::unique_ptr<QNetworkAccessManager> m_network;
    std::unique_ptr<Fetch> m_fetch;
    QByteArray m_bytes;
    std::unique_ptr<UpdateDownload> m_download;
};
