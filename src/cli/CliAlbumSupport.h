#pragma once

#include "AlbumDocument.h"
#include "Prompter.h"

#include <QStringList>
#include <memory>
#include <optional>

// Questions are answered by the command's flags, never by waiting on standard input; messages go
// to stderr.
class CliPrompter : public Prompter {
public:
    explicit CliPrompter(bool answerYes) : yes(answerYes) {}
    bool AskYesNo(const QString &title, const QString &text) override;
    void Inform(const QString &title, const QString &text) override;
    void Error(const QString &title, const QString &text) override;
    std::optional<QString> AskText(const QString &title, const QString &text, const QString &initial) override;

private:
    bool yes;
};

// Opens an album by the program's opening rules, as a window would. On failure the reason is
// on stderr and the result is null. Records naming no bare file are reported.
std::unique_ptr<AlbumDocument> OpenAlbumForCli(const QString &path);
// Saves when the document changed; returns the exit code.
int SaveAndFinish(AlbumDocument &document);

// The records named by FILE arguments; fails (null) on a name the album lacks or cannot touch.
std::optional<QList<int>> RecordsNamed(const AlbumDocument &document, const QStringList &names);

// A localised message with "%1" filled in.
QString Message(const char *key, const char *section, const QString &argument = QString());
