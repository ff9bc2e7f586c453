#include "net/EventPump.h"

#include "net/TcpChannel.h"

#include <QCoreApplication>

namespace {

constexpr qint64 BreathIntervalMs = 10;

} // namespace

void EventPump::Watch(const TcpChannel &channel)
{
    connect(&channel, &TcpChannel::Activity, this, &EventPump::Wake);
}

void EventPump::Round(qint64 maxWaitMs)
{
    sinceBreath.start();
    if (woken || maxWaitMs <= 0) {
        // Something happened since the caller last looked: serve what is pending and let it look
        // again before waiting.
        woken = false;
        QCoreApplication::processEvents();
        return;
    }
    if (!timer.isSingleShot()) {
        timer.setSingleShot(true);
        timer.setTimerType(Qt::PreciseTimer);
        connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    }
    timer.start(static_cast<int>(std::min<qint64>(maxWaitMs, RoundMs)));
    loop.exec();
    timer.stop();
    woken = false;
}

void EventPump::Breathe()
{
    if (sinceBreath.isValid() && sinceBreath.elapsed() < BreathIntervalMs)
        return;
    sinceBreath.start();
    woken = false;
    QCoreApplication::processEvents();
}

void EventPump::Wake()
{
    woken = true;
    if (loop.isRunning())
        loop.quit();
}
