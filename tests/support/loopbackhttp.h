#pragma once

#include <QByteArray>
#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTcpServer>
#include <QTcpSocket>

// A small HTTP server on 127.0.0.1, on a port the system picks, serving the
// pages a test gives it. It answers on the event loop of the test's thread,
// so a test waits for what it expects with QTest::qWaitFor or waitUntil.
class LoopbackHttp : public QObject
{
public:
    LoopbackHttp()
    {
        m_server.listen(QHostAddress::LocalHost, 0);
        QObject::connect(&m_server, &QTcpServer::newConnection, this, [this] {
            while (QTcpSocket *socket = m_server.nextPendingConnection()) {
                socket->setParent(this);
                QObject::connect(socket, &QTcpSocket::readyRead, socket,
                                 [this, socket] { answer(socket); });
                QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            }
        });
    }

    bool listening() const { return m_server.isListening(); }
    QString url(const QString &path) const
    {
        return QStringLiteral("http://127.0.0.1:%1%2").arg(m_server.serverPort()).arg(path);
    }
    // An HTML page at path (with its query, if the test wants one matched).
    void page(const QString &path, const QByteArray &html) { m_pages[path] = html; }
    // The paths asked for, queries included, in order.
    QStringList requests;

private:
    void answer(QTcpSocket *socket)
    {
        QByteArray &in = m_buffers[socket];
        in += socket->readAll();
        if (!in.contains("\r\n\r\n"))
            return;
        const QList<QByteArray> request = in.left(in.indexOf("\r\n")).split(' ');
        in.clear();
        const QString path = request.size() > 1 ? QString::fromLatin1(request[1]) : QString();
        requests << path;
        const QString bare = path.section(QLatin1Char('?'), 0, 0);
        const bool found = m_pages.contains(path) || m_pages.contains(bare);
        const QByteArray body = found ? m_pages.value(path, m_pages.value(bare))
                                      : QByteArray("<html><title>Not found</title></html>");
        socket->write((found ? "HTTP/1.1 200 OK\r\n" : "HTTP/1.1 404 Not Found\r\n") +
                      QByteArray("Content-Type: text/html; charset=utf-8\r\nContent-Length: ") +
                      QByteArray::number(body.size()) + "\r\nConnection: close\r\n\r\n" + body);
        socket->disconnectFromHost();
    }

    QTcpServer m_server;
    QMap<QString, QByteArray> m_pages;
    QMap<QTcpSocket *, QByteArray> m_buffers;
};
