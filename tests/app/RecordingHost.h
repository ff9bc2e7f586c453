#pragma once

#include "Startup.h"

#include <QStringList>

// Start-up's requests written down in order instead of carried out.
class RecordingHost : public StartupHost {
public:
    int screenHeight = 1080;
    QStringList calls;
    QStringList messages;

    int PrimaryScreenHeight() const override { return screenHeight; }
    void Inform(const QString &text) override;
    void LoadMapServerTemplates() override { calls << QStringLiteral("LoadMapServerTemplates"); }
    void ShowUpdaterWindow() override { calls << QStringLiteral("ShowUpdaterWindow"); }
    void ShowSplash() override { calls << QStringLiteral("ShowSplash"); }
    void PumpEvents() override { calls << QStringLiteral("PumpEvents"); }
    void WaitMilliseconds(int milliseconds) override;
    void SplashNormalShow() override { calls << QStringLiteral("SplashNormalShow"); }
    void UnloadSplash() override { calls << QStringLiteral("UnloadSplash"); }
    void DiscoverPlugins() override { calls << QStringLiteral("DiscoverPlugins"); }
    void ShowMainWindow() override { calls << QStringLiteral("ShowMainWindow"); }
    void ShowWelcomeWindow() override { calls << QStringLiteral("ShowWelcomeWindow"); }
    void CameraImportToAlbum() override { calls << QStringLiteral("CameraImportToAlbum"); }
    void ShowGpsWindow() override { calls << QStringLiteral("ShowGpsWindow"); }
    void OpenDoc(const QString &path, bool askForFolder) override;
    void StartVersionUpdater() override { calls << QStringLiteral("StartVersionUpdater"); }
};
