#include "support/HttpServer.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QHostAddress>
#include <QPointer>
#include <QTcpSocket>
#include <QThread>
#include <QTimer>

HttpServer::HttpServer()
{
    if (!m_server.listen(QHostAddress::LocalHost))
        qFatal("no port to listen on");
    QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] {
        while (QTcpSocket* socket = m_server.nextPendingConnection())
            meet(socket);
    });
}

QByteArray HttpServer::page(const QByteArray& body, const QByteArray& status)
{
    return "HTTP/1.1 " + status + "\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\nConnection: close\r\n\r\n" + body;
}

QByteArray HttpServer::redirect(const QUrl& target)
{
    return "HTTP/1.1 302 Found\r\nLocation: " + target.toEncoded() + "\r\nContent-Length: 0\r\nConnection: close\r\n\r\n";
}

QUrl HttpServer::url(const QString& path) const
{
    return QUrl(QString("http://127.0.0.1:%1%2").arg(m_server.serverPort()).arg(path));
}

void HttpServer::meet(QTcpSocket* socket)
{
    QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    auto question = std::make_shared<QByteArray>();
    QObject::connect(socket, &QTcpSocket::readyRead, &m_server, [this, socket, question] {
        *question += socket->readAll();
        if (question->contains("\r\n\r\n"))
            reply(socket, std::exchange(*question, {}));
    });
}

void HttpServer::reply(QTcpSocket* socket, const QByteArray& question)
{
    const QString path = QString::fromLatin1(question.split(' ').value(1));
    m_asked += path;
    m_lastQuestion = question;
    Answer answer = m_answers.value(path, {page("nothing here", "404 Not Found")});
    if (answer.breaksOffAfter != Answer::whole)
        answer.bytes.truncate(answer.breaksOffAfter);
    if (answer.pieceSize > 0) {
        sendPieces(socket, answer, answer.bytes);
        return;
    }
    socket->write(answer.bytes);
    end(socket, answer);
}

void HttpServer::sendPieces(QTcpSocket* socket, const Answer& answer, const QByteArray& rest)
{
    if (rest.isEmpty()) {
        end(socket, answer);
        return;
    }
    socket->write(rest.left(answer.pieceSize));
    QTimer::singleShot(answer.pieceInterval, socket, [socket, answer, rest] { sendPieces(socket, answer, rest.mid(answer.pieceSize)); });
}

void HttpServer::end(QTcpSocket* socket, const Answer& answer)
{
    if (!answer.staysSilent)
        socket->disconnectFromHost();
}

bool waitUntil(const std::function<bool()>& isSo, int milliseconds)
{
    QElapsedTimer timer;
    timer.start();
    while (!isSo() && timer.elapsed() < milliseconds) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QThread::msleep(1);
    }
    return isSo();
}
