#pragma once

#include "library/AlbumDocument.h"
#include "cli/CliCommand.h"
#include "cli/CliProgress.h"
#include "app/ProgressSink.h"
#include "app/Prompter.h"

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

// A progress line on a terminal; Ctrl-C asks the work to stop after what it is doing, so that
// nothing is left half-done.
class CliProgressSink : public ProgressSink {
public:
    CliProgressSink();
    ~CliProgressSink() override;
    CliProgressSink(const CliProgressSink &) = delete;
    CliProgressSink &operator=(const CliProgressSink &) = delete;
    void Begin(const QString &title, int total) override;
    void Advance(int done) override;
    bool Cancelled() const override;
    void End() override;

private:
    std::unique_ptr<ProgressLine> line;
    int total = 0;
};

// Opens an album by the program's opening rules, as a window would. On failure the reason is
// on stderr and the result is null. Records naming no bare file are reported, and so is every
// file the opening could not import (from the drop folder, or found outside); that report is
// handed back when asked for.
std::unique_ptr<AlbumDocument> OpenAlbumForCli(const QString &path, ImportReport *opening = nullptr);
// Every file not imported, and every warning, on stderr with its reason; true when there were none.
bool ReportProblems(const ImportReport &report);
// Saves when the document changed; returns the exit code.
int SaveAndFinish(AlbumDocument &document);

// The records named by FILE arguments; fails (null) on a name the album lacks or cannot touch.
std::optional<QList<int>> RecordsNamed(const AlbumDocument &document, const QStringList &names);

// A localised message with "%1" filled in.
QString Message(const char *key, const char *section, const QString &argument = QString());
