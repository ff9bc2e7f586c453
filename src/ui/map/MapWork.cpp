#include "ui/map/MapWork.h"

#include "gps/GpsLog.h"

#include <QMessageBox>
#include <QPointer>
#include <QWidget>

void ShowMessage(QWidget *parent, const QString &text)
{
    auto *box = new QMessageBox(QMessageBox::Information, parent ? parent->window()->windowTitle() : QString(), text, QMessageBox::Ok, parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

void EnsureGpsLogLoaded(QObject *receiver, GpsLog &log)
{
    if (log.IsLoaded())
        return;
    QPointer<GpsLog> shared(&log);
    RunOffInterface<GpsStore>(
        receiver,
        [store = log.Copy()]() mutable {
            // A damaged file is replaced by its backup; the GPS window is where that is told.
            store.Load(nullptr);
            return store;
        },
        [shared](const GpsStore &loaded) {
            if (shared && !shared->IsLoaded())
                shared->Adopt(loaded);
        });
}

void SaveGpsLog(QWidget *window, GpsLog &log)
{
    RunOffInterface<QString>(
        window,
        [store = log.Copy()]() mutable {
            const Result saved = store.Save();
            return saved ? QString() : saved.message;
        },
        [window](const QString &problem) {
            if (!problem.isEmpty())
                ShowMessage(window, problem);
        });
}
