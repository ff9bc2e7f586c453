#include "net/HostLookup.h"

#include <QHostInfo>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

struct HostLookup::Shared {
    std::mutex mutex;
    std::condition_variable answered;
    bool done = false;
    QList<QHostAddress> addresses;
};

HostLookup::HostLookup(const QString &host)
    : shared(std::make_shared<Shared>())
{
    const QHostAddress literal(host);
    if (!literal.isNull()) {
        shared->addresses = {literal};
        shared->done = true;
        return;
    }
    // The thread holds its own share of the state: it may outlive this lookup.
    std::thread([state = shared, host] {
        const QList<QHostAddress> found = QHostInfo::fromName(host).addresses();
        const std::lock_guard lock(state->mutex);
        state->addresses = found;
        state->done = true;
        state->answered.notify_all();
    }).detach();
}

bool HostLookup::Wait(qint64 maxWaitMs)
{
    std::unique_lock lock(shared->mutex);
    return shared->answered.wait_for(lock, std::chrono::milliseconds(std::max<qint64>(maxWaitMs, 0)),
                                     [this] { return shared->done; });
}

QList<QHostAddress> HostLookup::Addresses() const
{
    const std::lock_guard lock(shared->mutex);
    return shared->addresses;
}
