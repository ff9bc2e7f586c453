#include "ui/gps/GpsLogFiles.h"

#include "ui/common/TaskRunner.h"
#include "ui/gps/GpsTexts.h"
#include "gps/GpsLog.h"

#include <memory>

namespace GpsLogFiles {

void WhenFinished(TaskRunner &runner, const std::function<void()> &after)
{
    auto connection = std::make_shared<QMetaObject::Connection>();
    *connection = QObject::connect(&runner, &TaskRunner::Finished, &runner, [connection, after](bool) {
        QObject::disconnect(*connection);
        after();
    });
}


bool Load(TaskRunner &runner, GpsLog &log, Prompter &prompter, const std::function<void(const Result &)> &done)
{
    auto store = std::make_shared<GpsStore>();
    auto loaded = std::make_shared<Result>();
    Prompter *asking = &prompter;
    if (!runner.Start(GpsUi::GpsMessage("LoadingGPSLogDatabase"), [store, loaded, asking](ProgressSink &) { *loaded = store->Load(asking); }))
        return false;
    WhenFinished(runner, [&log, store, loaded, done] {
        if (*loaded)
            log.Adopt(std::move(*store));
        done(*loaded);
    });
    return true;
}

bool Save(TaskRunner &runner, GpsLog &log, const std::function<void(const Result &)> &done)
{
    auto store = std::make_shared<GpsStore>(log.Copy());
    auto saved = std::make_shared<Result>();
    auto changedMeanwhile = std::make_shared<bool>(false);
    if (!runner.Start(GpsUi::GpsMessage("SavingGPSLogDatabase"), [store, saved](ProgressSink &) { *saved = store->Save(); }))
        return false;
    const QMetaObject::Connection watch = QObject::connect(&log, &GpsLog::Changed, &runner, [changedMeanwhile] { *changedMeanwhile = true; });
    WhenFinished(runner, [&log, store, saved, changedMeanwhile, watch, done] {
        QObject::disconnect(watch);
        if (*saved && !*changedMeanwhile)
            log.Adopt(std::move(*store));
        done(*saved);
    });
    return true;
}

bool Change(TaskRunner &runner, GpsLog &log, const QString &title, const std::function<void(GpsStore &, ProgressSink &)> &change,
            const std::function<void()> &done)
{
    auto store = std::make_shared<GpsStore>(log.Copy());
    if (!runner.Start(title, [store, change](ProgressSink &progress) { change(*store, progress); }))
        return false;
    WhenFinished(runner, [&log, store, done] {
        log.Adopt(std::move(*store));
        done();
    });
    return true;
}

} // namespace GpsLogFiles
