#pragma once

#include "app/Result.h"
#include "gps/GpsStore.h"

#include <QPointer>

class GpsLog;
class Prompter;

// The shared GPS log as work on a worker thread sees it: a copy taken on the interface thread,
// read from its files on the worker when the log had not been loaded yet, and handed back to the
// log once the work has ended, so the GPS windows open later find it loaded.
class LogSnapshot {
public:
    // Interface thread. Without a log (an album shown on its own) the store is read from its files.
    explicit LogSnapshot(GpsLog *log);

    // Worker: loads the copy when the log had not been; the reason when its files cannot be read.
    Result Ready(Prompter &prompter);
    const GpsStore &Store() const { return store; }
    // Interface thread, after the work: a store loaded here goes back to the log.
    void HandBack();

private:
    QPointer<GpsLog> log;
    GpsStore store;
    bool load = false;
    bool loaded = false;
};
