#pragma once

#include "app/Result.h"

#include <QString>

#include <functional>

class GpsLog;
class GpsStore;
class ProgressSink;
class Prompter;
class TaskRunner;

// The shared GPS log's file work, run on a task runner's worker: the interface thread never reads
// or writes the store's files. Each `done` runs on the interface thread when the work has ended.
namespace GpsLogFiles {

// Runs `after` once, on the interface thread, when the runner's present work has finished.
void WhenFinished(TaskRunner &runner, const std::function<void()> &after);

// Reads the store ("LoadingGPSLogDatabase") and has the log adopt it; a damaged file is told
// through `prompter` (callable from the worker). A store that cannot be read is not adopted.
bool Load(TaskRunner &runner, GpsLog &log, Prompter &prompter, const std::function<void(const Result &)> &done);

// Writes a copy of the store ("SavingGPSLogDatabase"). When nothing changed the log meanwhile, the
// log takes the saved copy back, so it is no longer modified.
bool Save(TaskRunner &runner, GpsLog &log, const std::function<void(const Result &)> &done);

// Changes a copy of the store on the worker (imports, downloads, renames that rewrite a point
// file) and has the log adopt it at the end, cancelled or not: what was completed stays.
bool Change(TaskRunner &runner, GpsLog &log, const QString &title, const std::function<void(GpsStore &, ProgressSink &)> &change,
            const std::function<void()> &done);

} // namespace GpsLogFiles
