#include "ui/common/TaskProgress.h"

#include "ui/common/InterfaceCalls.h"
#include "ui/common/ProgressWindow.h"

#include <QMetaObject>
#include <climits>

TaskProgress::TaskProgress(const QPointer<ProgressWindow> &progressWindow, InterfaceCalls &interfaceCalls,
                           const std::atomic<bool> &flag)
    : window(progressWindow)
    , calls(interfaceCalls)
    , cancelled(flag)
{
}

void TaskProgress::Show(const std::function<void(ProgressWindow &)> &update)
{
    // The runner's window pointer, not this link's: the link ends with the work, the update may
    // run after that.
    QMetaObject::invokeMethod(&calls, [&shown = window, update] {
        if (shown)
            update(*shown);
    }, Qt::QueuedConnection);
}

void TaskProgress::Begin(const QString &title, int total)
{
    Show([title, total](ProgressWindow &target) { target.SetStep(title, total); });
}

void TaskProgress::Advance(int done)
{
    Show([done](ProgressWindow &target) { target.SetDone(done); });
}

bool TaskProgress::Cancelled() const
{
    return cancelled.load();
}

void TaskProgress::End()
{
    Show([](ProgressWindow &target) { target.SetDone(INT_MAX); });
}

void TaskProgress::Apply(const std::function<void()> &change)
{
    calls.Run(change);
}
