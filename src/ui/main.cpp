#include "ui/GuiStartupHost.h"
#include "ui/main/MainWindow.h"
#include "app/Startup.h"

#include <QAction>
#include <QApplication>
#include <QTimer>

namespace {

// ORVANA_RUN_COMMANDS="mnuOptions mnuHelpAbout": commands of the menus run once the main window is
// up, so scripts that document the program (scripts/screenshots) reach a window without a user.
// Album commands wait, up to ten seconds, for the album named on the command line to open.
void RunCommandsFromEnvironment(MainWindow *main, QStringList names, int triesLeft = 50)
{
    if (!main || names.isEmpty())
        return;
    QTimer::singleShot(triesLeft == 50 ? 0 : 200, main, [main, names, triesLeft] {
        QStringList waiting;
        for (const QString &name : names) {
            if (QAction *action = main->Command(name); action && action->isEnabled() && action->isVisible() && waiting.isEmpty())
                action->trigger();
            else
                waiting << name;
        }
        if (triesLeft > 0)
            RunCommandsFromEnvironment(main, waiting, triesLeft - 1);
    });
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Orvana"));
    QApplication::setOrganizationName(QStringLiteral("Orvana"));

    GuiStartupHost host;
    const StartupOutcome outcome = RunStartup(host, CommandLineTail(QCoreApplication::arguments()));
    if (outcome == StartupOutcome::ScreenRefused || !host.HasOpenWindow())
        return outcome == StartupOutcome::ScreenRefused ? 1 : 0;
    RunCommandsFromEnvironment(host.Main(), qEnvironmentVariable("ORVANA_RUN_COMMANDS").split(u' ', Qt::SkipEmptyParts));
    return QApplication::exec();
}
