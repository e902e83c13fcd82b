// Brings a file from a web server into a folder, whole or not at all.
//
// What comes goes into a temporary file. When all has come it is flushed and read back on a thread of its own, and only then takes its
// name; a file that had the name before goes into the trash.
#pragma once

#include "app/Fetch.h"
#include "foundation/SafeFile.h"

#include <atomic>
#include <future>
#include <optional>

class UpdateDownload : public QObject {
    Q_OBJECT
public:
    enum class Failure { connection, saving };
    struct Outcome {
        /// Where the file is, or would have been.
        QString path;
        /// None when it is there.
        std::optional<Failure> failure;
        /// Why not, in a sentence.
        QString reason;
    };

    /// Makes the folder when it is missing. Whoever deletes it before it is finished gives up, and nothing is left.
    UpdateDownload(QNetworkAccessManager& network, const QUrl& address, const QString& folder, FetchLimits limits);
    ~UpdateDownload() override;

    /// The last part of the address's path, as a file's name; an error when no file is to have that name.
    static Result<QString> fileName(const QUrl& address);

    std::function<void(qint64 received, qint64 total)> onProgress;
    /// All has come, and is being put on the disk for certain.
    std::function<void(qint64 received)> onReceived;
    /// Runs once, at last, and never before the constructor is done; the download may be deleted in it.
    std::function<void(const Outcome& outcome)> onFinished;

private:
    void begin(QNetworkAccessManager& network, const QUrl& address, const QString& folder, FetchLimits limits);
    void takeBytes(QByteArrayView bytes);
    void received(const Result<void>& outcome);
    void store();
    Result<void> putInPlace();
    void finish(std::optional<Failure> failure = std::nullopt, const QString& reason = {});

    QString m_path;
    std::optional<SafeFile> m_file;
    std::unique_ptr<Fetch> m_fetch;
    qint64 m_received = 0;
    bool m_finished = false;
    std::atomic<bool> m_isGivenUp = false;
    /// Ends before anything else of this goes.
    std::future<void> m_storing;
};
