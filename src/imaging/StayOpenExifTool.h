#pragma once

#include "imaging/ShellAndWait.h"

#include <QProcess>
#include <optional>

// One ExifTool process kept open for many commands ("-stay_open"), so a batch pays for starting
// Perl and loading ExifTool once instead of once per photo. Each command gets the same arguments
// a single run would, one per line of ExifTool's argument stream.
class StayOpenExifTool {
public:
    explicit StayOpenExifTool(const QString &program);
    ~StayOpenExifTool();
    StayOpenExifTool(const StayOpenExifTool &) = delete;
    StayOpenExifTool &operator=(const StayOpenExifTool &) = delete;

    // Runs one command and waits for ExifTool to report it done. Once the process has gone,
    // every later command fails.
    ProcessRun Execute(const QStringList &arguments, qint64 timeoutMs = ExifToolTimeoutMs);

    // Whether every argument can travel in the stream exactly; those that cannot must be given
    // to a run of their own.
    static bool CanCarry(const QStringList &arguments);

private:
    QProcess process;
    int commandNumber = 0;
};

// One line of an ExifTool argument stream that stands for exactly this argument, or nothing
// when no line can. A plain line loses a line break, a blank at its start and one blank after a
// tag's "="; a C-string line keeps those but turns "$" and "@" into "\$" and "\@".
std::optional<QByteArray> ArgumentLine(const QString &argument);
