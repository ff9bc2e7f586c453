#include "net/OrvHTTPEngine.h"

#include "net/HttpResponse.h"
#include "net/LastError.h"

namespace {

// HTTPGetText holds the response in memory; a larger one is refused.
constexpr qsizetype TextLimit = qsizetype{32} * 1024 * 1024;

QByteArray Request(const QString &host, const QString &path)
{
    return QStringLiteral("GET %1 HTTP/1.0\r\nHost: %2\r\nUser-Agent: Orvana-Win-V2\r\nConnection: Close\r\n\r\n")
        .arg(path, host)
        .toUtf8();
}

} // namespace

OrvHTTPEngine::OrvHTTPEngine()
    : received(TextLimit)
{
    channel.onConnected = [this] { received.Reset(); };
    channel.onBytes = [this](const QByteArray &bytes) {
        received.Take(bytes);
        if (progress)
            progress(received.BytesTaken(), -1);
    };
}

OrvHTTPEngine::~OrvHTTPEngine()
{
    if (channel.Status() == TcpChannel::Connected)
        channel.Close();
}

bool OrvHTTPEngine::Report(const Result &result)
{
    return ReportInto(lastError, result);
}

bool OrvHTTPEngine::ConnectToServer(const QString &host, int port)
{
    if (!channel.SocketClosed() || channel.Status() != TcpChannel::NotConnected)
        return false;
    QElapsedTimer started;
    started.start();
    channel.Connect(host, port);
    while (channel.Status() == TcpChannel::NotConnected && started.elapsed() < timeouts.connectMs && !Cancel())
        channel.Wait(timeouts.connectMs - started.elapsed());
    if (channel.Status() != TcpChannel::Connected) {
        lastError = QStringLiteral("Unable to connect to specified server via TCP/IP.");
        channel.Close();
        return false;
    }
    return true;
}

bool OrvHTTPEngine::SendCommand(const QByteArray &text)
{
    if (!channel.SocketConnected() || channel.Status() != TcpChannel::Connected)
        return false;
    received.Reset();
    channel.Send(text);
    return true;
}

void OrvHTTPEngine::Disconnect()
{
    channel.Close();
}

Result OrvHTTPEngine::Fetch(const QString &host, int port, const QString &path, QFile *target)
{
    if (!ConnectToServer(host, port))
        return Result::Failure(QStringLiteral("Could't connect to the specified HTTP server."));
    SendCommand(Request(host, path));
    // Sending empties what was received; the target is named after it, still before any reply
    // can arrive (bytes are taken only while the engine waits).
    received.SetFile(target);
    channel.MarkDataTime();
    while (channel.Status() == TcpChannel::Connected && !Cancel()) {
        if (channel.MsSinceData() > timeouts.idleMs)
            return Result::Failure(QStringLiteral("Time out when getting remote file."));
        channel.Wait(timeouts.idleMs + 1 - channel.MsSinceData());
    }
    return Result::Success();
}

// NOLINTNEXTLINE(bugprone-easily-swappable-parameters): the program's own signature
bool OrvHTTPEngine::HTTPGet(const QString &host, int port, const QString &path, const QString &localFile)
{
    const QString responsePath = localFile + QLatin1String(".http");
    QFile::remove(responsePath);
    QFile response(responsePath);
    // Unbuffered: each block that arrives is on disk at once, not held back in memory.
    if (!response.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return Report(Result::Failure(QStringLiteral("Could't save file to the specified location.")));

    Result fetched = Fetch(host, port, path, &response);
    if (channel.Status() != TcpChannel::NotConnected)
        Disconnect();
    received.SetFile(nullptr);
    response.close();
    if (fetched && received.WriteFailed())
        fetched = Result::Failure(QStringLiteral("Could't save file to the specified location."));
    if (fetched)
        fetched = HttpResponse::SplitIntoFile(response, localFile, lastResponse);
    response.close();
    QFile::remove(responsePath);
    return Report(fetched);
}

bool OrvHTTPEngine::HTTPGetText(const QString &host, int port, const QString &path, QString &text)
{
    Result fetched = Fetch(host, port, path, nullptr);
    if (channel.Status() != TcpChannel::NotConnected)
        Disconnect();
    if (fetched && received.Overflowed())
        fetched = Result::Failure(QStringLiteral("The HTTP response is invalid."));
    text = QString::fromUtf8(received.Buffer());
    return Report(fetched);
}
