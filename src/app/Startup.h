#pragma once

#include <QString>
#include <QStringList>

// What start-up asks of the windows. The program's windows implement it; tests record the calls.
class StartupHost {
public:
    virtual ~StartupHost() = default;

    // Height of the primary screen in device-independent pixels (96 per inch).
    virtual int PrimaryScreenHeight() const = 0;
    virtual void Inform(const QString &text) = 0;
    virtual void LoadMapServerTemplates() = 0;
    virtual void ShowUpdaterWindow() = 0;
    virtual void ShowSplash() = 0;
    virtual void PumpEvents() = 0;
    virtual void WaitMilliseconds(int milliseconds) = 0; // pumping events meanwhile
    virtual void SplashNormalShow() = 0;
    virtual void UnloadSplash() = 0;
    virtual void DiscoverPlugins() = 0;
    virtual void ShowMainWindow() = 0;
    virtual void ShowWelcomeWindow() = 0;
    // The camera-import window for the card named after "/ImportPhotos " (quotes dropped).
    virtual void CameraImportToAlbum(const QString &device) = 0;
    virtual void ShowGpsWindow() = 0;
    virtual void OpenDoc(const QString &path, bool askForFolder) = 0;
    // The new-album dialog, as File > New asks it.
    virtual void NewAlbum() = 0;
    // Photos named from outside any album ("Open with Orvana"): brought into an album the user picks.
    virtual void ImportPhotos(const QStringList &photos) = 0;
    // Starts the updater in a process of its own, without waiting.
    virtual void StartVersionUpdater() = 0;
};

enum class StartupOutcome {
    ScreenRefused, // the screen is too small: the process ends at once
    UpdaterOnly,   // "/VersionUpdater": only the updater window runs
    WindowsShown,
};

inline constexpr int MinimumScreenHeight = 768;
inline constexpr int UpdateCheckIntervalDays = 8;

// The whole command line after the executable's name, as one string.
QString CommandLineTail(const QStringList &arguments);

// Finds or creates the user-data folder (writing the first-run settings file) and settles the
// current language, repairing a broken choice. Returns true on the first run. orvana-cli calls
// this too, so that it and the windows share one settings file from the very first use.
bool SettleUserDataAndLanguage();

// The first-run Orvana.ini, CR LF line ends.
QByteArray FirstRunSettings(const QString &appPath, const QString &language, const QString &libraryPath);

QString DefaultLibraryPath();

// The entry procedure, from the first-run check to the update check.
StartupOutcome RunStartup(StartupHost &host, const QString &commandLine);
