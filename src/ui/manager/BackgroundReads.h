#pragma once

#include <QObject>
#include <QPointer>
#include <QThreadPool>
#include <functional>
#include <memory>

// Reads that the interface thread must not wait on (folder listings, album lists, thumbnails),
// run on a pool of the window's own; each answer comes back on the interface thread, and only
// while the object that asked still exists. The pool waits for its reads when the window goes.
class BackgroundReads : public QObject {
public:
    explicit BackgroundReads(QObject *parent = nullptr) : QObject(parent) {}
    ~BackgroundReads() override { pool.waitForDone(); }

    template <typename T>
    void Run(std::function<T()> read, QObject *asker, std::function<void(T)> answer)
    {
        QPointer<QObject> guard(asker);
        pool.start([this, read = std::move(read), guard, answer = std::move(answer)] {
            auto value = std::make_shared<T>(read());
            QMetaObject::invokeMethod(this, [guard, answer, value] {
                if (guard)
                    answer(std::move(*value));
            }, Qt::QueuedConnection);
        });
    }

    // Drops the reads not yet started: what they would answer is no longer wanted.
    void DropWaiting() { pool.clear(); }
    bool Idle() { return pool.activeThreadCount() == 0; }

private:
    QThreadPool pool;
};
