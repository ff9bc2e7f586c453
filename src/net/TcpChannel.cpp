#include "net/TcpChannel.h"

#include <QHostAddress>

TcpChannel::TcpChannel()
{
    lastData.start();
    connect(&socket, &QTcpSocket::connected, this, [this] {
        if (onConnected)
            onConnected();
        status = Connected;
        emit Activity();
    });
    connect(&socket, &QTcpSocket::readyRead, this, [this] {
        TakeArrivedBytes();
        emit Activity();
    });
    connect(&socket, &QTcpSocket::disconnected, this, &TcpChannel::PeerClosed);
    connect(&socket, &QTcpSocket::errorOccurred, this, [this](QAbstractSocket::SocketError error) {
        // Qt reports the peer's close (orderly or reset) as an error before it disconnects: that
        // is the close event, not a failure of the connection.
        if (error == QAbstractSocket::RemoteHostClosedError) {
            PeerClosed();
            return;
        }
        status = SocketError;
        emit Activity();
    });
    connect(&socket, &QTcpSocket::bytesWritten, this, [this] {
        if (status == SendingBlock && socket.bytesToWrite() <= blockAllowance)
            status = Connected;
        emit Activity();
    });
}

TcpChannel::~TcpChannel()
{
    // The owner's handlers may already be gone; closing must not call them.
    socket.disconnect(this);
    socket.abort();
}

void TcpChannel::Connect(const QString &host, qint64 port)
{
    if (port < 1 || port > 65535) {
        status = SocketError;
        return;
    }
    socket.connectToHost(host, static_cast<quint16>(port));
}

void TcpChannel::Close()
{
    if (socket.state() == QAbstractSocket::ConnectedState)
        socket.flush();
    socket.abort();
    status = NotConnected;
}

void TcpChannel::Send(const QByteArray &bytes)
{
    socket.write(bytes);
    socket.flush();
}

void TcpChannel::SendBlock(const QByteArray &block, qint64 allowance)
{
    status = SendingBlock;
    blockAllowance = allowance;
    socket.write(block);
    if (socket.bytesToWrite() > allowance)
        socket.flush();
    if (status == SendingBlock && socket.bytesToWrite() <= allowance)
        status = Connected;
}

void TcpChannel::TakeArrivedBytes()
{
    // Our own Close() reports a close too, with the device already shut.
    if (!socket.isOpen())
        return;
    const QByteArray bytes = socket.readAll();
    if (bytes.isEmpty())
        return;
    lastData.start();
    if (onBytes)
        onBytes(bytes);
}

void TcpChannel::PeerClosed()
{
    // Bytes that came with the close are still data of the connection. The socket closes itself
    // after a peer's close; aborting it from inside its own signal is not needed.
    TakeArrivedBytes();
    status = NotConnected;
    emit Activity();
}
