#include "ui/GuiStartupHost.h"

#include "ui/main/MainWindow.h"
#include "app/Paths.h"
#include "app/Plugins.h"
#include "ui/SplashWindow.h"
#include "ui/map/MapService.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QProcess>
#include <QScreen>

GuiStartupHost::GuiStartupHost() = default;
GuiStartupHost::~GuiStartupHost() = default;

int GuiStartupHost::PrimaryScreenHeight() const
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen ? screen->geometry().height() : 0;
}

void GuiStartupHost::Inform(const QString &text)
{
    QMessageBox::information(main, QStringLiteral("Orvana"), text);
}

void GuiStartupHost::LoadMapServerTemplates()
{
    MapService::Instance().LoadTemplates();
}

// "/VersionUpdater": the page, in the browser; with none named there is nothing to show.
void GuiStartupHost::ShowUpdaterWindow()
{
    OpenUpdatePage();
}

void GuiStartupHost::DiscoverPlugins()
{
    LoadPlugins();
}
void GuiStartupHost::CameraImportToAlbum(const QString &device)
{
    if (main)
        main->CameraImportToAlbum(device);
}
void GuiStartupHost::ShowGpsWindow()
{
    if (main)
        main->ShowGpsWindow();
}

void GuiStartupHost::ShowWelcomeWindow()
{
    if (main)
        main->ShowWelcomeWindow();
}

void GuiStartupHost::OpenDoc(const QString &path, bool askForFolder)
{
    if (main)
        main->OpenDoc(path, askForFolder);
}

void GuiStartupHost::ImportPhotos(const QStringList &photos)
{
    if (main)
        main->ImportPhotosIntoAlbum(photos);
}

void GuiStartupHost::NewAlbum()
{
    if (main)
        main->mnuFileNew_Click();
}

void GuiStartupHost::ShowSplash()
{
    splash = std::make_unique<SplashWindow>();
    splash->show();
}

void GuiStartupHost::PumpEvents()
{
    QApplication::processEvents();
}

void GuiStartupHost::WaitMilliseconds(int milliseconds)
{
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < milliseconds)
        QApplication::processEvents(QEventLoop::AllEvents, milliseconds - static_cast<int>(clock.elapsed()));
}

void GuiStartupHost::SplashNormalShow()
{
    if (splash)
        splash->NormalShow();
}

void GuiStartupHost::UnloadSplash()
{
    splash.reset();
}

void GuiStartupHost::ShowMainWindow()
{
    if (!main) {
        main = new MainWindow;
        main->setAttribute(Qt::WA_DeleteOnClose);
    }
    main->show();
}

void GuiStartupHost::StartVersionUpdater()
{
    QProcess::startDetached(AppPath() + QStringLiteral("/orvana"), {QStringLiteral("/VersionUpdater")});
}

bool GuiStartupHost::HasOpenWindow() const
{
    return !main.isNull();
}
