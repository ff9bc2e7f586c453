#pragma once

#include "ui/common/InterfaceCalls.h"
#include "ui/common/ProgressWindow.h"

#include <QObject>
#include <QPointer>
#include <atomic>
#include <functional>
#include <memory>

class ProgressSink;
class QThread;
class QTimer;
class QWidget;

// Runs one long operation at a time on a worker thread, so the interface thread never waits on a
// photo, a process or a socket. Start returns at once; Finished arrives on the interface thread.
// A progress window (owned by `parent`'s window) appears once the work has lasted about half a
// second; its Cancel stops the work at the item in hand.
//
// Own the runner beside the window it serves (not as its child). A window closed during work
// calls RequestStop and closes on Finished. The runner should not be destroyed while the work
// runs; if it is, it stops the work first, running the work's calls to the interface thread
// while it waits, since a worker blocked in such a call would otherwise never stop.
class TaskRunner : public QObject {
    Q_OBJECT
public:
    using Work = std::function<void(ProgressSink &)>;

    // How long work runs before its progress window shows.
    static constexpr int ShowAfterMs = 500;

    explicit TaskRunner(QWidget *parent);
    ~TaskRunner() override;

    // When the progress window may show: for any work that lasts, or only once the work names a
    // step (work whose first part shows its own progress, as an album filling its grid does).
    enum class Shown { WhenLasting, WhenStepLasts };

    // Starts `work` under `title` (the window's caption until the work names its step); false,
    // and nothing started, while other work runs.
    bool Start(const QString &title, Work work, Shown shown = Shown::WhenLasting);
    bool Running() const;
    // Asks the work to stop, as Cancel does, without waiting for it.
    void RequestStop();

    // Interface-thread calls of the work (changes, questions) go through here.
    InterfaceCalls &Calls() { return calls; }
    // The progress window of the work in hand, or null.
    ProgressWindow *Window() const { return window.data(); }

signals:
    // The work has ended; `cancelled` when it was asked to stop.
    void Finished(bool cancelled);

private:
    void WorkEnded();

    QPointer<QWidget> owner;
    InterfaceCalls calls;
    std::atomic<bool> cancel{false};
    QThread *worker = nullptr;
    QPointer<ProgressWindow> window;
    QTimer *showTimer;
};
