#pragma once

#include <QString>

#include <functional>

// Progress of long work and the user's wish to stop it. The windows show a progress window with
// a Cancel button, orvana-cli a line on a terminal, tests count the steps.
class ProgressSink {
public:
    virtual ~ProgressSink() = default;
    virtual void Begin(const QString &title, int total) = 0;
    virtual void Advance(int done) = 0;
    virtual bool Cancelled() const = 0;
    virtual void End() = 0;

    // Runs a change to the document the work serves on the thread that owns that document, and
    // returns when it is done. Long work runs on a worker thread and touches its document (reads
    // included) only through here, in the order of its list, so the document ends exactly as a
    // one-thread run leaves it. Where the work runs on the owner's own thread (orvana-cli, tests)
    // the change simply runs at once.
    virtual void Apply(const std::function<void()> &change) { change(); }
};

// For callers that show no progress and never cancel.
class NoProgress : public ProgressSink {
public:
    void Begin(const QString &, int) override {}
    void Advance(int) override {}
    bool Cancelled() const override { return false; }
    void End() override {}
};
