#pragma once

#include "app/Startup.h"

#include <QPointer>
#include <memory>

class MainWindow;
class SplashWindow;

// Start-up's requests carried out with real windows.
class GuiStartupHost : public StartupHost {
public:
    GuiStartupHost();
    ~GuiStartupHost() override;

    int PrimaryScreenHeight() const override;
    void Inform(const QString &text) override;
    void LoadMapServerTemplates() override;
    void ShowUpdaterWindow() override;
    void ShowSplash() override;
    void PumpEvents() override;
    void WaitMilliseconds(int milliseconds) override;
    void SplashNormalShow() override;
    void UnloadSplash() override;
    void DiscoverPlugins() override;
    void ShowMainWindow() override;
    void ShowWelcomeWindow() override;
    void CameraImportToAlbum(const QString &device) override;
    void ShowGpsWindow() override;
    void OpenDoc(const QString &path, bool askForFolder) override;
    void NewAlbum() override;
    void ImportPhotos(const QStringList &photos) override;
    void StartVersionUpdater() override;

    bool HasOpenWindow() const;
    MainWindow *Main() const { return main; }

private:
    std::unique_ptr<SplashWindow> splash;
    QPointer<MainWindow> main;
};
