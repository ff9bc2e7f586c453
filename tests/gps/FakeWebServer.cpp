#include "FakeWebServer.h"

#include <QAbstractEventDispatcher>
#include <QTcpServer>
#include <QTcpSocket>

FakeWebServer::FakeWebServer(QByteArray body, QByteArray contentType)
{
    thread.start();
    const QByteArray reply = "HTTP/1.0 200 OK\r\nContent-Type: " + contentType + "\r\nContent-Length: " + QByteArray::number(body.size()) +
                             "\r\nAccess-Control-Allow-Origin: *\r\nConnection: close\r\n\r\n" + body;
    QObject *context = new QObject;
    context->moveToThread(&thread);
    QMetaObject::invokeMethod(
        context,
        [this, context, reply] {
            server = new QTcpServer(context);
            server->listen(QHostAddress::LocalHost, 0);
            port = server->serverPort();
            QObject::connect(server, &QTcpServer::newConnection, server, [this, reply] {
                while (QTcpSocket *socket = server->nextPendingConnection()) {
                    QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
                    QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket, reply] {
                        QByteArray head = socket->property("head").toByteArray() + socket->readAll();
                        socket->setProperty("head", head);
                        if (!head.contains("\r\n\r\n"))
                            return;
                        {
                            const QMutexLocker locked(&lock);
                            requests << QString::fromUtf8(head);
                        }
                        socket->write(reply);
                        socket->disconnectFromHost();
                    });
                }
            });
        },
        Qt::BlockingQueuedConnection);
}

FakeWebServer::~FakeWebServer()
{
    QMetaObject::invokeMethod(server->parent(), [this] { delete server->parent(); }, Qt::BlockingQueuedConnection);
    thread.quit();
    thread.wait();
}

QStringList FakeWebServer::Requests() const
{
    const QMutexLocker locked(&lock);
    return requests;
}
