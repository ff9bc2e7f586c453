#pragma once

#include "net/DataSink.h"
#include "net/FtpReply.h"
#include "app/Result.h"
#include "net/TcpChannel.h"
#include "net/TransferProgress.h"

#include <QString>
#include <QStringList>
#include <atomic>

// How long the engine waits. The defaults are the program's; tests shorten them.
struct FtpTimeouts {
    qint64 connectMs = 60000;       // control and data connections to open (elapsed >= limit)
    qint64 replyMs = 60000;         // one reply to complete (>=)
    qint64 listingMs = 60000;       // a listing to arrive, from its command on (>=)
    qint64 downloadIdleMs = 30000;  // a download without any data (elapsed > limit)
    qint64 uploadBlockMs = 30000;   // one upload block to be sent (>)
};

// The program's FTP client: blocking calls, passive mode and binary transfers only. Each call
// sends its commands on the control connection and waits for the reply, the data or a time-out
// in short blocking slices (TcpChannel::SliceMs) without serving any events, so windows run it on
// a worker thread. Use one engine from one thread (the one that made it), one call at a time;
// Cancel may be set from any thread and is seen between slices.
//
// Calls return true on success; a failure leaves its reason in LastError, which no success
// clears. Failed commands leave the control connection open: the caller decides whether to go on.
class OrvFTPEngine {
public:
    static constexpr qint64 UploadBlockSize = 2048;
    // How many bytes of sent blocks may wait in the data socket's queue (see TcpChannel::SendBlock).
    static constexpr qint64 UploadQueueAllowance = 64 * 1024;

    OrvFTPEngine();
    ~OrvFTPEngine();
    OrvFTPEngine(const OrvFTPEngine &) = delete;
    OrvFTPEngine &operator=(const OrvFTPEngine &) = delete;

    QString LastError() const { return lastError; }
    // The complete text of the last reply read on the control connection, line ends included.
    QString LastResponse() const { return lastResponse; }
    // 0 not connected, 1 connected, 2 socket error.
    qint16 TcpCommandStatus() const { return command.Status(); }
    // 0 not connected, 1 connected and idle, 2 socket error, 3 a block is being sent.
    qint16 TcpDataStatus() const { return data.Status(); }
    // Makes every wait stop at its next slice. The engine never resets it.
    bool Cancel() const { return cancel.load() || (cancelWhen && cancelWhen()); }
    void SetCancel(bool value) { cancel.store(value); }
    // A Cancel of the caller's own (a progress window's), asked on the engine's thread between
    // slices as well: set it before a call, not during one.
    void SetCancelWhen(std::function<bool()> cancelled) { cancelWhen = std::move(cancelled); }
    // When set (the default), folders made and files stored get mode 755.
    bool NeedChangeModeTo755() const { return needChangeModeTo755; }
    void SetNeedChangeModeTo755(bool value) { needChangeModeTo755 = value; }

    void SetTimeouts(const FtpTimeouts &value) { timeouts = value; }
    void SetProgressHandler(TransferProgress handler) { progress = std::move(handler); }

    // `text` must end in CR LF. False, and nothing sent, unless the control connection is up.
    bool SendCommand(const QString &text);
    // The code of the next complete reply; 0 after a time-out, a cancel or a lost connection.
    int GetResponseCode();
    bool ConnectToServer(const QString &host, int port, const QString &user, const QString &password);
    void Disconnect();
    bool ChangeDirectory(const QString &path);
    bool MakeDirectory(const QString &path);
    bool RemoveDirectory(const QString &path);
    bool RemoveFile(const QString &path);
    bool ChangeFileName(const QString &oldName, const QString &newName);
    bool ChangeMode(const QString &mode, const QString &path);
    bool CreateDataConnection();
    void FinishDataConnection();
    // A cancelled download returns true with a partial file: callers look at their own Cancel.
    bool GetFile(const QString &remotePath, const QString &localPath);
    bool PutFile(const QString &localPath, const QString &remotePath);
    // The raw listing, "" on failure. An empty path sends "LIST" alone.
    QString List(const QString &path);
    // The names in the listing (folders too, see FtpListing.h); one element "" when there are none.
    QStringList ListFiles(const QString &path);
    // True when the server sends any listing text for the path.
    bool FileExists(const QString &path);

private:
    // Sends "KEYWORD argument" (or the keyword alone) and returns the reply's code.
    int Ask(const QString &keyword, const QString &argument = QString());
    // Asks and checks the code; a different one fails with `failure`.
    Result Expect(const QString &keyword, const QString &argument, int accepted, const QString &failure);
    Result Login(const QString &user, const QString &password);
    Result OpenDataConnection();
    Result Download(const QString &remotePath, QFile &file);
    Result Upload(QFile &file, const QString &remotePath);
    // Waits until the block in flight counts as sent; false after the block time-out.
    bool AwaitBlockSent();
    QString ReceiveListing(const QString &path);
    // Waits on `channel` until `done` holds, Cancel is set or `limitMs` pass since `started`.
    void WaitUntil(TcpChannel &channel, const std::function<bool()> &done, const QElapsedTimer &started, qint64 limitMs);
    bool Report(const Result &result);

    QString lastError;
    QString lastResponse;
    bool needChangeModeTo755 = true;
    std::atomic<bool> cancel{false};
    std::function<bool()> cancelWhen;
    FtpTimeouts timeouts;
    TransferProgress progress;

    FtpReplyReader replies;
    DataSink received;
    TcpChannel command;
    TcpChannel data;
};
