#pragma once

#include <QString>
#include <QStringList>

class ProgressSink;

// External programs are started with an argument list, never through a shell, so that no path or
// name can be taken for a command.
struct ProcessOutcome {
    bool started = false;
    bool finished = false;  // ended by itself within the time-out
    bool cancelled = false;
    int exitCode = -1;
};

// Runs the program and waits for it, looking every 100 ms at the cancel flag and telling the
// progress sink the milliseconds gone; a program still running at the time-out or on a cancel is
// stopped.
ProcessOutcome RunAndWait(const QString &program, const QStringList &arguments, int timeoutMs, ProgressSink *progress);

// Starts a program that goes on by itself (a viewer); true when it started.
bool StartDetached(const QString &program, const QStringList &arguments);
