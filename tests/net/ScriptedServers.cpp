#include "ScriptedServers.h"

#include <QTimer>

namespace {

constexpr int ChunkPauseMs = 15;

// Sends the chunks one after another with a pause between them, then calls `then`.
void SendInChunks(QTcpSocket *socket, Chunks chunks, const std::function<void()> &then = {})
{
    if (!socket)
        return;
    if (chunks.isEmpty()) {
        if (then)
            then();
        return;
    }
    socket->write(chunks.takeFirst());
    socket->flush();
    QTimer::singleShot(chunks.isEmpty() ? 0 : ChunkPauseMs, socket, [socket, chunks, then] { SendInChunks(socket, chunks, then); });
}

QByteArray PassiveReply(const QHostAddress &address, quint16 port)
{
    return "227 Entering Passive Mode (" + address.toString().replace(u'.', u',').toLatin1() + ',' +
           QByteArray::number(port / 256) + ',' + QByteArray::number(port % 256) + ").\r\n";
}

} // namespace

ScriptedFtpServer::ScriptedFtpServer()
{
    replies = {{"USER", {"331 Password required.\r\n"}}, {"PASS", {"230 Logged in.\r\n"}},
               {"TYPE", {"200 Type set to I.\r\n"}},     {"QUIT", {"221 Goodbye.\r\n"}},
               {"RETR", {"150 Opening data connection.\r\n"}}, {"STOR", {"150 Ready.\r\n"}},
               {"LIST", {"150 Here comes the listing.\r\n"}}};
    control.listen(QHostAddress::LocalHost);
    ListenForDataOn(QHostAddress::LocalHost);

    connect(&control, &QTcpServer::newConnection, this, [this] {
        controlSocket = control.nextPendingConnection();
        connect(controlSocket, &QTcpSocket::readyRead, this, [this] {
            pendingLine += controlSocket->readAll();
            qsizetype end;
            while ((end = pendingLine.indexOf("\r\n")) >= 0) {
                const QByteArray line = pendingLine.left(end);
                pendingLine.remove(0, end + 2);
                commands.append(line);
                Answer(line);
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

void ScriptedFtpServer::ListenForDataOn(const QHostAddress &address)
{
    data.close();
    data.listen(address);
    replies.insert("PASV", {PassiveReply(address, data.serverPort())});
}

void ScriptedFtpServer::Answer(const QByteArray &line)
{
    const QByteArray keyword = line.left(line.indexOf(' ') < 0 ? line.size() : line.indexOf(' ')).toUpper();
    SendInChunks(controlSocket, replies.value(keyword, {"502 Command not implemented.\r\n"}));
    if (keyword == "RETR" || keyword == "LIST") {
        sendWhenConnected = true;
        if (dataSocket)
            StartSending();
    }
}

void ScriptedFtpServer::StartSending()
{
    sendWhenConnected = false;
    dataSocket->write(download);
    if (!holdDataOpen)
        dataSocket->disconnectFromHost();
}

ScriptedHttpServer::ScriptedHttpServer()
{
    server.listen(QHostAddress::LocalHost);
    connect(&server, &QTcpServer::newConnection, this, [this] {
        QTcpSocket *socket = server.nextPendingConnection();
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] {
            request += socket->readAll();
            if (!request.endsWith("\r\n\r\n"))
                return;
            SendInChunks(socket, response, [this, socket] {
                if (!holdOpen)
                    socket->disconnectFromHost();
            });
        });
    });
}

quint16 ClosedPort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    return probe.serverPort();  // free again once the probe is gone
}
