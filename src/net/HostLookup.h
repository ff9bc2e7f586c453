#pragma once

#include <QHostAddress>
#include <QList>
#include <QString>
#include <memory>

// A host name resolved on a thread of its own, so that the caller can wait for it in short slices
// and give up when cancelled. The system resolver cannot be interrupted: a lookup given up on
// finishes in the background and its answer is dropped.
class HostLookup {
public:
    // Starts resolving `host`; an address literal needs no lookup and is ready at once.
    explicit HostLookup(const QString &host);

    // Waits up to `maxWaitMs` for the answer; true once it is there.
    bool Wait(qint64 maxWaitMs);
    // The addresses found, in the resolver's order; empty when the name is unknown.
    QList<QHostAddress> Addresses() const;

private:
    struct Shared;
    std::shared_ptr<Shared> shared;
};
