#pragma once

#include <QString>
#include <QStringList>

// Exit codes of orvana-cli: done, failed (a message on stderr), bad usage.
enum CliExit { ExitDone = 0, ExitFailed = 1, ExitUsage = 2 };

void PrintOut(const QString &text);   // text and a line end on stdout
int Fail(const QString &message);     // message on stderr, ExitFailed
int UsageError(const QString &message, const QString &usage);

// Takes the user's interface language and album settings as the windows would.
void UseUserSettings();
