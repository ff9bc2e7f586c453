#include "cli/CliAlbumSupport.h"
#include "cli/CliGroups.h"
#include "cli/CliOutput.h"

#include "app/Paths.h"
#include "app/Plugins.h"
#include "library/PluginCall.h"

#include <QJsonArray>
#include <algorithm>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

int List(const CliArguments &args)
{
    const std::vector<PluginInfo> plugins = FindPlugins(PluginsFolder());
    if (!args.Has("--json")) {
        for (const PluginInfo &plugin : plugins)
            PrintOut(QStringLiteral("%1\t%2\t%3").arg(plugin.name, plugin.type, plugin.menu));
        return ExitDone;
    }
    QJsonArray list;
    for (const PluginInfo &plugin : plugins)
        list.append(QJsonObject{{QStringLiteral("name"), plugin.name}, {QStringLiteral("type"), plugin.type},
                                {QStringLiteral("menu"), plugin.menu}, {QStringLiteral("command"), plugin.command},
                                {QStringLiteral("icon"), plugin.icon}});
    PrintOut(QString::fromUtf8(QJsonDocument(list).toJson(QJsonDocument::Indented)).trimmed());
    return ExitDone;
}

int Run(const CliArguments &args)
{
    if (args.positional.size() < 2)
        return args.UsageError(QStringLiteral("plugin run takes ALBUM, NAME and the FILEs it works on"));
    const QString name = args.positional.at(1);
    const std::vector<PluginInfo> plugins = FindPlugins(PluginsFolder());
    if (std::none_of(plugins.begin(), plugins.end(), [&](const PluginInfo &plugin) { return plugin.name.compare(name, Qt::CaseInsensitive) == 0; }))
        return Fail(QStringLiteral("no plug-in \"%1\" in %2").arg(name, PluginsFolder()));
    ImportReport opening;
    const auto album = OpenAlbumForCli(args.positional.at(0), &opening);
    if (!album)
        return ExitFailed;
    const std::optional<QList<int>> selected = RecordsNamed(*album, args.positional.mid(2));
    if (!selected)
        return ExitFailed;
    CliProgressSink progress;
    const PluginValues values = PluginValuesFor(*album, selected->isEmpty() ? 0 : selected->first(), *selected, 0, 0);
    const PluginOutcome outcome = LaunchPlugin(*album, PluginsFolder(), name, values, progress);
    for (const int index : outcome.imported.imported)
        PrintOut(album->Record(QStringLiteral("File"), index));
    const int saved = SaveAndFinish(*album);
    if (!outcome.run)
        return Fail(outcome.run.message);
    return ReportProblems(outcome.imported) && opening.Clean() ? saved : ExitFailed;
}

} // namespace

const CliGroup &PluginCommands()
{
    static const CliGroup group{
        "plugin",
        "plug-ins: list them, run one on an album",
        {
            {"list", "", "the plug-ins the windows list: name, type, menu caption", {JsonOption}, List},
            {"run", "ALBUM NAME [FILE...]", "runs a plug-in on the album with FILEs as its selection; an importer's files are imported",
             {}, Run},
        },
        "Plug-ins are looked for in Plugins beside orvana-cli, else in ../share/orvana/Plugins. Window handles are 0 here.",
    };
    return group;
}
