#include "cli/CliAlbumSupport.h"
#include "cli/CliGroups.h"
#include "cli/CliOutput.h"

#include "library/AlbumDiscovery.h"
#include "library/AlbumPreview.h"
#include "library/GlobalSearch.h"
#include "library/LibraryFolders.h"
#include "library/SearchDomains.h"
#include "library/Trash.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

using Arguments = CliArguments;

QString Absolute(const QString &path)
{
    return QDir::cleanPath(QDir::current().absoluteFilePath(path));
}

void PrintJson(const QJsonArray &json)
{
    PrintOut(QString::fromUtf8(QJsonDocument(json).toJson(QJsonDocument::Indented)).trimmed());
}

int Albums(const Arguments &args)
{
    if (args.positional.size() != 1)
        return args.UsageError(QStringLiteral("library albums takes FOLDER"));
    QJsonArray json;
    for (const QString &album : FindAlbums(Absolute(args.positional[0]))) {
        AlbumPreview preview;
        const Result read = ReadAlbumPreview(album, preview);
        if (!args.Has("--json")) {
            PrintOut(QStringList{album, preview.title, QString::number(preview.photos), QString::number(preview.totalSize),
                                 PreviewDateText(preview.firstCapture), PreviewDateText(preview.lastCapture)}
                         .join(u'\t'));
            continue;
        }
        json.append(QJsonObject{
            {QStringLiteral("path"), album},
            {QStringLiteral("name"), preview.name},
            {QStringLiteral("readable"), read.ok},
            {QStringLiteral("title"), preview.title},
            {QStringLiteral("identification"), preview.identification},
            {QStringLiteral("photos"), preview.photos},
            {QStringLiteral("totalSize"), preview.totalSize},
            {QStringLiteral("firstCapture"), PreviewDateText(preview.firstCapture)},
            {QStringLiteral("lastCapture"), PreviewDateText(preview.lastCapture)},
        });
    }
    if (args.Has("--json"))
        PrintJson(json);
    return ExitDone;
}

std::optional<QDate> DateOption(const Arguments &args, const char *option)
{
    if (!args.Has(option))
        return std::nullopt;
    return QDate::fromString(args.Value(option), QStringLiteral("yyyy-MM-dd"));
}

int Search(const Arguments &args)
{
    static const QMap<QString, SearchMode> modes{{QStringLiteral("file"), SearchMode::File},
                                                 {QStringLiteral("note"), SearchMode::Description},
                                                 {QStringLiteral("keywords"), SearchMode::Keywords},
                                                 {QStringLiteral("date"), SearchMode::DateOnly}};
    const QString in = args.Has("--in") ? args.Value("--in") : QStringLiteral("file");
    if (args.positional.size() > 1 || !modes.contains(in) || (args.positional.isEmpty() && in != QLatin1String("date")))
        return args.UsageError(QStringLiteral("library search takes TEXT (none with --in date) and --in file, note, keywords or date"));
    const SearchQuery query{args.positional.value(0), modes[in], DateOption(args, "--from"), DateOption(args, "--to")};
    if (const Result valid = CheckSearchQuery(query); !valid)
        return Fail(valid.message);
    CliProgressSink progress;
    const QList<AlbumMatch> matches = SearchAlbums(query, AlbumsOfCheckedDomains(), progress);
    if (progress.Cancelled())
        return ExitFailed;
    QJsonArray json;
    for (const AlbumMatch &match : matches) {
        if (!args.Has("--json"))
            PrintOut(QStringList{match.title, QString::number(match.photos), QString::number(match.matched), match.path}.join(u'\t'));
        json.append(QJsonObject{{QStringLiteral("title"), match.title},
                                {QStringLiteral("photos"), match.photos},
                                {QStringLiteral("matched"), match.matched},
                                {QStringLiteral("path"), match.path}});
    }
    if (args.Has("--json"))
        PrintJson(json);
    return ExitDone;
}

