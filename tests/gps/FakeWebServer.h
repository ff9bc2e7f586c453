#pragma once

#include <QByteArray>
#include <QMutex>
#include <QStringList>
#include <QThread>

class QTcpServer;

// A web server on loopback that answers every GET with one body, on a thread of its own so that a
// test may block on the program it runs (a Nominatim stand-in, a tile server). It keeps the
// request heads it received.
class FakeWebServer {
public:
    FakeWebServer(QByteArray body, QByteArray contentType);
    ~FakeWebServer();
    quint16 Port() const { return port; }
    QStringList Requests() const;

private:
    QThread thread;
    QTcpServer *server = nullptr;
    quint16 port = 0;
    mutable QMutex lock;
    QStringList requests;
};
