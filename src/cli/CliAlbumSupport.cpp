#include "cli/CliAlbumSupport.h"

#include "cli/CliOutput.h"
#include "library/AlbumOpening.h"
#include "app/Language.h"
#include "library/PhotoRecord.h"

#include <QDir>
#include <QTextStream>
#include <atomic>
#include <csignal>

bool CliPrompter::AskYesNo(const QString &title, const QString &text)
{
    QTextStream(stderr) << title << ": " << text << (yes ? " yes\n" : " no\n");
    return yes;
}

void CliPrompter::Inform(const QString &title, const QString &text)
{
    QTextStream(stderr) << title << ": " << text << '\n';
}

void CliPrompter::Error(const QString &title, const QString &text)
{
    QTextStream(stderr) << title << ": " << text << '\n';
}

// Nothing is read from standard input: the text comes from the command line or is not given.
std::optional<QString> CliPrompter::AskText(const QString &, const QString &, const QString &)
{
    return std::nullopt;
}

namespace {

std::atomic<bool> interrupted{false};

extern "C" void StopWorkOnInterrupt(int)
{
    interrupted = true;
}

} // namespace

CliProgressSink::CliProgressSink()
{
    interrupted = false;
    std::signal(SIGINT, StopWorkOnInterrupt);
}

CliProgressSink::~CliProgressSink()
{
    std::signal(SIGINT, SIG_DFL);
}

void CliProgressSink::Begin(const QString &, int count)
{
    total = count;
    line = std::make_unique<ProgressLine>();
}

void CliProgressSink::Advance(int done)
{
    if (line)
        line->Show(done, total);
}

bool CliProgressSink::Cancelled() const
{
    return interrupted;
}

void CliProgressSink::End()
{
    line.reset();
}

QString Message(const char *key, const char *section, const QString &argument)
{
    QString text = GetLocalizedString(QLatin1String(key), QLatin1String(section));
    text.replace(QStringLiteral("\\r\\n"), QStringLiteral(" "));
    return argument.isNull() ? text : text.replace(QStringLiteral("%1"), argument);
}

bool ReportProblems(const ImportReport &report)
{
    QTextStream err(stderr);
    for (const QString &line : report.ProblemLines())
        err << "orvana-cli: " << line << '\n';
    return report.Clean();
}

std::unique_ptr<AlbumDocument> OpenAlbumForCli(const QString &path, ImportReport *opening)
{
    CliPrompter prompter(false);
    CliProgressSink progress;
    AlbumDocument::OpenResult opened = OpenAlbumDocument(QDir::current().absoluteFilePath(path), OpenRequest(), prompter, progress);
    if (opened.status != OpenAlbumStatus::Ready) {
        Fail(GetLocalizedString(QStringLiteral("MessageFailToOpenAlbum"), QStringLiteral("OrvDocument")) + QStringLiteral(" (") + path + u')');
        return nullptr;
    }
    if (!opened.load) {
        Fail(QStringLiteral("%1: %2; it is left as it is, and nothing is changed").arg(AlbumFormat::StudioPlistPath(opened.document->Path()), opened.load.message));
        return nullptr;
    }
    ReportProblems(opened.imported);
    if (opening)
        *opening = opened.imported;
    for (const int index : opened.document->UnsafeRecords()) {
        QTextStream(stderr) << QStringLiteral("orvana-cli: record %1 names \"%2\", which is not a file of the album; it is left alone\n")
                                   .arg(index)
                                   .arg(opened.document->Record(PhotoRecord::File, index));
    }
    return std::move(opened.document);
}

int SaveAndFinish(AlbumDocument &document)
{
    if (!document.IsModified())
        return ExitDone;
    const Result saved = document.SaveDocumentToFile();
    return saved ? ExitDone : Fail(saved.message);
}

std::optional<QList<int>> RecordsNamed(const AlbumDocument &document, const QStringList &names)
{
    const QList<int> indices = document.FindRecords(names);
    for (qsizetype i = 0; i < names.size(); ++i) {
        if (indices[i] == 0 || !PhotoRecord::IsBareFileName(document.Record(PhotoRecord::File, indices[i]))) {
            Fail(QStringLiteral("\"%1\" is not a photo of this album").arg(names[i]));
            return std::nullopt;
        }
    }
    return indices;
}
