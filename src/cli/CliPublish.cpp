#include "cli/CliAlbumSupport.h"
#include "cli/CliGroups.h"
#include "cli/CliOutput.h"
#include "cli/CliPassword.h"

#include "publish/AlbumExportArguments.h"
#include "publish/FavoriteServers.h"
#include "publish/OrvAlbumExporter.h"
#include "publish/ServerTest.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

using Arguments = CliArguments;

void PrintJson(const QJsonDocument &json)
{
    PrintOut(QString::fromUtf8(json.toJson(QJsonDocument::Indented)).trimmed());
}

AlbumExportArguments ArgumentsOf(const AlbumDocument &album)
{
    AlbumExportArguments arguments;
    LoadExportArguments(album.List(), arguments);
    return arguments;
}

// FILE arguments choose the photos, as a selection does in the album window.
std::optional<QList<int>> ChooseFiles(const Arguments &args, const AlbumDocument &album, AlbumExportArguments &arguments)
{
    arguments.OnlyNoted = args.Has("--only-noted");
    arguments.OnlySelected = args.positional.size() > 1;
    return arguments.OnlySelected ? RecordsNamed(album, args.positional.mid(1)) : QList<int>();
}

// An exporter ready for export or sync: the album, its saved options and the photos the FILE
// arguments chose. Null when the album cannot open or a FILE is not in it (the reason on stderr).
struct Publishing {
    std::unique_ptr<AlbumDocument> album;
    AlbumExportArguments arguments;
    QList<int> chosen;
};
std::optional<Publishing> OpenForPublishing(const Arguments &args)
{
    Publishing publishing{OpenAlbumForCli(args.positional[0]), {}, {}};
    if (!publishing.album)
        return std::nullopt;
    publishing.arguments = ArgumentsOf(*publishing.album);
    const std::optional<QList<int>> chosen = ChooseFiles(args, *publishing.album, publishing.arguments);
    if (!chosen)
        return std::nullopt;
    publishing.chosen = *chosen;
    return publishing;
}

int Options(const Arguments &args)
{
    // "--set KEY VALUE" is a switch followed by its pair, so the words after ALBUM come in pairs.
    const QStringList pairs = args.positional.mid(1);
    if (args.positional.isEmpty() || (args.Has("--set") ? pairs.isEmpty() || pairs.size() % 2 != 0 : !pairs.isEmpty()))
        return args.UsageError(QStringLiteral("publish options takes ALBUM and --set KEY VALUE pairs"));
    std::unique_ptr<AlbumDocument> album = OpenAlbumForCli(args.positional[0]);
    if (!album)
        return ExitFailed;
    AlbumExportArguments arguments = ArgumentsOf(*album);
    for (qsizetype i = 0; i < pairs.size(); i += 2) {
        const ExportOption *option = FindExportOption(pairs[i]);
        if (!option)
            return args.UsageError(QStringLiteral("unknown option \"%1\"").arg(pairs[i]));
        SetExportOptionText(arguments, *option, pairs[i + 1]);
    }
    if (!pairs.isEmpty()) {
        album->SetDocumentProperties(ExportProperties(arguments));
        if (const int saved = SaveAndFinish(*album); saved != ExitDone)
            return saved;
    }
    QJsonObject json;
    for (const ExportOption &option : ExportOptions()) {
        const QString text = ExportOptionText(arguments, option);
        if (args.Has("--json"))
            json.insert(QLatin1String(option.name), text);
        else
            PrintOut(QStringLiteral("%1=%2").arg(QLatin1String(option.name), text));
    }
    if (args.Has("--json"))
        PrintJson(QJsonDocument(json));
    return ExitDone;
}

int Export(const Arguments &args)
{
    if (args.positional.isEmpty())
        return args.UsageError(QStringLiteral("publish export takes ALBUM"));
    std::optional<Publishing> publishing = OpenForPublishing(args);
    if (!publishing)
        return ExitFailed;
    const std::unique_ptr<AlbumDocument> &album = publishing->album;
    AlbumExportArguments &arguments = publishing->arguments;
    const QList<int> &chosen = publishing->chosen;
    OrvAlbumExporter exporter;
    exporter.SetDocument(*album);
    exporter.SetArguments(arguments);
    exporter.SetSelection(chosen);
    CliProgressSink progress;
    if (args.Has("--desktop")) {
        // Asked whether to replace an earlier copy, the command line keeps it and takes a new name.
        CliPrompter prompter(false);
        const QString copy = exporter.ExportAlbum(prompter, progress, {});
        if (copy.isEmpty())
            return ExitFailed;
        PrintOut(copy);
        return ExitDone;
    }
    const ExportFolderReport report = exporter.GenerateExportFolder(progress);
    for (const QString &problem : report.problems)
        Fail(problem);
    if (!report.result)
        return Fail(report.result.message);
    PrintOut(report.folder);
    return report.problems.isEmpty() ? ExitDone : ExitFailed;
}

