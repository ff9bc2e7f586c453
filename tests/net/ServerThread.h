#pragma once

#include <QMetaObject>
#include <QThread>
#include <memory>

// A scripted server on a thread of its own: the engines block the test's thread while they wait
// and serve no events, so a server living there would never answer. Everything that touches the
// server goes through Run, on the server's thread, so the test never races it.
template <class Server>
class ServerThread {
public:
    ServerThread()
    {
        thread.start();
        anchor.moveToThread(&thread);
        Run([](Server &) {});
    }
    ~ServerThread()
    {
        QMetaObject::invokeMethod(&anchor, [this] { server.reset(); }, Qt::BlockingQueuedConnection);
        thread.quit();
        thread.wait();
    }
    ServerThread(const ServerThread &) = delete;
    ServerThread &operator=(const ServerThread &) = delete;

    // Calls `f` with the server (made on first use) on the server's thread and returns its result.
    template <class F>
    auto Run(F f)
    {
        using Value = decltype(f(std::declval<Server &>()));
        if constexpr (std::is_void_v<Value>) {
            QMetaObject::invokeMethod(&anchor, [&] { f(Made()); }, Qt::BlockingQueuedConnection);
        } else {
            Value value{};
            QMetaObject::invokeMethod(&anchor, [&] { value = f(Made()); }, Qt::BlockingQueuedConnection);
            return value;
        }
    }

private:
    Server &Made()
    {
        if (!server)
            server = std::make_unique<Server>();
        return *server;
    }

    QThread thread;
    QObject anchor;
    std::unique_ptr<Server> server;
};
