// Album verbs that bring photos in, find them, annotate them and move them between albums.
#include "cli/CliAlbumVerbs.h"
#include "cli/CliOutput.h"

#include "library/AlbumOpening.h"
#include "library/InfoExchange.h"
#include "library/OrvAlbumImporter.h"
#include "library/PhotoRecord.h"
#include "library/PhotoTransfer.h"
#include "app/Startup.h"

#include <QDir>

namespace {

// The exchange lists live in the user-data folder, made as the windows make it on a first run.
void EnsureUserData()
{
    SettleUserDataAndLanguage();
}

int PrintFiles(const AlbumDocument &album, const QList<int> &indices)
{
    for (const int index : indices)
        PrintOut(album.Record(PhotoRecord::File, index));
    return ExitDone;
}

int Needs(const CliArguments &args, qsizetype count, const QString &what)
{
    return args.positional.size() < count ? args.UsageError(what) : ExitDone;
}

} // namespace

int AlbumImport(const CliArguments &args, AlbumDocument &album)
{
    if (const int bad = Needs(args, 2, QStringLiteral("album import takes ALBUM and PATH...")))
        return bad;
    QStringList paths;
    for (const QString &path : args.positional.mid(1))
        paths << QDir::current().absoluteFilePath(path);
    CliProgressSink progress;
    OrvAlbumImporter importer;
    importer.SetDocument(&album);
    const ImportReport report = importer.ImportFiles(paths, progress);
    PrintFiles(album, report.imported);
    const int saved = SaveAndFinish(album);
    if (progress.Cancelled())
        return Fail(QStringLiteral("import cancelled; the photos listed are in the album"));
    return ReportProblems(report) ? saved : ExitFailed;
}

int AlbumCheck(const CliArguments &args, AlbumDocument &album)
{
    CliPrompter prompter(args.Has("--remove-missing"));
    CliProgressSink progress;
    const ImportReport report = ActionCheckModified(album, prompter, progress);
    const int saved = SaveAndFinish(album);
    return ReportProblems(report) ? saved : ExitFailed;
}

int AlbumSearch(const CliArguments &args, AlbumDocument &album)
{
    if (const int bad = Needs(args, 2, QStringLiteral("album search takes ALBUM and TEXT")))
        return bad;
    return PrintFiles(album, album.ActionSearch(args.positional[1]).value_or(QList<int>()));
}

int AlbumSetNote(const CliArguments &args, AlbumDocument &album)
{
    if (const int bad = Needs(args, 3, QStringLiteral("album set-note takes ALBUM, TEXT and FILE...")))
        return bad;
    const auto records = RecordsNamed(album, args.positional.mid(2));
    if (!records)
        return ExitFailed;
    album.SetNoteForPhotos(*records, args.positional[1]);
    return SaveAndFinish(album);
}

int AlbumDelete(const CliArguments &args, AlbumDocument &album)
{
    if (const int bad = Needs(args, 2, QStringLiteral("album delete takes ALBUM and FILE...")))
        return bad;
    const auto records = RecordsNamed(album, args.positional.mid(1));
    if (!records)
        return ExitFailed;
    const AlbumDocument::DeleteReport deleted = album.DeleteItems(*records);
    const int saved = SaveAndFinish(album);
    for (const FileProblem &failure : deleted.failures)
        Fail(failure.reason);
    return deleted.failures.isEmpty() ? saved : ExitFailed;
}

int AlbumCopy(const CliArguments &args, AlbumDocument &album)
{
    EnsureUserData();
    const auto records = RecordsNamed(album, args.positional.mid(1));
    if (!records)
        return ExitFailed;
    return ActionCopy(album, *records) ? ExitDone : Fail(QStringLiteral("cannot write the exchange list"));
}

int AlbumCut(const CliArguments &args, AlbumDocument &album)
{
    EnsureUserData();
    const auto records = RecordsNamed(album, args.positional.mid(1));
    if (!records)
        return ExitFailed;
    return ActionCut(album, *records) ? ExitDone : Fail(QStringLiteral("cannot write the exchange list"));
}

int AlbumPaste(const CliArguments &, AlbumDocument &album)
{
    CliProgressSink progress;
    const ImportReport report = ActionPaste(album, progress);
    PrintFiles(album, report.imported);
    const int saved = SaveAndFinish(album);
    return ReportProblems(report) ? saved : ExitFailed;
}

int AlbumKeywordsCopy(const CliArguments &args, AlbumDocument &album)
{
    if (const int bad = Needs(args, 2, QStringLiteral("album keywords-copy takes ALBUM and FILE")))
        return bad;
    const auto records = RecordsNamed(album, {args.positional[1]});
    if (!records)
        return ExitFailed;
    EnsureUserData();
    QString error;
    return WriteKeywordsExchange(album.ActionKeywordsCopy(records->front()), &error) ? ExitDone : Fail(error);
}

int AlbumKeywordsPaste(const CliArguments &args, AlbumDocument &album)
{
    if (const int bad = Needs(args, 2, QStringLiteral("album keywords-paste takes ALBUM and FILE...")))
        return bad;
    const auto records = RecordsNamed(album, args.positional.mid(1));
    if (!records)
        return ExitFailed;
    const std::optional<QString> keywords = ReadKeywordsExchange();
    if (!keywords)
        return Fail(QStringLiteral("no keywords were copied"));
    album.ActionKeywordsPaste(*records, *keywords);
    return SaveAndFinish(album);
}
