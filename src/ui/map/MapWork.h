#pragma once

#include <QFutureWatcher>
#include <QObject>
#include <QtConcurrent/QtConcurrentRun>

#include <functional>

class GpsLog;
class QWidget;

// Runs `work` on a worker thread and hands its result to `done` on the interface thread, unless
// `receiver` has gone meanwhile (the watcher goes with it, and the result is dropped).
template <typename Result, typename Work, typename Done>
void RunOffInterface(QObject *receiver, Work work, Done done)
{
    auto *watcher = new QFutureWatcher<Result>(receiver);
    QObject::connect(watcher, &QFutureWatcher<Result>::finished, receiver, [watcher, done] {
        watcher->deleteLater();
        done(watcher->result());
    });
    watcher->setFuture(QtConcurrent::run(std::move(work)));
}

// A message over the window, shown without waiting for it to be closed.
void ShowMessage(QWidget *parent, const QString &text);

// The shared GPS log for a map dialog: loaded on a worker when no window has loaded it yet.
void EnsureGpsLogLoaded(QObject *receiver, GpsLog &log);
// Writes the log's files on a worker, from a copy of the store as it is now.
void SaveGpsLog(QWidget *window, GpsLog &log);
