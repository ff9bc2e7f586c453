#pragma once

#include "net/DataSink.h"
#include "app/Result.h"
#include "net/TcpChannel.h"
#include "net/TransferProgress.h"

#include <QString>
#include <atomic>

// How long the engine waits. The defaults are the program's; tests shorten them.
struct HttpTimeouts {
    qint64 connectMs = 20000;  // the connection to open (elapsed >= limit)
    qint64 idleMs = 20000;     // a response without any data (elapsed > limit)
};

// The program's HTTP/1.0 client for GET requests: one connection per request, the response ends
// when the server closes it. Redirects, chunked bodies and HTTPS are not part of it. The status
// code is never looked at: an error page is content like any other, and callers that care check
// the content. Waits block in short slices without serving events, as the FTP engine's do;
// Cancel may be set from any thread.
class OrvHTTPEngine {
public:
    OrvHTTPEngine();
    ~OrvHTTPEngine();
    OrvHTTPEngine(const OrvHTTPEngine &) = delete;
    OrvHTTPEngine &operator=(const OrvHTTPEngine &) = delete;

    QString LastError() const { return lastError; }
    // Status and header lines of the last response fetched into a file, without the empty line.
    QString LastResponse() const { return lastResponse; }
    qint16 TcpDataStatus() const { return channel.Status(); }
    bool Cancel() const { return cancel.load(); }
    void SetCancel(bool value) { cancel.store(value); }

    void SetTimeouts(const HttpTimeouts &value) { timeouts = value; }
    void SetProgressHandler(TransferProgress handler) { progress = std::move(handler); }

    // Fetches `path` (sent as given: the caller percent-encodes) into `localFile`. The response
    // is received into `localFile` + ".http" and split from there. A cancelled fetch still splits
    // what arrived and succeeds when its header is complete.
    bool HTTPGet(const QString &host, int port, const QString &path, const QString &localFile);
    // Fetches into `text`: the whole response, status line and header included.
    bool HTTPGetText(const QString &host, int port, const QString &path, QString &text);

private:
    bool ConnectToServer(const QString &host, int port);
    bool SendCommand(const QByteArray &text);
    void Disconnect();
    // Connects, sends the request and waits until the server closes the connection, the bytes
    // going into `target` when there is one, else into memory.
    Result Fetch(const QString &host, int port, const QString &path, QFile *target);
    bool Report(const Result &result);

    QString lastError;
    QString lastResponse;
    std::atomic<bool> cancel{false};
    HttpTimeouts timeouts;
    TransferProgress progress;

    DataSink received;
    TcpChannel channel;
};
