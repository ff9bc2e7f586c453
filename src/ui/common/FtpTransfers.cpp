#include "ui/common/FtpTransfers.h"

#include "app/ProgressSink.h"
#include "net/OrvFTPEngine.h"
#include "ui/common/TaskRunner.h"

#include <memory>

namespace {

FtpTransfersOutcome Transfer(ProgressSink &sink, const QString &title, const FtpSite &site, const QList<FtpTransfer> &transfers)
{
    FtpTransfersOutcome outcome;
    // Made here: an engine is used on the thread that made it.
    OrvFTPEngine engine;
    engine.SetCancelWhen([&sink] { return sink.Cancelled(); });
    sink.Begin(title, static_cast<int>(transfers.size()));
    bool ok = engine.ConnectToServer(site.host, site.port, site.user, site.password);
    for (const FtpTransfer &transfer : transfers) {
        if (!ok || engine.Cancel())
            break;
        ok = transfer.upload ? engine.PutFile(transfer.localPath, transfer.remotePath)
                             : engine.GetFile(transfer.remotePath, transfer.localPath);
        // A cancelled download reports success with a partial file: it does not count as moved.
        if (ok && !engine.Cancel())
            sink.Advance(++outcome.moved);
    }
    outcome.cancelled = engine.Cancel();
    if (!ok && !outcome.cancelled)
        outcome.error = engine.LastError();
    if (engine.TcpCommandStatus() == TcpChannel::Connected)
        engine.Disconnect();
    sink.End();
    return outcome;
}

} // namespace

bool StartFtpTransfers(TaskRunner &runner, const QString &title, const FtpSite &site, const QList<FtpTransfer> &transfers,
                       std::function<void(const FtpTransfersOutcome &)> finished)
{
    if (runner.Running())
        return false;
    auto outcome = std::make_shared<FtpTransfersOutcome>();
    auto connection = std::make_shared<QMetaObject::Connection>();
    *connection = QObject::connect(&runner, &TaskRunner::Finished, &runner, [outcome, connection, finished = std::move(finished)] {
        QObject::disconnect(*connection);
        finished(*outcome);
    });
    return runner.Start(title, [outcome, title, site, transfers](ProgressSink &sink) { *outcome = Transfer(sink, title, site, transfers); });
}