int Sync(const Arguments &args)
{
    if (args.positional.isEmpty())
        return args.UsageError(QStringLiteral("publish sync takes ALBUM"));
    std::optional<Publishing> publishing = OpenForPublishing(args);
    if (!publishing)
        return ExitFailed;
    const std::unique_ptr<AlbumDocument> &album = publishing->album;
    AlbumExportArguments &arguments = publishing->arguments;
    const QList<int> &chosen = publishing->chosen;
    arguments.ForceUpdateAll = args.Has("--force");
    if (!arguments.IsSharedServer && (qEnvironmentVariableIsSet("ORVANA_FTP_PASSWORD") || arguments.FTPPassword.isEmpty())) {
        const std::optional<QString> password = FtpPassword(
            QStringLiteral("Password for %1@%2: ").arg(arguments.FTPLoginName, arguments.FTPServerAddress));
        if (!password)
            return Fail(QStringLiteral("no password: set ORVANA_FTP_PASSWORD or run on a terminal"));
        arguments.FTPPassword = *password;
    }
    OrvAlbumExporter exporter;
    exporter.SetDocument(*album);
    exporter.SetArguments(arguments);
    exporter.SetSelection(chosen);
    CliProgressSink progress;
    CliPrompter prompter(false);
    const WebSyncReport report = exporter.WebSync(prompter, progress, [](const QString &address) { PrintOut(address); });
    for (const QString &uploaded : report.uploaded)
        PrintOut(uploaded);
    for (const QString &problem : report.problems)
        Fail(problem);
    return report.failed || report.cancelled || !report.problems.isEmpty() ? ExitFailed : ExitDone;
}

int Test(const Arguments &args)
{
    if (args.positional.size() != 1)
        return args.UsageError(QStringLiteral("publish test takes ALBUM"));
    std::unique_ptr<AlbumDocument> album = OpenAlbumForCli(args.positional[0]);
    if (!album)
        return ExitFailed;
    AlbumExportArguments arguments = ArgumentsOf(*album);
    if (qEnvironmentVariableIsSet("ORVANA_FTP_PASSWORD"))
        arguments.FTPPassword = qEnvironmentVariable("ORVANA_FTP_PASSWORD");
    const ServerTestReport report =
        TestPublishingServer(arguments.FTPServerAddress, arguments.FTPLoginName, arguments.FTPPassword, arguments.FTPDirectory,
                             album->List().GetDocumentProperty(QStringLiteral("Identification")));
    const QString message = ServerTestMessage(report).trimmed();
    const bool ready = report.readiness == ServerReadiness::Ready || report.readiness == ServerReadiness::AlbumExists;
    if (!ready)
        return Fail(message);
    PrintOut(message);
    return ExitDone;
}

int Favourites(const Arguments &args)
{
    const QString action = args.positional.value(0);
    FavoriteServers favourites;
    favourites.Load();
    if (action == QLatin1String("add")) {
        if (args.positional.size() != 4)
            return args.UsageError(QStringLiteral("publish favourites add takes ADDRESS LOGIN DIRECTORY"));
        const std::optional<QString> password = FtpPassword(
            QStringLiteral("Password for %1@%2: ").arg(args.positional[2], args.positional[1]));
        if (!password)
            return Fail(QStringLiteral("no password: set ORVANA_FTP_PASSWORD or run on a terminal"));
        favourites.addFavoriteServer(args.positional[1], args.positional[2], *password, args.positional[3]);
    } else if (action == QLatin1String("clear") && args.positional.size() == 1) {
        favourites.Clear();
    } else if (!args.positional.isEmpty()) {
        return args.UsageError(QStringLiteral("publish favourites takes add ADDRESS LOGIN DIRECTORY, or clear"));
    }
    if (!action.isEmpty()) {
        if (const Result saved = favourites.SaveFavoriteServerList(); !saved)
            return Fail(saved.message);
    }
    QJsonArray json;
    for (const FavoriteServer &server : favourites.All()) {
        // Passwords stay in the file; listing them would show them to anyone looking on.
        if (args.Has("--json"))
            json.append(QJsonObject{{QStringLiteral("url"), server.url},
                                    {QStringLiteral("address"), server.address},
                                    {QStringLiteral("login"), server.login},
                                    {QStringLiteral("directory"), server.directory}});
        else
            PrintOut(server.url);
    }
    if (args.Has("--json"))
        PrintJson(QJsonDocument(json));
    return ExitDone;
}

const CliOption OnlyNoted{"--only-noted", nullptr, "only the photos that carry a note"};

} // namespace

const CliGroup &PublishCommands()
{
    static const CliGroup group{
        "publish",
        "web albums: export options, export, web sync, favourite servers",
        {
            {"options", "ALBUM [--set KEY VALUE]...", "prints the album's export options; --set changes one (repeatable)",
             {JsonOption, {"--set", nullptr, "KEY VALUE: an option to change, by the name printed"}}, Options},
            {"export", "ALBUM [FILE...]", "builds the web album \"album.data\" in the album folder and prints its path",
             {OnlyNoted, {"--desktop", nullptr, "copy it to the desktop as IDENTIFICATION.data, a free name when one is there"}}, Export},
            {"sync", "ALBUM [FILE...]", "publishes new and changed photos to the server of the album's options; prints each upload",
             {OnlyNoted, {"--force", nullptr, "upload every photo again"}}, Sync},
            {"test", "ALBUM", "tells whether the album's own FTP server is prepared for publishing", {}, Test},
            {"favourites", "[add ADDRESS LOGIN DIRECTORY | clear]", "lists the favourite FTP servers, after adding or clearing",
             {JsonOption}, Favourites},
        },
        "FILE arguments choose the photos (bare names inside the album), as a selection does. The FTP\n"
        "password comes from the variable ORVANA_FTP_PASSWORD; without it, sync uses the one kept in the\n"
        "album's options, or asks on the terminal when there is none. An ADDRESS may end in \":PORT\".",
    };
    return group;
}
