#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// No practical limit: the time-out the program gives ExifTool.
constexpr qint64 ExifToolTimeoutMs = 2000000000;

// How an external program's run ended.
struct ProcessRun {
    bool finished = false;  // it ran and ended within the time-out
    QString message;        // why not, in the program's fixed words
    int exitCode = -1;
    QByteArray output;
    QByteArray errors;
};

// The longest a wait for a process blocks at once. The waits serve no events: callers that must
// stay responsive run them on a worker thread.
constexpr int ProcessWaitSliceMs = 30;

// Starts the program with its arguments (no shell in between) and waits for it to end, in
// blocking slices of ProcessWaitSliceMs. A program still running at the time-out is stopped.
ProcessRun RunProgram(const QString &program, const QStringList &arguments, qint64 timeoutMs);

// The same with the program's long-standing interface: true when the program ran to its end;
// otherwise false with the reason in message.
bool ShellAndWait(const QString &program, const QStringList &arguments, QString &message, qint64 timeoutMs);

// The two reasons ShellAndWait gives.
extern const QString ProcessNotStartedMessage;
extern const QString ProcessTimedOutMessage;
