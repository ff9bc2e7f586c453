#pragma once

#include "net/ConnectAttempt.h"
#include "net/HostLookup.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTcpSocket>
#include <functional>
#include <memory>

// One connection of an engine with the status the engines' algorithms are written against. The
// engine waits on its own thread with Wait: each call blocks on the socket for one short slice,
// and the socket events of that slice (connected, bytes arrived, closed, failed, block sent)
// change the status before it returns. No event loop is needed or served, so an engine can run
// on any thread and look at its Cancel between slices. The channel adds no policy of its own;
// each engine decides what arriving bytes mean and how long to wait.
class TcpChannel : public QObject {
public:
    enum Status : qint16 { NotConnected = 0, Connected = 1, SocketError = 2, SendingBlock = 3 };

    // The longest slice of a wait: a Cancel set from another thread is seen within this time.
    static constexpr qint64 SliceMs = 30;

    TcpChannel();
    ~TcpChannel() override;

    qint16 Status() const { return status; }
    void SetStatus(qint16 value) { status = value; }
    bool SocketClosed() const { return socket.state() == QAbstractSocket::UnconnectedState && !lookup && !attempt; }
    bool SocketConnected() const { return socket.state() == QAbstractSocket::ConnectedState; }

    // Starts connecting; the outcome arrives during a later Wait. A port outside 1..65535 fails at
    // once, as a socket error. A name's addresses are tried in turn until one answers.
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

    // Blocks for at most min(`maxWaitMs`, SliceMs) on what the status waits for: the name's
    // addresses, the connection, a block to leave, or bytes (and the close) to arrive. Returns at
    // once when nothing is awaited.
    void Wait(qint64 maxWaitMs);
    // Takes the bytes that have already arrived, without waiting.
    void TakePending();

    // Milliseconds since bytes last arrived (or since MarkDataTime).
    qint64 MsSinceData() const { return lastData.elapsed(); }
    void MarkDataTime() { lastData.start(); }

    // Set by the owner: what happens when the connection is made, and where arriving bytes go.
    std::function<void()> onConnected;
    std::function<void(const QByteArray &)> onBytes;

private:
    void WaitForLookup(int sliceMs);
    void WaitForConnection(int sliceMs);
    // Starts connecting to the next address found, or fails when none is left.
    void ConnectToNextAddress();
    void TakeArrivedBytes();
    void PeerClosed();

    QTcpSocket socket;
    qint16 status = NotConnected;
    qint64 blockAllowance = 0;
    QElapsedTimer lastData;
    std::unique_ptr<HostLookup> lookup;
    std::unique_ptr<ConnectAttempt> attempt;
    QList<QHostAddress> addresses;
    quint16 port = 0;
};
