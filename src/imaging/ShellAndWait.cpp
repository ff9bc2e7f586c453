#include "imaging/ShellAndWait.h"

#include <QElapsedTimer>
#include <QProcess>

const QString ProcessNotStartedMessage = QStringLiteral(
    "This program could not determine whether the process started.  Please watch the program and check it completes.");
const QString ProcessTimedOutMessage = QStringLiteral("The process has timed out.");

ProcessRun RunProgram(const QString &program, const QStringList &arguments, qint64 timeoutMs)
{
    ProcessRun run;
    QProcess process;
    process.start(program, arguments, QIODevice::ReadOnly);
    if (!process.waitForStarted()) {
        run.message = ProcessNotStartedMessage;
        return run;
    }
    QElapsedTimer clock;
    clock.start();
    while (!process.waitForFinished(ProcessWaitSliceMs)) {
        if (process.state() == QProcess::NotRunning)
            break;
        if (clock.elapsed() > timeoutMs) {
            process.kill();
            process.waitForFinished();
            run.message = ProcessTimedOutMessage;
            return run;
        }
    }
    run.finished = true;
    run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    run.output = process.readAllStandardOutput();
    run.errors = process.readAllStandardError();
    return run;
}

bool ShellAndWait(const QString &program, const QStringList &arguments, QString &message, qint64 timeoutMs)
{
    const ProcessRun run = RunProgram(program, arguments, timeoutMs);
    message = run.message;
    return run.finished;
}
