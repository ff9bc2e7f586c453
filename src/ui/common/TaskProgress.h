#pragma once

#include "app/ProgressSink.h"

#include <QPointer>
#include <atomic>

class InterfaceCalls;
class ProgressWindow;

// The progress link of work running on a worker thread. Begin, Advance and End are passed to the
// progress window without waiting for it; Cancelled reads the flag that Cancel sets; Apply runs
// the change on the interface thread and returns once it has run.
class TaskProgress : public ProgressSink {
public:
    // `window` is read on the interface thread only; it may go before the work ends.
    TaskProgress(const QPointer<ProgressWindow> &window, InterfaceCalls &calls, const std::atomic<bool> &cancelled);

    void Begin(const QString &title, int total) override;
    void Advance(int done) override;
    bool Cancelled() const override;
    void End() override;
    void Apply(const std::function<void()> &change) override;

private:
    // Queued to the interface thread without waiting; dropped when the window has gone.
    void Show(const std::function<void(ProgressWindow &)> &update);

    const QPointer<ProgressWindow> &window;
    InterfaceCalls &calls;
    const std::atomic<bool> &cancelled;
};
