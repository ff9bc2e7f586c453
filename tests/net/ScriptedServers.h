#pragma once

#include <QHostAddress>
#include <QList>
#include <QMap>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <functional>

// Fake servers on loopback that say exactly what a test tells them, for the replies real
// servers will not send on demand. They serve events: run them on a thread of their own (see
// ServerThread.h) or beside a separate process.

// Chunks of a reply: each is sent after a pause, so that it arrives in a read of its own.
using Chunks = QList<QByteArray>;

inline void SendInChunks(QTcpSocket *socket, Chunks chunks, const std::function<void()> &then = {})
{
    if (socket && chunks.isEmpty() && then)
        then();
    if (!socket || chunks.isEmpty())
        return;
    socket->write(chunks.takeFirst());
    socket->flush();
    QTimer::singleShot(chunks.isEmpty() ? 0 : 15, socket, [socket, chunks, then] { SendInChunks(socket, chunks, then); });
}

// An FTP server: a greeting, a reply per command keyword, and a data connection that sends
// `download`, keeps whatever is uploaded, or stays silent.
class ScriptedFtpServer : public QObject {
public:
    ScriptedFtpServer()
    {
        control.listen(QHostAddress::LocalHost);
        ListenForDataOn(QHostAddress::LocalHost);
        connect(&control, &QTcpServer::newConnection, this, [this] {
            controlSocket = control.nextPendingConnection();
            connect(controlSocket, &QTcpSocket::readyRead, this, [this] {
                pendingLine += controlSocket->readAll();
                for (qsizetype end; (end = pendingLine.indexOf("\r\n")) >= 0; pendingLine.remove(0, end + 2)) {
                    commands.append(pendingLine.left(end));
                    Answer(commands.constLast());
                }
            });
            SendInChunks(controlSocket, greeting);
        });
        connect(&data, &QTcpServer::newConnection, this, [this] {
            dataSocket = data.nextPendingConnection();
            if (ignoreUpload || readUploadSlowly)
                dataSocket->setReadBufferSize(ignoreUpload ? 1 : 64 * 1024);
            connect(dataSocket, &QTcpSocket::readyRead, this, [this] {
                if (readUploadSlowly)
                    QTimer::singleShot(2, dataSocket, [this] { uploaded += dataSocket->readAll(); });
                else if (!ignoreUpload)
                    uploaded += dataSocket->readAll();
            });
            connect(dataSocket, &QTcpSocket::disconnected, this, [this] {
                if (controlSocket)
                    controlSocket->write(afterTransfer);
            });
            if (sendWhenConnected)
                StartSending();
        });
    }

    // Where the data connection listens; the PASV reply names it unless a test scripts its own.
    void ListenForDataOn(const QHostAddress &address)
    {
        data.close();
        data.listen(address);
        const QByteArray port = QByteArray::number(data.serverPort() / 256) + ',' + QByteArray::number(data.serverPort() % 256);
        replies.insert("PASV", {"227 Entering Passive Mode (" + address.toString().replace(u'.', u',').toLatin1() + ',' + port + ").\r\n"});
    }

    quint16 Port() const { return control.serverPort(); }
    quint16 DataPort() const { return data.serverPort(); }

    Chunks greeting{"220 scripted server ready\r\n"};
    // Replies by command keyword ("USER", "RETR", ...); keywords not scripted get "502".
    QMap<QByteArray, Chunks> replies{{"USER", {"331 Password required.\r\n"}}, {"PASS", {"230 Logged in.\r\n"}},
                                     {"TYPE", {"200 Type set to I.\r\n"}},     {"QUIT", {"221 Goodbye.\r\n"}},
                                     {"RETR", {"150 Opening data connection.\r\n"}}, {"STOR", {"150 Ready.\r\n"}},
                                     {"LIST", {"150 Here comes the listing.\r\n"}}};
    // Sent on the control connection once a transfer's data connection has closed.
    QByteArray afterTransfer = "226 Transfer complete.\r\n";
    // What RETR and LIST send on the data connection before closing it.
    QByteArray download;
    // Keep the data connection open, silent, after sending `download`.
    bool holdDataOpen = false;
    // Never read the data connection, so an upload fills the buffers and stalls.
    bool ignoreUpload = false;
    // Read an upload slowly, so that the buffers stay full to its end.
    bool readUploadSlowly = false;

    // Every command line received, without its line end, and the bytes uploaded.
    QList<QByteArray> commands;
    QByteArray uploaded;

private:
    void Answer(const QByteArray &line)
    {
        const QByteArray keyword = line.left(line.indexOf(' ') < 0 ? line.size() : line.indexOf(' ')).toUpper();
        SendInChunks(controlSocket, replies.value(keyword, {"502 Command not implemented.\r\n"}));
        sendWhenConnected = sendWhenConnected || keyword == "RETR" || keyword == "LIST";
        if (sendWhenConnected && dataSocket)
            StartSending();
    }

    void StartSending()
    {
        sendWhenConnected = false;
        dataSocket->write(download);
        if (!holdDataOpen)
            dataSocket->disconnectFromHost();
    }

    QTcpServer control;
    QTcpServer data;
    QPointer<QTcpSocket> controlSocket;
    QPointer<QTcpSocket> dataSocket;
    QByteArray pendingLine;
    bool sendWhenConnected = false;
};

// An HTTP server that records the request and answers with `response`, then closes, or keeps the
// connection open and silent when `holdOpen` is set.
class ScriptedHttpServer : public QObject {
public:
    ScriptedHttpServer()
    {
        server.listen(QHostAddress::LocalHost);
        connect(&server, &QTcpServer::newConnection, this, [this] {
            QTcpSocket *socket = server.nextPendingConnection();
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] {
                request += socket->readAll();
                if (request.endsWith("\r\n\r\n"))
                    SendInChunks(socket, response, [this, socket] { if (!holdOpen) socket->disconnectFromHost(); });
            });
        });
    }
    quint16 Port() const { return server.serverPort(); }

    Chunks response;
    bool holdOpen = false;
    QByteArray request;

private:
    QTcpServer server;
};

// A loopback port on which nothing listens: free again once the probe is gone.
inline quint16 ClosedPort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    return probe.serverPort();
}