int Domains(const Arguments &args)
{
    const QStringList &p = args.positional;
    const QString action = p.value(0);
    Result changed;
    if (p.isEmpty())
        ;
    else if (action == QLatin1String("add") && p.size() == 2)
        changed = AddSearchDomain(Absolute(p[1]));
    else if (action == QLatin1String("remove") && p.size() == 2)
        changed = RemoveSearchDomain(Absolute(p[1]));
    else if (action == QLatin1String("check") && p.size() == 3 && (p[2] == QLatin1String("on") || p[2] == QLatin1String("off")))
        changed = CheckSearchDomain(Absolute(p[1]), p[2] == QLatin1String("on"));
    else
        return args.UsageError(QStringLiteral("library domains takes nothing, add PATH, remove PATH or check PATH on|off"));
    if (!changed)
        return Fail(changed.message);
    if (!p.isEmpty())
        return ExitDone;
    QJsonArray json;
    for (const SearchDomain &domain : LoadSearchDomains()) {
        if (!args.Has("--json"))
            PrintOut((domain.checked ? QStringLiteral("[x] ") : QStringLiteral("[ ] ")) + domain.path);
        json.append(QJsonObject{{QStringLiteral("path"), domain.path}, {QStringLiteral("checked"), domain.checked}});
    }
    if (args.Has("--json"))
        PrintJson(json);
    return ExitDone;
}

int Outcome(const NameOutcome &outcome)
{
    switch (outcome.status) {
    case NameStatus::Done: PrintOut(outcome.path); return ExitDone;
    case NameStatus::Empty: return Fail(QStringLiteral("the name is empty"));
    case NameStatus::Exists: return Fail(Message("MessageNameExists", "OrvDocument") + QStringLiteral(" (") + outcome.path + u')');
    case NameStatus::Failed: break;
    }
    return Fail(Message("MessageFailToCreateFolder", "OrvDocument") + QStringLiteral(" (") + outcome.path + u')');
}

int NewAlbum(const Arguments &args)
{
    if (args.positional.size() != 2)
        return args.UsageError(QStringLiteral("library new-album takes FOLDER and NAME"));
    return Outcome(MakeAlbumFolder(Absolute(args.positional[0]), args.positional[1]));
}

int Rename(const Arguments &args)
{
    if (args.positional.size() != 2)
        return args.UsageError(QStringLiteral("library rename takes PATH and NEWNAME"));
    return Outcome(RenameLibraryFolder(Absolute(args.positional[0]), args.positional[1]));
}

int TrashFolder(const Arguments &args)
{
    if (args.positional.size() != 1)
        return args.UsageError(QStringLiteral("library trash takes PATH"));
    const QString path = Absolute(args.positional[0]);
    if (!QFileInfo(path).isDir())
        return Fail(QStringLiteral("%1 is not a folder").arg(path));
    const Result moved = MoveToTrash(path);
    return moved ? ExitDone : Fail(moved.message);
}

} // namespace

const CliGroup &LibraryCommands()
{
    static const CliGroup group{
        "library",
        "the album library: albums, global search, folders",
        {
            {"albums", "FOLDER", "the albums found in FOLDER: path, title, photos, bytes, first and last capture", {JsonOption}, Albums},
            {"search", "[TEXT]", "searches every album of the checked domains; prints title, photos, matches, folder",
             {{"--in", "WHERE", "file (the default), note, keywords or date"},
              {"--from", "DATE", "first capture day, yyyy-mm-dd"},
              {"--to", "DATE", "last capture day, yyyy-mm-dd"},
              JsonOption},
             Search},
            {"domains", "[add PATH | remove PATH | check PATH on|off]", "the folders searched; with no change, lists them", {JsonOption}, Domains},
            {"new-album", "FOLDER NAME", "makes the album NAME.album in FOLDER; prints its path", {}, NewAlbum},
            {"rename", "PATH NEWNAME", "renames a folder or an album (which keeps its .album); prints the new path", {}, Rename},
            {"trash", "PATH", "moves a folder or an album to the trash", {}, TrashFolder},
        },
        "",
        UseUserSettings,
    };
    return group;
}
