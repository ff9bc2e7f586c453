#include "ui/common/InterfaceCalls.h"

#include <QMetaObject>
#include <QThread>
#include <chrono>

void InterfaceCalls::Run(const std::function<void()> &call)
{
    if (QThread::currentThread() == thread()) {
        call();
        return;
    }
    auto queued = std::make_shared<Call>(Call{call});
    {
        const std::lock_guard lock(mutex);
        waiting.push_back(queued);
    }
    changed.notify_all();
    QMetaObject::invokeMethod(this, [this] { RunWaiting(); }, Qt::QueuedConnection);
    std::unique_lock lock(mutex);
    changed.wait(lock, [&queued] { return queued->done; });
}

void InterfaceCalls::RunWaiting()
{
    for (;;) {
        std::shared_ptr<Call> next;
        {
            const std::lock_guard lock(mutex);
            if (waiting.empty())
                return;
            next = waiting.front();
            waiting.pop_front();
        }
        next->work();
        {
            const std::lock_guard lock(mutex);
            next->done = true;
        }
        changed.notify_all();
    }
}

void InterfaceCalls::RunWaitingUntil(const std::function<bool()> &stopped, int maxWaitMs)
{
    RunWaiting();
    std::unique_lock lock(mutex);
    changed.wait_for(lock, std::chrono::milliseconds(maxWaitMs), [&] { return !waiting.empty() || stopped(); });
}
