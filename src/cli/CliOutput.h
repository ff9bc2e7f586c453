#pragma once

#include <QString>
#include <QStringList>

// Exit codes of orvana-cli: done, failed (a message on stderr), bad usage.
enum CliExit { ExitDone = 0, ExitFailed = 1, ExitUsage = 2 };

void PrintOut(const QString &text);   // text and a line end on stdout
int Fail(const QString &message);     // message on stderr, ExitFailed
int UsageError(const QString &message, const QString &usage);

bool WantsHelp(const QStringList &arguments);

// A command group: "settings", "text", ... Each takes the arguments after its own name.
struct CliGroup {
    const char *name;
    const char *summary;  // one line for the top-level help
    int (*run)(const QStringList &arguments);
};

// Takes the user's interface language and album settings as the windows would.
void UseUserSettings();

int RunSettings(const QStringList &arguments);
int RunText(const QStringList &arguments);
int RunAlbum(const QStringList &arguments);
int RunConvert(const QStringList &arguments);
int RunFtp(const QStringList &arguments);
int RunHttp(const QStringList &arguments);
int RunImage(const QStringList &arguments);
int RunGps(const QStringList &arguments);
