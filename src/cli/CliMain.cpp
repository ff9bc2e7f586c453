#include "CliOutput.h"

#include "Version.h"

#include <QCoreApplication>

namespace {

constexpr CliGroup Groups[] = {
    {"album", "VERB ALBUM ...                 photo albums: create, info, list, arrange, ...", RunAlbum},
    {"convert", "FOLDER                        turn a plain folder of photos into an album", RunConvert},
    {"gps", "VERB ...                          GPS tracks and waypoints, geotagging, time shifts, KML", RunGps},
    {"settings", "get|set SECTION KEY [VALUE]   one value of Orvana.ini", RunSettings},
    {"text", "KEY SECTION                   localised text in the current language", RunText},
    {"ftp", "ls|get|put|mkdir|rmdir|rm|rename ftp://USER@HOST[:PORT]/PATH [LOCAL|NEWNAME]", RunFtp},
    {"http", "get http://HOST[:PORT]/PATH OUT    one resource into a file", RunHttp},
    {"image", "tags|thumbnail|rotate|edit ...  one photo file's tags, thumbnail and edits", RunImage},
};

QString TopLevelHelp()
{
    QString help = QStringLiteral(
        "usage: orvana-cli [--version | --help] GROUP VERB ARGS...\n\n"
        "Orvana's photo albums, settings and tools without a window.\n\n");
    for (const CliGroup &group : Groups)
        help += QStringLiteral("  %1 %2\n").arg(QLatin1String(group.name), QLatin1String(group.summary));
    help += QStringLiteral(
        "\n'orvana-cli GROUP --help' tells more. Exit status: 0 done, 1 failed, 2 bad usage.");
    return help;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("orvana-cli"));
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    const QString first = arguments.value(0);

    if (first == QLatin1String("--version")) {
        PrintOut(QStringLiteral("orvana-cli %1").arg(QLatin1String(OrvanaVersion)));
        return ExitDone;
    }
    if (first == QLatin1String("--help") || first == QLatin1String("-h")) {
        PrintOut(TopLevelHelp());
        return ExitDone;
    }
    for (const CliGroup &group : Groups) {
        if (first == QLatin1String(group.name))
            return group.run(arguments.mid(1));
    }
    return UsageError(first.isEmpty() ? QStringLiteral("no command given")
                                      : QStringLiteral("unknown command \"%1\"").arg(first),
                      QStringLiteral("orvana-cli --help"));
}
