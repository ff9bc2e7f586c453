#include "app/Startup.h"

#include "app/AppEnvironment.h"
#include "app/AppState.h"
#include "app/AutoPlay.h"
#include "app/DayNumber.h"
#include "app/Language.h"
#include "app/Paths.h"
#include "app/ProfileFile.h"
#include "app/RecentDocs.h"
#include "app/Settings.h"
#include "app/UpdateCheck.h"

#include <QDir>
#include <QFileInfo>

namespace {

const QString SystemSection = QStringLiteral("System");
const QString English = QStringLiteral("English");

// Another copy of the program starting at the same moment may have written it first.
void WriteFirstRunFile(const QString &language)
{
    (void)ProfileFile::CreateIfMissing(SettingsFilePath(), FirstRunSettings(AppPath(), language, DefaultLibraryPath()));
}

// The maker's sharing server for Chinese-speaking users, a value of the installed configuration.
QString RegionalSharedServer()
{
    return ProfileFile::ReadString(ResourcesFolder() + QStringLiteral("/Services.ini"),
                                   QStringLiteral("SharedServer"), QStringLiteral("Regional"));
}

void RepairInstallFolder()
{
    if (ReadSetting(SystemSection, QStringLiteral("OrvanaRoot")) != AppPath())
        WriteSetting(SystemSection, QStringLiteral("OrvanaRoot"), AppPath());
}

void RepairLibraryFolder()
{
    QString library = GetLibraryPath();
    if (!FolderExists(library)) {
        CreateFolderPath(library);
        if (!FolderExists(library)) {
            library = GetDocumentsFolder();
            WriteSetting(QStringLiteral("Library"), QStringLiteral("MainPath"), library);
        }
    }
    QDir::setCurrent(library);
}

void DefaultSharedServer()
{
    if (!ReadSetting(SystemSection, QStringLiteral("SharedServer")).isEmpty())
        return;
    const QString language = GetSystemLanguage();
    const bool chinese = language == QLatin1String("zh_CN") || language == QLatin1String("zh_TW");
    WriteSetting(SystemSection, QStringLiteral("SharedServer"), chinese ? RegionalSharedServer() : QString());
}

void SettleProcessSettings()
{
    const QString onOpenFolder = QStringLiteral("CheckModifiedWhenOpenFolder");
    if (ReadSetting(SystemSection, onOpenFolder).isEmpty())
        WriteSetting(SystemSection, onOpenFolder, QStringLiteral("1"));
    ReadAppStateFromSettings();
    // Every start resets the quick-thumbnail mode.
    WriteSetting(QStringLiteral("Layout"), QStringLiteral("FastMakeThumbnail"), QStringLiteral("0"));
    RecentDocs().Clear();
}

// A path in double quotes loses them. A lone double quote would need a negative length; it is
// taken as the empty path, like a pair of quotes.
QString DocumentPathFrom(const QString &commandLine)
{
    if (commandLine == QLatin1String("\""))
        return {};
    if (commandLine.startsWith(u'"') && commandLine.endsWith(u'"'))
        return commandLine.mid(1, commandLine.size() - 2);
    return commandLine;
}

// Every album, folder or package, keeps its data folder by this name (the album library's own
// rule; start-up sits below that library and needs only the name).
QString AlbumDataFolderOf(const QString &folder)
{
    return folder + QStringLiteral("/studio.data");
}

// A file manager's "Open with" names a photo; it stands for the album folder holding it.
QString DocumentFolderOf(const QString &path)
{
    const QFileInfo named(path);
    return named.isFile() ? named.absolutePath() : path;
}

void Dispatch(StartupHost &host, const QString &commandLine)
{
    if (commandLine.left(14) == QLatin1String("/ImportPhotos ")) {
        host.ShowMainWindow();
        host.ShowWelcomeWindow();
        host.CameraImportToAlbum(DocumentPathFrom(commandLine.mid(14)));
    } else if (commandLine.left(4) == QLatin1String("/GPS")) {
        host.ShowGpsWindow();
    } else if (commandLine == QLatin1String("/NewAlbum")) {
        // The desktop entry's "New album" action.
        host.ShowMainWindow();
        host.NewAlbum();
    } else if (!commandLine.isEmpty()) {
        host.ShowMainWindow();
        const QString path = DocumentPathFrom(commandLine);
        const QString folder = DocumentFolderOf(path);
        if (folder != path && !FolderExists(AlbumDataFolderOf(folder))) {
            host.ShowWelcomeWindow();
            host.ImportPhotos({QFileInfo(path).absoluteFilePath()});
        } else {
            host.OpenDoc(folder, false);
        }
    } else {
        host.ShowMainWindow();
        host.ShowWelcomeWindow();
    }
}

void CheckForUpdates(StartupHost &host)
{
    const QString key = QStringLiteral("LastCheckUpdate");
    const qint64 lastCheck = SettingInteger(ReadSetting(SystemSection, key));
    const qint64 today = DayNumber(Environment().Today());
    if (lastCheck == 0)
        WriteSetting(SystemSection, key, QString::number(today));
    else if (today - lastCheck >= UpdateCheckIntervalDays && !UpdatePage().isEmpty())
        host.StartVersionUpdater();
}

} // namespace

