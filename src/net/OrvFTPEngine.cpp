#include "net/OrvFTPEngine.h"

#include "net/FtpListing.h"
#include "net/LastError.h"

#include <QHostAddress>

namespace {

// A listing larger than this is refused rather than held in memory.
constexpr qsizetype ListingLimit = qsizetype{32} * 1024 * 1024;

} // namespace

OrvFTPEngine::OrvFTPEngine()
    : received(ListingLimit)
{
    command.onConnected = [this] { replies.Clear(); };
    command.onBytes = [this](const QByteArray &bytes) { replies.Append(bytes); };
    data.onConnected = [this] { received.Reset(); };
    data.onBytes = [this](const QByteArray &bytes) {
        received.Take(bytes);
        if (progress)
            progress(received.BytesTaken(), -1);
    };
}

OrvFTPEngine::~OrvFTPEngine()
{
    if (command.Status() == TcpChannel::Connected)
        command.Close();
    if (data.Status() == TcpChannel::Connected)
        data.Close();
}

bool OrvFTPEngine::Report(const Result &result)
{
    return ReportInto(lastError, result);
}

void OrvFTPEngine::WaitUntil(TcpChannel &channel, const std::function<bool()> &done, const QElapsedTimer &started, qint64 limitMs)
{
    while (!done() && !Cancel() && started.elapsed() < limitMs)
        channel.Wait(limitMs - started.elapsed());
}

bool OrvFTPEngine::SendCommand(const QString &text)
{
    if (!command.SocketConnected() || command.Status() != TcpChannel::Connected)
        return false;
    // A late reply to an earlier command (one that timed out or was not awaited) must not pass
    // for the reply to this one: what has arrived is taken now and dropped with the rest.
    command.TakePending();
    replies.Clear();
    command.Send(text.toUtf8());
    return true;
}

int OrvFTPEngine::GetResponseCode()
{
    if (!command.SocketConnected() || command.Status() != TcpChannel::Connected)
        return 0;
    QElapsedTimer started;
    started.start();
    int code = 0;
    while (started.elapsed() < timeouts.replyMs && code == 0 && command.Status() == TcpChannel::Connected && !Cancel()) {
        command.Wait(timeouts.replyMs - started.elapsed());
        code = replies.Code();
    }
    lastResponse = QString::fromUtf8(replies.Text());
    replies.Clear();
    return code;
}

int OrvFTPEngine::Ask(const QString &keyword, const QString &argument)
{
    SendCommand(argument.isNull() ? keyword + QLatin1String("\r\n") : keyword + u' ' + argument + QLatin1String("\r\n"));
    return GetResponseCode();
}

Result OrvFTPEngine::Expect(const QString &keyword, const QString &argument, int accepted, const QString &failure)
{
    return Ask(keyword, argument) == accepted ? Result::Success() : Result::Failure(failure);
}

bool OrvFTPEngine::ConnectToServer(const QString &host, int port, const QString &user, const QString &password)
{
    if (!command.SocketClosed() || command.Status() != TcpChannel::NotConnected)
        return false;
    QElapsedTimer started;
    started.start();
    command.Connect(host, port);
    WaitUntil(command, [this] { return command.Status() != TcpChannel::NotConnected; }, started, timeouts.connectMs);
    const Result loggedIn = Login(user, password);
    if (!loggedIn)
        command.Close();
    return Report(loggedIn);
}

Result OrvFTPEngine::Login(const QString &user, const QString &password)
{
    if (command.Status() != TcpChannel::Connected)
        return Result::Failure(QStringLiteral("Unable to connect to specified server via TCP/IP."));
    if (GetResponseCode() != 220)
        return Result::Failure(QStringLiteral("Unable to connect to specified server."));
    // A server that takes the user without a password (230 here) is refused too: the program
    // only ever logs in with both.
    const QString refused = QStringLiteral("Invalid user or password.");
    Result userTaken = Expect(QStringLiteral("USER"), user, 331, refused);
    if (!userTaken)
        return userTaken;
    return Expect(QStringLiteral("PASS"), password, 230, refused);
}

void OrvFTPEngine::Disconnect()
{
    Ask(QStringLiteral("QUIT"));
    command.Close();
}

