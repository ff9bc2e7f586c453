#pragma once

#include <QString>
#include <functional>

class ProgressSink;
class Prompter;
class QWidget;

// Runs one publishing operation (export, sync, server test) on a worker thread with the progress
// window over `window` and its Cancel; the work's questions and messages come up as dialogs, and
// `after` runs on the interface thread once it has ended. The runner goes away by itself.
void StartPublishWork(QWidget *window, const QString &title, std::function<void(ProgressSink &, Prompter &)> work,
                      std::function<void()> after = {});

// Runs on the interface thread, from the work's thread (opening a browser or a folder).
void RunOnInterfaceThread(QWidget *window, std::function<void()> call);
