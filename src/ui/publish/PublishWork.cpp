#include "ui/publish/PublishWork.h"

#include "ui/common/DialogPrompter.h"
#include "ui/common/TaskRunner.h"

#include <QMetaObject>
#include <QPointer>
#include <QWidget>
#include <memory>

namespace {

// The runner and its prompter, kept until the work has ended.
class PublishRun : public QObject {
public:
    explicit PublishRun(QWidget *window) : QObject(window), runner(window), prompter(window, runner.Calls()) {}
    TaskRunner runner;
    DialogPrompter prompter;
};

} // namespace

void StartPublishWork(QWidget *window, const QString &title, std::function<void(ProgressSink &, Prompter &)> work,
                      std::function<void()> after)
{
    auto *run = new PublishRun(window);
    QObject::connect(&run->runner, &TaskRunner::Finished, run, [run, after = std::move(after)](bool) {
        if (after)
            after();
        run->deleteLater();
    });
    Prompter *prompter = &run->prompter;
    if (!run->runner.Start(title, [work = std::move(work), prompter](ProgressSink &progress) { work(progress, *prompter); }))
        run->deleteLater();
}

void RunOnInterfaceThread(QWidget *window, std::function<void()> call)
{
    QMetaObject::invokeMethod(window, std::move(call), Qt::QueuedConnection);
}
