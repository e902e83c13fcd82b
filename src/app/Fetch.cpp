#include "app/Fetch.h"

#include "desktop/Alerts.h"
#include "desktop/TextTable.h"

#include <QHostAddress>
#include <QNetworkAccessManager>
#include <QNetworkProxyFactory>
#include <QNetworkReply>
#include <QNetworkRequest>

namespace {

constexpr int mostRedirects = 5;
/// What waits for the main thread; the server is kept waiting beyond that.
constexpr qint64 mostBuffered = 4 * 1024 * 1024;
constexpr int statusAllRight = 200;
constexpr int firstErrorStatus = 400;

bool isThisComputer(const QString& host)
{
    return host.compare(u"localhost", Qt::CaseInsensitive) == 0 || QHostAddress(host).isLoopback();
}

class UpdateProxies : public QNetworkProxyFactory {
public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery& query) override
    {
        return isThisComputer(query.peerHostName()) ? QList {QNetworkProxy(QNetworkProxy::NoProxy)} : systemProxyForQuery(query);
    }
};

QNetworkRequest requestFor(const QUrl& address)
{
    QNetworkRequest request(address);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    // Packed, its size would be known only afterwards.
    request.setRawHeader("Accept-Encoding", "identity");
    return request;
}

} // namespace

std::unique_ptr<QNetworkAccessManager> makeNetwork()
{
    auto network = std::make_unique<QNetworkAccessManager>();
    network->setProxyFactory(new UpdateProxies);
    return network;
}

bool Fetch::mayAsk(const QUrl& address)
{
    if (!address.isValid() || address.host().isEmpty())
        return false;
    return address.scheme() == u"https" || (address.scheme() == u"http" && isThisComputer(address.host()));
}

Fetch::Fetch(QNetworkAccessManager& network, const QUrl& address, FetchLimits limits)
    : m_network(network)
    , m_limits(limits)
    , m_address(address)
{
    m_silence.setSingleShot(true);
    m_whole.setSingleShot(true);
    const auto tooSlow = [this](std::chrono::milliseconds time) {
        const QString seconds = QString::number(static_cast<double>(time.count()) / 1000);
        fail(fillText(localText("The server %@ took longer than %@ seconds."), {server(), seconds}));
    };
    connect(&m_silence, &QTimer::timeout, this, [this, tooSlow] { tooSlow(m_limits.silence); });
    connect(&m_whole, &QTimer::timeout, this, [this, tooSlow] { tooSlow(m_limits.whole); });
    if (m_limits.whole.count() > 0)
        m_whole.start(m_limits.whole);
    ask();
}

void Fetch::ask()
{
    m_silence.start(m_limits.silence);
    m_reply = m_network.get(requestFor(m_address));
    m_reply->setParent(this);
    m_reply->setReadBufferSize(mostBuffered);
    connect(m_reply, &QNetworkReply::metaDataChanged, this, &Fetch::checkHeaders);
    connect(m_reply, &QNetworkReply::readyRead, this, &Fetch::takeBytes);
    connect(m_reply, &QNetworkReply::finished, this, &Fetch::replyFinished);
}

Fetch::~Fetch()
{
    m_finished = true;
    m_reply->disconnect(this);
    m_reply->abort();
}

void Fetch::goOn(const QUrl& address)
{
    const bool isSafe = mayAsk(address) && (address.scheme() == u"https" || m_address.scheme() != u"https");
    if (!isSafe) {
        fail(fillText(localText("The server %@ sends one on to %@, which is not safe."), {server(), address.toDisplayString()}));
        return;
    }
    if (++m_redirects > mostRedirects) {
        fail(fillText(localText("The server %@ sends one from address to address without end."), {server()}));
        return;
    }
    m_reply->disconnect(this);
    m_reply->deleteLater();
    m_address = address;
    ask();
}

void Fetch::checkHeaders()
{
    if (m_reply->header(QNetworkRequest::ContentLengthHeader).toLongLong() > m_limits.largest)
        fail(fillText(localText("What the server %@ sends is too large."), {server()}));
}

void Fetch::takeBytes()
{
    m_silence.start(m_limits.silence);
    // What comes with an error is for browsers.
    if (m_finished || m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() != statusAllRight)
        return;
    const QByteArray bytes = m_reply->readAll();
    m_received += bytes.size();
    if (m_received > m_limits.largest) {
        fail(fillText(localText("What the server %@ sends is too large."), {server()}));
        return;
    }
    if (onBytes)
        onBytes(bytes);
    if (onProgress && !m_finished)
        onProgress(m_received, m_reply->header(QNetworkRequest::ContentLengthHeader).toLongLong());
}

/// Without its length nobody knows whether an answer that ended is whole.
bool Fetch::isLengthCertain() const
{
    return m_reply->hasRawHeader("Content-Length") || m_reply->hasRawHeader("Transfer-Encoding")
        || m_reply->attribute(QNetworkRequest::Http2WasUsedAttribute).toBool();
}

void Fetch::replyFinished()
{
    if (m_finished)
        return;
    const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (m_reply->error() != QNetworkReply::NoError) {
        fail(reasonOfReply());
        return;
    }
    const QUrl target = m_reply->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
    if (!target.isEmpty()) {
        goOn(m_address.resolved(target));
        return;
    }
    if (status != statusAllRight) {
        fail(fillText(localText("The server %@ answered with %@."), {server(), QString::number(status)}));
        return;
    }
    takeBytes();
    const qint64 promised = m_reply->header(QNetworkRequest::ContentLengthHeader).toLongLong();
    if (!m_finished && (!isLengthCertain() || (promised > 0 && promised != m_received)))
        fail(fillText(localText("The server %@ does not say whether it sent everything."), {server()}));
    else
        finish({});
}

QString Fetch::server() const
{
    return m_address.host();
}

QString Fetch::reasonOfReply() const
{
    const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (status >= firstErrorStatus) {
        const QString phrase = m_reply->attribute(QNetworkRequest::HttpReasonPhraseAttribute).toString();
        return fillText(
            localText("The server %@ answered with %@."), {server(), QString("%1 %2").arg(QString::number(status), phrase).trimmed()});
    }
    switch (m_reply->error()) {
    case QNetworkReply::HostNotFoundError: return fillText(localText("There is no server %@, or no way to the network."), {server()});
    case QNetworkReply::ConnectionRefusedError: return fillText(localText("The server %@ does not answer."), {server()});
    case QNetworkReply::RemoteHostClosedError: return fillText(localText("The server %@ broke off."), {server()});
    case QNetworkReply::SslHandshakeFailedError: return fillText(localText("The server %@ could not prove who it is."), {server()});
    default: return fillText(localText("The server %@ could not be asked: %@."), {server(), m_reply->errorString()});
    }
}

void Fetch::fail(const QString& sentence)
{
    finish(Error {sentence.toStdString()});
}

void Fetch::finish(Result<void> outcome)
{
    if (std::exchange(m_finished, true))
        return;
    m_silence.stop();
    m_whole.stop();
    if (!m_reply->isFinished())
        m_reply->abort();
    // The reply is in the middle of saying something, and whoever hears of it may delete this.
    const auto tell = [this, outcome = std::move(outcome)] {
        const auto told = onFinished;
        if (told)
            told(outcome);
    };
    QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
}
