#pragma once

#include <QList>
#include <QString>
#include <functional>

class TaskRunner;

// Where the files go: an FTP server and the account on it.
struct FtpSite {
    QString host;
    int port = 21;
    QString user;
    QString password;
};

// One file to move: sent to `remotePath` when `upload`, else fetched from it.
struct FtpTransfer {
    QString localPath;
    QString remotePath;
    bool upload = true;
};

// How a run of transfers ended: the files moved, in order, before it stopped, and the engine's
// reason when one failed.
struct FtpTransfersOutcome {
    int moved = 0;
    bool cancelled = false;
    QString error;
};

// Logs in to `site` on the runner's worker thread and moves the files in order, one step of the
// progress window per file; the window's Cancel stops the file in hand at once. Stops at the first
// failure. `finished` runs on the interface thread. False, and nothing started, while the runner
// is busy.
bool StartFtpTransfers(TaskRunner &runner, const QString &title, const FtpSite &site, const QList<FtpTransfer> &transfers,
                       std::function<void(const FtpTransfersOutcome &)> finished);
