#include "cli/CliOutput.h"

#include "app/AppState.h"
#include "app/Language.h"
#include "app/Settings.h"

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

void UseUserSettings()
{
    // A broken language folder reads as English, as it does for the windows.
    SetCurrentLanguage(ReadSetting(QStringLiteral("Language"), QStringLiteral("Current")));
    if (!CurrentLanguage().isEmpty()
        && GetLocalizedString(QStringLiteral("LanguageName"), QStringLiteral("OrvDocument")) != CurrentLanguage())
        SetCurrentLanguage(QStringLiteral("English"));
    ReadAppStateFromSettings();
}
