#pragma once

#include <QObject>

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>

// Calls from a worker thread that must run on the interface thread (changes to a document,
// dialogs), each returning to the worker once it has run. The calls wait in a queue of their own
// rather than as Qt's blocking queued calls, so that the interface thread can run them itself when
// it has to wait for a worker to stop: a worker blocked in a call while the interface thread waits
// for it would otherwise never return.
class InterfaceCalls : public QObject {
public:
    // Made on the interface thread.
    InterfaceCalls() = default;

    // Runs `call` on the interface thread and returns when it has run: in place when already
    // there, otherwise queued in order behind the calls before it.
    void Run(const std::function<void()> &call);

    // Interface thread: runs the calls waiting, then waits up to `maxWaitMs` for one more or for
    // `stopped` to hold. Used only while a worker is being stopped.
    void RunWaitingUntil(const std::function<bool()> &stopped, int maxWaitMs);

private:
    struct Call {
        std::function<void()> work;
        bool done = false;
    };

    void RunWaiting();

    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::shared_ptr<Call>> waiting;
};