QString CommandLineTail(const QStringList &arguments)
{
    return arguments.mid(1).join(u' ');
}

QString DefaultLibraryPath()
{
    return GetDocumentsFolder() + u'/' + GetLocalizedString(QStringLiteral("MyPhotoAlbums"), QStringLiteral("System"));
}

QByteArray FirstRunSettings(const QString &appPath, const QString &language, const QString &libraryPath)
{
    const QString lines[] = {
        QStringLiteral("[System]"), QStringLiteral("OrvanaRoot = ") + appPath, QString(),
        QStringLiteral("[Language]"), QStringLiteral("Current = ") + language, QString(),
        QStringLiteral("[Library]"), QStringLiteral("MainPath = ") + libraryPath, QString(),
        QStringLiteral("[Layout]"), QStringLiteral("BGColor = FFFFFF"), QString(),
        QStringLiteral("[RecentDocs]"), QString(),
        QStringLiteral("[RecentFTP]"), QString(),
        QStringLiteral("[MobileReady]"), QString(),
        QStringLiteral("[PrintExpress]"), QString(),
        QStringLiteral("[GPS]"), QString(),
        QStringLiteral("[ScreenSaver]"), QString(),
        QStringLiteral("[SlideShow]"), QString(),
        QStringLiteral("[FlashMaker]"), QString(),
    };
    QByteArray content;
    for (const QString &line : lines)
        content += line.toUtf8() + "\r\n";
    return content;
}

bool SettleUserDataAndLanguage()
{
    const bool firstRun = !FolderExists(GetUserDataFolder());
    // A Traditional-Chinese system starts in English on the very first run only.
    const QString firstLanguage = GetSystemLanguage() == QLatin1String("zh_CN") ? QStringLiteral("zh_CN") : English;
    if (!firstRun) {
        // Another process may have made the folder a moment ago and not written the file yet:
        // whichever comes first writes it, before any setting of this run goes in.
        WriteFirstRunFile(firstLanguage);
        SetCurrentLanguage(ReadSetting(QStringLiteral("Language"), QStringLiteral("Current")));
        if (CurrentLanguage().isEmpty())
            SetCurrentLanguage(GetSystemLanguage());
    } else {
        SetCurrentLanguage(firstLanguage);
        CreateFolderPath(GetUserDataFolder());
        WriteFirstRunFile(CurrentLanguage());
    }
    // A language whose file is missing or names another language is broken: English for good.
    if (GetLocalizedString(QStringLiteral("LanguageName"), QStringLiteral("OrvDocument")) != CurrentLanguage()) {
        SetCurrentLanguage(English);
        WriteSetting(QStringLiteral("Language"), QStringLiteral("Current"), English);
    }
    return firstRun;
}

StartupOutcome RunStartup(StartupHost &host, const QString &commandLine)
{
    SettleUserDataAndLanguage();
    if (host.PrimaryScreenHeight() < MinimumScreenHeight) {
        host.Inform(GetLocalizedString(QStringLiteral("ScreenCheck"), QStringLiteral("System")));
        return StartupOutcome::ScreenRefused;
    }
    RepairInstallFolder();
    RepairLibraryFolder();
    DefaultSharedServer();
    host.LoadMapServerTemplates();
    SettleProcessSettings();

    if (commandLine == QLatin1String("/VersionUpdater")) {
        host.ShowUpdaterWindow();
        return StartupOutcome::UpdaterOnly;
    }
    host.ShowSplash();
    host.PumpEvents();
    host.WaitMilliseconds(200);
    host.SplashNormalShow();
    host.DiscoverPlugins();
    Dispatch(host, commandLine);
    EnsureAutoPlayHandler();
    host.UnloadSplash();
    host.PumpEvents();

    // A language file may define a note to show at every start; most do not.
    const QString note = GetLocalizedString(QStringLiteral("StartUpNote"), QStringLiteral("System"));
    if (note != QLatin1String("StartUpNote"))
        host.Inform(note);
    CheckForUpdates(host);
    return StartupOutcome::WindowsShown;
}
