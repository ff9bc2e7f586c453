#include "CliOutput.h"

#include <QTextStream>
#include <cstdio>

void PrintOut(const QString &text)
{
    QTextStream out(stdout);
    out << text << '\n';
}

int Fail(const QString &message)
{
    QTextStream err(stderr);
    err << "orvana-cli: " << message << '\n';
    return ExitFailed;
}

int UsageError(const QString &message, const QString &usage)
{
    QTextStream err(stderr);
    err << "orvana-cli: " << message << '\n' << "usage: " << usage << '\n';
    return ExitUsage;
}

bool WantsHelp(const QStringList &arguments)
{
    return arguments.contains(QLatin1String("--help")) || arguments.contains(QLatin1String("-h"));
}
