// A web server on this computer that a test scripts: what it answers to which path, how slowly, and after how many bytes it breaks off.
#pragma once

#include <QByteArray>
#include <QHash>
#include <QStringList>
#include <QTcpServer>
#include <QUrl>

#include <deque>
#include <functional>

class HttpServer {
public:
    HttpServer();

    /// What goes over the wire, headers and all.
    struct Answer {
        QByteArray bytes;
        static constexpr qsizetype whole = -1;
        /// Breaks off behind that many bytes.
        qsizetype breaksOffAfter = whole;
        /// Goes in pieces of this size, this many milliseconds apart; 0 for all at once.
        qsizetype pieceSize = 0;
        int pieceInterval = 5;
        /// Sends what there is and then says nothing more.
        bool staysSilent = false;
    };
    /// A complete answer with its length.
    static QByteArray page(const QByteArray& body, const QByteArray& status = "200 OK");
    static QByteArray redirect(const QUrl& target);

    void answer(const QString& path, Answer answer) { m_answers[path] = std::move(answer); }
    void serve(const QString& path, const QByteArray& body) { answer(path, {page(body)}); }
    QUrl url(const QString& path) const;
    /// The paths asked for so far.
    const QStringList& asked() const { return m_asked; }
    /// What the last question said, headers and all.
    const QByteArray& lastQuestion() const { return m_lastQuestion; }
    void stopListening() { m_server.close(); }

private:
    void meet(QTcpSocket* socket);
    void reply(QTcpSocket* socket, const QByteArray& question);
    static void sendPieces(QTcpSocket* socket, const Answer& answer, const QByteArray& rest);
    static void end(QTcpSocket* socket, const Answer& answer);

    QTcpServer m_server;
    QHash<QString, Answer> m_answers;
    QStringList m_asked;
    QByteArray m_lastQuestion;
};

/// Lets the program work until something is so, or too much time has passed; answers whether it is.
bool waitUntil(const std::function<bool()>& isSo, int milliseconds = 10'000);
