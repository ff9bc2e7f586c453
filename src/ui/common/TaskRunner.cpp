#include "ui/common/TaskRunner.h"

#include "ui/common/ProgressWindow.h"
#include "ui/common/TaskProgress.h"

#include <QThread>
#include <QTimer>

namespace {

// How long the interface thread waits at once, while stopping, before it runs the work's calls.
constexpr int StopSliceMs = 10;

} // namespace

TaskRunner::TaskRunner(QWidget *parent)
    : owner(parent)
    , showTimer(new QTimer(this))
{
    showTimer->setSingleShot(true);
    showTimer->setInterval(ShowAfterMs);
    connect(showTimer, &QTimer::timeout, this, [this] {
        if (window && Running())
            window->show();
    });
}

TaskRunner::~TaskRunner()
{
    if (!worker)
        return;
    cancel.store(true);
    while (!worker->isFinished())
        calls.RunWaitingUntil([this] { return worker->isFinished(); }, StopSliceMs);
    worker->wait();
    delete worker;
    delete window.data();
}

bool TaskRunner::Start(const QString &title, Work work, Shown shown)
{
    if (Running())
        return false;
    cancel.store(false);
    window = new ProgressWindow(owner);
    window->setWindowTitle(title);
    window->SetStep(title, 0);
    connect(window, &ProgressWindow::CancelRequested, this, &TaskRunner::RequestStop);
    if (shown == Shown::WhenStepLasts) {
        connect(window, &ProgressWindow::StepBegun, showTimer, [this] {
            if (!window->isVisible())
                showTimer->start();
        });
    }

    worker = QThread::create([this, work = std::move(work)] {
        TaskProgress progress(window, calls, cancel);
        work(progress);
    });
    // Emitted on the worker thread as it ends; handled on the interface thread.
    connect(worker, &QThread::finished, this, &TaskRunner::WorkEnded, Qt::QueuedConnection);
    worker->start();
    if (shown == Shown::WhenLasting)
        showTimer->start();
    return true;
}

bool TaskRunner::Running() const
{
    return worker != nullptr;
}

void TaskRunner::RequestStop()
{
    cancel.store(true);
}

void TaskRunner::WorkEnded()
{
    showTimer->stop();
    worker->wait();
    delete worker;
    worker = nullptr;
    if (window) {
        window->hide();
        window->deleteLater();
    }
    window.clear();
    emit Finished(cancel.load());
}
