#include "ui/GuiStartupHost.h"
#include "ui/main/MainWindow.h"
#include "app/Startup.h"

#include <QAction>
#include <QApplication>
#include <QTimer>

#include <unistd.h>

namespace {

// Runs the commands in order; one not enabled yet (an album command while the album opens) is
// waited for, up to half a minute.
void RunWhenEnabled(MainWindow *main, QStringList names, int triesLeft)
{
    while (!names.isEmpty()) {
        QAction *action = main->Command(names.first());
        if (action && !action->isEnabled()) {
            if (triesLeft > 0)
                QTimer::singleShot(100, main, [main, names, triesLeft] { RunWhenEnabled(main, names, triesLeft - 1); });
            return;
        }
        names.removeFirst();
        if (action)
            action->trigger();
    }
}

// ORVANA_RUN_COMMANDS="mnuOptions mnuHelpAbout": commands of the menus run once the main window is
// up, so scripts that document the program (scripts/screenshots) reach a window without a user.
void RunCommandsFromEnvironment(MainWindow *main, const QStringList &names)
{
    if (!main || names.isEmpty())
        return;
    QTimer::singleShot(0, main, [main, names] { RunWhenEnabled(main, names, 300); });
}

} // namespace

int main(int argc, char *argv[])
{
    // The map's browser process refuses to run as root inside its sandbox; root (containers, test
    // machines) gets it without one. A normal user keeps the sandbox.
    if (geteuid() == 0 && !qEnvironmentVariableIsSet("QTWEBENGINE_CHROMIUM_FLAGS"))
        qputenv("QTWEBENGINE_CHROMIUM_FLAGS", "--no-sandbox");
    // The embedded browser shares the program's GL contexts; this must be said before the
    // application exists.
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
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