bool OrvFTPEngine::ChangeDirectory(const QString &path)
{
    return Report(Expect(QStringLiteral("CWD"), path, 250, QStringLiteral("Can't change directory. Path does not exist.")));
}

bool OrvFTPEngine::MakeDirectory(const QString &path)
{
    const bool made = Report(Expect(QStringLiteral("MKD"), path, 257,
                                    QStringLiteral("Couldn't create directory. Make sure you have write access.")));
    if (made && needChangeModeTo755)
        ChangeMode(QStringLiteral("755"), path);
    return made;
}

bool OrvFTPEngine::RemoveDirectory(const QString &path)
{
    return Report(Expect(QStringLiteral("RMD"), path, 250,
                         QStringLiteral("Couldn't remove the directory. Make sure you have the right access.")));
}

bool OrvFTPEngine::RemoveFile(const QString &path)
{
    return Report(Expect(QStringLiteral("DELE"), path, 250,
                         QStringLiteral("Couldn't remove the file. Make sure you have the right access.")));
}

bool OrvFTPEngine::ChangeFileName(const QString &oldName, const QString &newName)
{
    Result renamed = Expect(QStringLiteral("RNFR"), oldName, 350, QStringLiteral("Couldn't change file name. (RNFR)"));
    if (renamed)
        renamed = Expect(QStringLiteral("RNTO"), newName, 250, QStringLiteral("Couldn't change file name. (RNTO)"));
    return Report(renamed);
}

bool OrvFTPEngine::ChangeMode(const QString &mode, const QString &path)
{
    return Report(Expect(QStringLiteral("SITE CHMOD"), mode + u' ' + path, 200, QStringLiteral("Unable to change file mode.")));
}

bool OrvFTPEngine::CreateDataConnection()
{
    return Report(OpenDataConnection());
}

Result OrvFTPEngine::OpenDataConnection()
{
    if (!data.SocketClosed() || data.Status() != TcpChannel::NotConnected)
        return Result::Failure(QStringLiteral("Data connection already exists."));
    if (Ask(QStringLiteral("PASV")) != 227)
        return Result::Failure(QStringLiteral("Unable to enable passive mode."));
    const std::optional<PassiveAddress> address = ParsePassiveAddress(lastResponse);
    if (!address)
        return Result::Failure(QStringLiteral("Unable to obtain data connection address."));
    received.Reset();

    // The reply's address is used whatever host the control connection went to. Only an address
    // is connected to: a name in its place would send a hostile server's text to the resolver.
    QElapsedTimer started;
    started.start();
    if (QHostAddress(address->host).protocol() == QAbstractSocket::IPv4Protocol)
        data.Connect(address->host, address->port);
    else
        data.SetStatus(TcpChannel::SocketError);
    WaitUntil(data, [this] { return data.Status() != TcpChannel::NotConnected; }, started, timeouts.connectMs);
    if (data.Status() != TcpChannel::Connected) {
        data.Close();
        return Result::Failure(QStringLiteral("Unable to create data connection."));
    }
    return Result::Success();
}

void OrvFTPEngine::FinishDataConnection()
{
    data.Close();
}

QString OrvFTPEngine::List(const QString &path)
{
    if (!CreateDataConnection())
        return QString();
    QString text = ReceiveListing(path);
    if (data.Status() != TcpChannel::NotConnected)
        FinishDataConnection();
    return text;
}

QString OrvFTPEngine::ReceiveListing(const QString &path)
{
    const QString refused = QStringLiteral("Could't list remote directory.");
    QElapsedTimer started;
    started.start();
    const int first = Ask(QStringLiteral("LIST"), path.isEmpty() ? QString() : path);
    if (first != 125 && first != 150 && first != 226) {
        lastError = refused;
        return QString();
    }
    WaitUntil(data, [this] { return data.Status() != TcpChannel::Connected; }, started, timeouts.listingMs);
    QString text = QString::fromUtf8(received.Buffer());
    if (first != 226 && GetResponseCode() != 226)
        text.clear();
    if (received.Overflowed()) {
        lastError = refused;
        text.clear();
    }
    return text;
}

QStringList OrvFTPEngine::ListFiles(const QString &path)
{
    return NamesFromListing(List(path));
}

bool OrvFTPEngine::FileExists(const QString &path)
{
    return !List(path).isEmpty();
}
