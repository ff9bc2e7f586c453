#include "ProcessRunner.h"

#include "ProgressSink.h"

#include <QElapsedTimer>
#include <QProcess>

namespace {

constexpr int PollMs = 100;

} // namespace

ProcessOutcome RunAndWait(const QString &program, const QStringList &arguments, int timeoutMs, ProgressSink *progress)
{
    ProcessOutcome outcome;
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setStandardOutputFile(QProcess::nullDevice());
    process.start(program, arguments);
    if (!process.waitForStarted())
        return outcome;
    outcome.started = true;
    QElapsedTimer clock;
    clock.start();
    while (!process.waitForFinished(PollMs)) {
        if (progress) {
            progress->Progress(clock.elapsed(), timeoutMs);
            outcome.cancelled = progress->Cancelled();
        }
        if (outcome.cancelled || clock.elapsed() >= timeoutMs || process.state() == QProcess::NotRunning) {
            process.kill();
            process.waitForFinished();
            return outcome;
        }
    }
    outcome.finished = process.exitStatus() == QProcess::NormalExit;
    outcome.exitCode = process.exitCode();
    return outcome;
}

bool StartDetached(const QString &program, const QStringList &arguments)
{
    return QProcess::startDetached(program, arguments);
}
