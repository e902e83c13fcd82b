// A web server on this computer that has a newer version of the program, for the picture of the window that tells of it.
#pragma once

#include <QTcpServer>
#include <QTcpSocket>

class UpdateServer {
public:
    UpdateServer()
    {
        m_server.listen(QHostAddress::LocalHost);
        QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] {
            QTcpSocket* socket = m_server.nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::readyRead, &m_server, [this, socket] { answer(socket); });
            QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        });
    }
    QByteArray address(const char* path) const { return "http://127.0.0.1:" + QByteArray::number(m_server.serverPort()) + path; }

private:
    void answer(QTcpSocket* socket)
    {
        const QByteArray question = socket->readAll();
        if (question.startsWith("GET /download")) {
            // Never ends, so that the picture shows how far it is.
            socket->write("HTTP/1.1 200 OK\r\nContent-Length: 9000000\r\n\r\n" + QByteArray(3'600'000, 'x'));
            return;
        }
        const QByteArray body = question.startsWith("GET /new") ? news() : description();
        socket->write("HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\nConnection: close\r\n\r\n" + body);
        socket->disconnectFromHost();
    }

    static QByteArray news()
    {
        return "<h3>Tasks and goals</h3><p>Tasks have a page of their own, with <b>alarms</b> that ring when they are due.</p>"
               "<ul><li>Time is logged against an order from the tool bar.</li><li>A goal gathers the tasks that lead to it.</li></ul>"
               "<h3>Mended</h3><ul><li>A second page of an invoice repeats the heading of its table.</li></ul>"
               "<p>Everything else is on <a href=\"https://example.org/vendaro\">our page</a>.</p>";
    }
    QByteArray description() const
    {
        const auto entry = [](const char* key, const QByteArray& value) {
            return QByteArray("<key>") + key + "</key><string>" + value + "</string>";
        };
        return "<plist version=\"1.0\"><dict>" + entry("currentversion", "99.0") + entry("releasedate", "1 March 2027")
            + entry("newinthisversionurl", address("/new")) + entry("downloadurl", address("/download/vendaro-99.0.deb"))
            + "</dict></plist>";
    }

    QTcpServer m_server;
};
