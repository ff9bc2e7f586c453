#pragma once

#include <QHostAddress>
#include <QList>
#include <QMap>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>

// Fake servers on loopback that say exactly what a test tells them, for the replies real
// servers will not send on demand. They live on the test's thread and run while the engine under
// test serves events in its waits.

// Chunks of a reply: each is sent after a pause, so that it arrives in a read of its own.
using Chunks = QList<QByteArray>;

// An FTP server: a greeting, a reply per command keyword, and a data connection that sends
// `download`, keeps whatever is uploaded, or stays silent.
class ScriptedFtpServer : public QObject {
public:
    ScriptedFtpServer();
    // Where the data connection listens (127.0.0.1 unless moved); the PASV reply names it unless
    // a test scripts its own.
    void ListenForDataOn(const QHostAddress &address);

    quint16 Port() const { return control.serverPort(); }
    quint16 DataPort() const { return data.serverPort(); }

    Chunks greeting{"220 scripted server ready\r\n"};
    // Replies by command keyword ("USER", "RETR", ...); keywords not scripted get "502".
    QMap<QByteArray, Chunks> replies;
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
    void Answer(const QByteArray &line);
    void StartSending();

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
    ScriptedHttpServer();
    quint16 Port() const { return server.serverPort(); }

    Chunks response;
    bool holdOpen = false;
    QByteArray request;

private:
    QTcpServer server;
};

// A loopback port on which nothing listens.
quint16 ClosedPort();
