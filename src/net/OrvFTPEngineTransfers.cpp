// The two file transfers of OrvFTPEngine: a download written to disk as it arrives, and an upload
// sent in blocks of 2,048 bytes, each awaited before the next is read.
#include "net/OrvFTPEngine.h"

namespace {

bool IsTransferStart(int code)
{
    return code == 125 || code == 150 || code == 226;
}

} // namespace

// NOLINTNEXTLINE(bugprone-easily-swappable-parameters): the program's own signature
bool OrvFTPEngine::GetFile(const QString &remotePath, const QString &localPath)
{
    QFile::remove(localPath);
    QFile file(localPath);
    // Unbuffered: each block that arrives is on disk at once, not held back in memory.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return Report(Result::Failure(QStringLiteral("Could't save file to the specified location.")));
    const Result downloaded = Download(remotePath, file);
    if (data.Status() != TcpChannel::NotConnected)
        FinishDataConnection();
    received.SetFile(nullptr);
    file.close();
    return Report(downloaded);
}

Result OrvFTPEngine::Download(const QString &remotePath, QFile &file)
{
    if (!CreateDataConnection())
        return Result::Failure(lastError);
    Result binary = Expect(QStringLiteral("TYPE I"), QString(), 200, QStringLiteral("Unable to swith transfer mode to binary."));
    if (!binary)
        return binary;
    received.SetFile(&file);
    const int first = Ask(QStringLiteral("RETR"), remotePath);
    if (!IsTransferStart(first))
        return Result::Failure(QStringLiteral("Could't get data of remote file."));

    data.MarkDataTime();
    for (;;) {
        if (data.Status() != TcpChannel::Connected || Cancel()) {
            if (first != 226)
                GetResponseCode();
            break;
        }
        if (data.MsSinceData() > timeouts.downloadIdleMs)
            return Result::Failure(QStringLiteral("Time out when downloading file."));
        data.Wait(timeouts.downloadIdleMs + 1 - data.MsSinceData());
    }
    if (received.WriteFailed())
        return Result::Failure(QStringLiteral("Could't save file to the specified location."));
    return Result::Success();
}

bool OrvFTPEngine::AwaitBlockSent()
{
    QElapsedTimer sending;
    sending.start();
    while (!Cancel() && data.Status() == TcpChannel::SendingBlock) {
        if (sending.elapsed() > timeouts.uploadBlockMs)
            return false;
        data.Wait(timeouts.uploadBlockMs + 1 - sending.elapsed());
    }
    return true;
}

// NOLINTNEXTLINE(bugprone-easily-swappable-parameters): the program's own signature
bool OrvFTPEngine::PutFile(const QString &localPath, const QString &remotePath)
{
    QFile file(localPath);
    if (!file.open(QIODevice::ReadOnly))
        return Report(Result::Failure(QStringLiteral("Could't open the specified local file.")));
    const Result uploaded = Upload(file, remotePath);
    if (data.Status() != TcpChannel::NotConnected)
        FinishDataConnection();
    file.close();
    if (uploaded && needChangeModeTo755)
        ChangeMode(QStringLiteral("755"), remotePath);
    return Report(uploaded);
}

Result OrvFTPEngine::Upload(QFile &file, const QString &remotePath)
{
    if (!CreateDataConnection())
        return Result::Failure(lastError);
    Result binary = Expect(QStringLiteral("TYPE I"), QString(), 200, QStringLiteral("Unable to swith transfer mode to binary."));
    if (!binary)
        return binary;
    const int first = Ask(QStringLiteral("STOR"), remotePath);
    if (!IsTransferStart(first))
        return Result::Failure(QStringLiteral("Could't put data of local file."));

    const qint64 total = file.size();
    qint64 remaining = total;
    while (!Cancel() && data.Status() == TcpChannel::Connected && remaining >= 1) {
        const qint64 block = std::min(remaining, UploadBlockSize);
        const QByteArray bytes = file.read(block);
        if (bytes.size() != block)
            return Result::Failure(QStringLiteral("Could't open the specified local file."));
        data.SendBlock(bytes, UploadQueueAllowance);
        if (!AwaitBlockSent())
            return Result::Failure(QStringLiteral("Time out when uploading file."));
        remaining -= block;
        if (progress)
            progress(total - remaining, total);
    }
    // Blocks still queued must reach the system before the close that ends the file.
    if (!Cancel() && data.Status() == TcpChannel::Connected) {
        data.SendBlock(QByteArray(), 0);
        if (!AwaitBlockSent())
            return Result::Failure(QStringLiteral("Time out when uploading file."));
    }
    // Closing the data connection is what tells the server that the file is complete.
    FinishDataConnection();
    if (first != 226)
        GetResponseCode();
    return Result::Success();
}
