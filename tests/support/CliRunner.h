#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

// orvana-cli run as a separate process under the given HOME, in the given working folder.
struct CliRun {
    int exitCode;
    QString out;
    QString err;
};

// `variables` are set in the child's environment only (a null value removes one), so that no
// test changes the environment of its own process.
CliRun RunCli(const QString &home, const QStringList &arguments, const QString &workingFolder = QString(),
              const QMap<QString, QString> &variables = {});
