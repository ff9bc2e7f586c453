#include "CliRunner.h"

void StartCli(QProcess &process, const QString &home, const QStringList &arguments, const QMap<QString, QString> &variables)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), home);
    environment.insert(QStringLiteral("LANG"), QStringLiteral("C.UTF-8"));
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    environment.remove(QStringLiteral("XDG_CONFIG_HOME"));
    environment.remove(QStringLiteral("XDG_DOCUMENTS_DIR"));
    for (auto variable = variables.begin(); variable != variables.end(); ++variable)
        variable->isNull() ? environment.remove(variable.key()) : environment.insert(variable.key(), variable.value());
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(home);
    process.start(QStringLiteral(ORVANA_BIN_DIR "/orvana-cli"), arguments);
}

CliRun RunCli(const QString &home, const QStringList &arguments, const QMap<QString, QString> &variables)
{
    QProcess process;
    StartCli(process, home, arguments, variables);
    if (!process.waitForFinished(60000))
        return {-1, {}, QStringLiteral("did not finish")};
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAllStandardOutput()), QString::fromUtf8(process.readAllStandardError())};
}
