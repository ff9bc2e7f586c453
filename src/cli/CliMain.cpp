#include "cli/CliGroups.h"
#include "cli/CliManual.h"
#include "cli/CliOutput.h"

#include "app/Version.h"

#include <QCoreApplication>

namespace {

using GroupTable = const CliGroup &(*)();

constexpr GroupTable Groups[] = {AlbumCommands, ConvertCommand, GpsCommands,   SettingsCommands, TextCommand,
                                 FtpCommands,   HttpCommands,   ImageCommands, LibraryCommands,  PluginCommands,
                                 PublishCommands};

QString TopLevelHelp()
{
    QString help = QStringLiteral("usage: orvana-cli [--version | --help] GROUP VERB ARGS...\n\n%1\n\n")
                       .arg(QString::fromUtf8(CliDescription));
    for (const GroupTable group : Groups)
        help += QStringLiteral("  %1  %2\n").arg(GroupSynopsis(group()), -28).arg(QString::fromUtf8(group().summary));
    help += QStringLiteral(
        "\n'orvana-cli GROUP --help' tells more. Exit status: 0 done, 1 failed, 2 bad usage.");
    return help;
}

CliGroupList AllGroups()
{
    CliGroupList groups;
    for (const GroupTable group : Groups)
        groups.push_back(&group());
    return groups;
}

// Not in the help: the build prints the manual pages and the completion script with these.
int PrintDocumentation(const QString &option, const QString &page)
{
    const QString text = option == QLatin1String("--man") ? ManPage(page, AllGroups()) : BashCompletion(AllGroups());
    if (text.isEmpty())
        return UsageError(QStringLiteral("no manual page \"%1\"").arg(page), QStringLiteral("orvana-cli --man orvana|orvana-cli"));
    PrintOut(text.chopped(1));
    return ExitDone;
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
    if (first == QLatin1String("--man") || first == QLatin1String("--bash-completion"))
        return PrintDocumentation(first, arguments.value(1));
    for (const GroupTable group : Groups) {
        if (first == QLatin1String(group().name))
            return RunGroup(group(), arguments.mid(1));
    }
    return UsageError(first.isEmpty() ? QStringLiteral("no command given")
                                      : QStringLiteral("unknown command \"%1\"").arg(first),
                      QStringLiteral("orvana-cli --help"));
}
