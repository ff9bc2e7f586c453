#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTcpSocket>
#include <functional>

// One connection of an engine with the status the engines' algorithms are written against:
// socket events (connected, bytes arrived, closed, failed, block sent) change it while the engine
// pumps events in its waits. It adds no policy of its own; each engine decides what arriving
// bytes mean and how long to wait.
class TcpChannel : public QObject {
    Q_OBJECT
public:
    enum Status : qint16 { NotConnected = 0, Connected = 1, SocketError = 2, SendingBlock = 3 };

    TcpChannel();
    ~TcpChannel() override;

    qint16 Status() const { return status; }
    void SetStatus(qint16 value) { status = value; }
    bool SocketClosed() const { return socket.state() == QAbstractSocket::UnconnectedState; }
    bool SocketConnected() const { return socket.state() == QAbstractSocket::ConnectedState; }

    // Starts connecting; the outcome arrives as an event during a later wait. A port outside
    // 1..65535 fails at once, as a socket error.
    void Connect(const QString &host, qint64 port);
    // Closes the socket and sets the status to NotConnected. Bytes still queued are handed to the
    // system first, as far as it takes them without waiting.
    void Close();
    // Hands bytes to the socket and pushes them to the system at once.
    void Send(const QByteArray &bytes);
    // Sends one block of an upload: the status is SendingBlock until no more than `allowance`
    // bytes wait in the socket's queue. Blocks gather in that queue up to the allowance and go to
    // the system together, as they did in the system's own socket buffer, rather than costing a
    // system call each; an allowance of 0 waits until everything has left.
    void SendBlock(const QByteArray &block, qint64 allowance);

    // Milliseconds since bytes last arrived (or since MarkDataTime).
    qint64 MsSinceData() const { return lastData.elapsed(); }
    void MarkDataTime() { lastData.start(); }

    // Set by the owner: what happens when the connection is made, and where arriving bytes go.
    std::function<void()> onConnected;
    std::function<void(const QByteArray &)> onBytes;

signals:
    // Any socket event: a waiting engine looks at its state again.
    void Activity();

private:
    void TakeArrivedBytes();
    void PeerClosed();

    QTcpSocket socket;
    qint16 status = NotConnected;
    qint64 blockAllowance = 0;
    QElapsedTimer lastData;
};
