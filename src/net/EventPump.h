#pragma once

#include <QElapsedTimer>
#include <QEventLoop>
#include <QObject>
#include <QTimer>

class TcpChannel;

// The engines' blocking waits keep the caller's thread alive the way the original message pump
// did: socket events, timers, a progress dialog and its Cancel button are all served while an
// engine waits. A round returns as soon as a watched channel reports anything, so a wait never
// sleeps past the event it waits for.
class EventPump : public QObject {
public:
    // The longest round: a Cancel set from another thread is seen within this time.
    static constexpr int RoundMs = 30;

    void Watch(const TcpChannel &channel);

    // Serves events until a watched channel reports activity or `maxWaitMs` pass.
    void Round(qint64 maxWaitMs = RoundMs);
    // Serves pending events without waiting, at most once every few milliseconds: a long run of
    // quick steps stays cheap and the interface stays responsive.
    void Breathe();

private:
    void Wake();

    QEventLoop loop;
    QTimer timer;
    bool woken = false;
    QElapsedTimer sinceBreath;
};
