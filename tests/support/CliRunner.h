#pragma once

#include <QMap>
#include <QProcess>
#include <QStringList>

// orvana-cli run as a separate process under the given HOME, which is also its working folder.
struct CliRun {
    int exitCode;
    QString out;
    QString err;
};

// `variables` are set in the child's environment only (a null value removes one), so that no
// test changes the environment of its own process.
CliRun RunCli(const QString &home, const QStringList &arguments, const QMap<QString, QString> &variables = {});
// Starts it in the same way and returns at once, for tests that signal it while it runs.
void StartCli(QProcess &process, const QString &home, const QStringList &arguments, const QMap<QString, QString> &variables = {});
