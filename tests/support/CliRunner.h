#pragma once

#include <QString>
#include <QStringList>

// orvana-cli run as a separate process under the given HOME, in the given working folder.
struct CliRun {
    int exitCode;
    QString out;
    QString err;
};

CliRun RunCli(const QString &home, const QStringList &arguments, const QString &workingFolder = QString());
