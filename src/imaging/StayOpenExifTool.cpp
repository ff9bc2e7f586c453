#include "imaging/StayOpenExifTool.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <algorithm>

namespace {

constexpr int CloseWaitMs = 5000;
// Printed once the command is done, with ExifTool's exit status for it.
const QByteArray StatusMarker = QByteArrayLiteral("{exit-status ");

} // namespace

std::optional<QByteArray> ArgumentLine(const QString &argument)
{
    const QByteArray bytes = argument.toUtf8();
    static const QRegularExpression blankAfterAssignment(QStringLiteral("^-[-:\\w]+#?\\s*[-+<]?= "));
    const bool plainLineLoses = bytes.contains('\n') || bytes.contains('\r') || bytes.isEmpty()
        || QChar(argument.front()).isSpace() || argument.front() == u'#'
        || blankAfterAssignment.match(argument).hasMatch();
    if (!plainLineLoses)
        return bytes + '\n';
    if (bytes.contains('$') || bytes.contains('@'))
        return std::nullopt;
    QByteArray escaped = bytes;
    escaped.replace('\\', "\\\\").replace('\n', "\\n").replace('\r', "\\r");
    return "#[CSTR]" + escaped + '\n';
}

bool StayOpenExifTool::CanCarry(const QStringList &arguments)
{
    return std::all_of(arguments.begin(), arguments.end(),
                       [](const QString &argument) { return ArgumentLine(argument).has_value(); });
}

StayOpenExifTool::StayOpenExifTool(const QString &program)
{
    // One stream keeps ExifTool's warnings in order with the "{ready}" that closes a command.
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, {QStringLiteral("-stay_open"), QStringLiteral("True"), QStringLiteral("-@"), QStringLiteral("-")});
    process.waitForStarted();
}

StayOpenExifTool::~StayOpenExifTool()
{
    if (process.state() != QProcess::Running)
        return;
    process.write("-stay_open\nFalse\n");
    process.closeWriteChannel();
    if (!process.waitForFinished(CloseWaitMs))
        process.kill();
    process.waitForFinished();
}

ProcessRun StayOpenExifTool::Execute(const QStringList &arguments, qint64 timeoutMs)
{
    ProcessRun run;
    if (process.state() != QProcess::Running) {
        run.message = ProcessNotStartedMessage;
        return run;
    }
    const QByteArray ready = "{ready" + QByteArray::number(++commandNumber) + '}';
    QByteArray command;
    for (const QString &argument : arguments) {
        const std::optional<QByteArray> line = ArgumentLine(argument);
        if (!line) {
            run.message = QStringLiteral("an argument cannot be passed to the running ExifTool");
            return run;
        }
        command += *line;
    }
    command += "-echo3\n" + StatusMarker + "${status}}\n";
    command += "-execute" + QByteArray::number(commandNumber) + '\n';
    process.write(command);

    QElapsedTimer clock;
    clock.start();
    while (!run.output.contains(ready)) {
        if (process.state() != QProcess::Running) {
            run.message = ProcessNotStartedMessage;
            return run;
        }
        if (clock.elapsed() > timeoutMs) {
            process.kill();
            run.message = ProcessTimedOutMessage;
            return run;
        }
        // Whatever has arrived is taken, whether or not this slice of the wait saw it.
        process.waitForReadyRead(ProcessWaitSliceMs);
        run.output += process.readAllStandardOutput();
    }
    run.output.truncate(run.output.indexOf(ready));
    const qsizetype status = run.output.lastIndexOf(StatusMarker);
    if (status < 0) {
        run.message = QStringLiteral("ExifTool did not report how the command went");
        return run;
    }
    const qsizetype statusEnd = run.output.indexOf('}', status);
    run.exitCode = run.output.mid(status + StatusMarker.size(), statusEnd - status - StatusMarker.size()).toInt();
    run.output.truncate(status);
    run.finished = true;
    return run;
}
