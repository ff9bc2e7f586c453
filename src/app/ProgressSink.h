#pragma once

#include <QString>

// Progress of long work and the user's wish to stop it. The windows show a progress window with
// a Cancel button, orvana-cli a line on a terminal, tests count the steps.
class ProgressSink {
public:
    virtual ~ProgressSink() = default;
    virtual void Begin(const QString &title, int total) = 0;
    virtual void Advance(int done) = 0;
    virtual bool Cancelled() const = 0;
    virtual void End() = 0;
};

// For callers that show no progress and never cancel.
class NoProgress : public ProgressSink {
public:
    void Begin(const QString &, int) override {}
    void Advance(int) override {}
    bool Cancelled() const override { return false; }
    void End() override {}
};
