// One question to a web server and what it answers, as it comes, with bounds on its size and on the time it takes.
//
// Only addresses whose answer nobody on the way can change are asked: https, or this computer itself. That holds for where a server sends
// one on to as well.
#pragma once

#include "foundation/Result.h"

#include <QByteArrayView>
#include <QObject>
#include <QTimer>
#include <QUrl>

#include <chrono>
#include <functional>
#include <memory>

class QNetworkAccessManager;
class QNetworkReply;

struct FetchLimits {
    /// In bytes.
    qint64 largest;
    /// The longest that nothing may come.
    std::chrono::milliseconds silence {20'000};
    /// The longest that all of it may take; zero for any time.
    std::chrono::milliseconds whole {0};
};

/// A network for updates: this computer is asked directly, others as the desktop says.
std::unique_ptr<QNetworkAccessManager> makeNetwork();

class Fetch : public QObject {
    Q_OBJECT
public:
    /// Whoever deletes it before it is finished gives up.
    Fetch(QNetworkAccessManager& network, const QUrl& address, FetchLimits limits);
    ~Fetch() override;

    static bool mayAsk(const QUrl& address);

    /// The next bytes. The fetch must not be deleted in it.
    std::function<void(QByteArrayView bytes)> onBytes;
    /// How many bytes came, and how many there are; 0 when the server does not say.
    std::function<void(qint64 received, qint64 total)> onProgress;
    /// All has come, or why not. Runs once, at last, and never before the constructor is done; the fetch may be deleted in it.
    std::function<void(Result<void>)> onFinished;

private:
    void ask();
    void checkHeaders();
    void goOn(const QUrl& address);
    void takeBytes();
    void replyFinished();
    void finish(Result<void> outcome);
    void fail(const QString& sentence);
    QString server() const;
    QString reasonOfReply() const;
    bool isLengthCertain() const;

    QNetworkAccessManager& m_network;
    FetchLimits m_limits;
    /// Where it goes after being sent on.
    QUrl m_address;
    QNetworkReply* m_reply = nullptr;
    QTimer m_silence;
    QTimer m_whole;
    qint64 m_received = 0;
    int m_redirects = 0;
    bool m_finished = false;
};
