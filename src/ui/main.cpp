#include "ui/GuiStartupHost.h"
#include "app/Startup.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Orvana"));
    QApplication::setOrganizationName(QStringLiteral("Orvana"));

    GuiStartupHost host;
    const StartupOutcome outcome = RunStartup(host, CommandLineTail(QCoreApplication::arguments()));
    if (outcome == StartupOutcome::ScreenRefused || !host.HasOpenWindow())
        return outcome == StartupOutcome::ScreenRefused ? 1 : 0;
    return QApplication::exec();
}
