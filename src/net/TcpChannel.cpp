#include "net/TcpChannel.h"

TcpChannel::TcpChannel()
{
    lastData.start();
    connect(&socket, &QTcpSocket::readyRead, this, &TcpChannel::TakeArrivedBytes);
    connect(&socket, &QTcpSocket::disconnected, this, &TcpChannel::PeerClosed);
    connect(&socket, &QTcpSocket::errorOccurred, this, [this](QAbstractSocket::SocketError error) {
        // A slice of a blocking wait that ends without news is reported as a time-out error; the
        // connection is untouched by it.
        if (error == QAbstractSocket::SocketTimeoutError)
            return;
        // Qt reports the peer's close (orderly or reset) as an error before it disconnects: that
        // is the close event, not a failure of the connection.
        if (error == QAbstractSocket::RemoteHostClosedError) {
            PeerClosed();
            return;
        }
        status = SocketError;
    });
    connect(&socket, &QTcpSocket::bytesWritten, this, [this] {
        if (status == SendingBlock && socket.bytesToWrite() <= blockAllowance)
            status = Connected;
    });
}

TcpChannel::~TcpChannel()
{
    // The owner's handlers may already be gone; closing must not call them.
    socket.disconnect(this);
    socket.abort();
}

void TcpChannel::Connect(const QString &host, qint64 value)
{
    if (value < 1 || value > 65535) {
        status = SocketError;
        return;
    }
    port = static_cast<quint16>(value);
    lookup = std::make_unique<HostLookup>(host);
}

void TcpChannel::ConnectToNextAddress()
{
    if (addresses.isEmpty()) {
        status = SocketError;
        return;
    }
    status = NotConnected;
    attempt = std::make_unique<ConnectAttempt>(addresses.takeFirst(), port);
}

void TcpChannel::Close()
{
    lookup.reset();
    attempt.reset();
    addresses.clear();
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

void TcpChannel::Wait(qint64 maxWaitMs)
{
    const int sliceMs = static_cast<int>(std::clamp<qint64>(maxWaitMs, 0, SliceMs));
    if (lookup)
        WaitForLookup(sliceMs);
    else if (attempt)
        WaitForConnection(sliceMs);
    else if (socket.state() == QAbstractSocket::ConnectedState && status == SendingBlock)
        socket.waitForBytesWritten(sliceMs);
    else if (socket.state() == QAbstractSocket::ConnectedState)
        socket.waitForReadyRead(sliceMs);
}

void TcpChannel::TakePending()
{
    if (socket.state() == QAbstractSocket::ConnectedState)
        socket.waitForReadyRead(0);
}

void TcpChannel::WaitForLookup(int sliceMs)
{
    if (!lookup->Wait(sliceMs))
        return;
    addresses = lookup->Addresses();
    lookup.reset();
    ConnectToNextAddress();
}

void TcpChannel::WaitForConnection(int sliceMs)
{
    const ConnectAttempt::State outcome = attempt->Wait(sliceMs);
    if (outcome == ConnectAttempt::State::Pending)
        return;
    if (outcome == ConnectAttempt::State::Failed) {
        attempt.reset();
        ConnectToNextAddress();
        return;
    }
    const bool taken = attempt->HandTo(socket);
    attempt.reset();
    addresses.clear();
    if (!taken) {
        status = SocketError;
        return;
    }
    if (onConnected)
        onConnected();
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
}
