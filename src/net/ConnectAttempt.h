#pragma once

#include <QAbstractSocket>
#include <QHostAddress>

// One non-blocking TCP connection attempt to one address, watched in slices. QTcpSocket's own
// blocking wait abandons the attempt when its time runs out, so a wait cut into short slices
// (to look at a Cancel between them) could never outlast the first slice; this attempt survives
// any number of slices and hands its descriptor over once connected.
class ConnectAttempt {
public:
    ConnectAttempt(const QHostAddress &address, quint16 port);
    ~ConnectAttempt();
    ConnectAttempt(const ConnectAttempt &) = delete;
    ConnectAttempt &operator=(const ConnectAttempt &) = delete;

    enum class State { Pending, Connected, Failed };
    // Waits up to `maxWaitMs` for the outcome.
    State Wait(int maxWaitMs);
    // Gives the connected descriptor to `socket`; false, and the descriptor closed, when the
    // socket does not take it.
    bool HandTo(QAbstractSocket &socket);

private:
    int descriptor = -1;
    State state = State::Failed;
};
