#include "AppState.h"
#include "AutoPlay.h"
#include "Language.h"
#include "Paths.h"
#include "RecentDocs.h"
#include "Startup.h"
#include "Settings.h"
#include "TestEnvironment.h"

#include <QDir>
#include <QFile>
#include <QTest>

class StartupTest : public QObject {
    Q_OBJECT
private:
    QString workingFolder;
private slots:
    void init();
    void cleanup();
    void firstRunFile_data();
    void firstRunFile();
    void dispatch_data();
    void dispatch();
    void autoPlayHandler_data();
    void autoPlayHandler();
    void startUpNote();
    void settledByStart_data();
    void settledByStart();
};

namespace {

// Start-up's requests written down in order instead of carried out.
class RecordingHost : public StartupHost {
public:
    int screenHeight = 1080;
    QStringList calls;
    QStringList messages;

    int PrimaryScreenHeight() const override { return screenHeight; }
    void Inform(const QString &text) override { calls << QStringLiteral("Inform"); messages << text; }
    void LoadMapServerTemplates() override { calls << QStringLiteral("LoadMapServerTemplates"); }
    void ShowUpdaterWindow() override { calls << QStringLiteral("ShowUpdaterWindow"); }
    void ShowSplash() override { calls << QStringLiteral("ShowSplash"); }
    void PumpEvents() override { calls << QStringLiteral("PumpEvents"); }
    void WaitMilliseconds(int milliseconds) override { calls << QStringLiteral("Wait %1").arg(milliseconds); }
    void SplashNormalShow() override { calls << QStringLiteral("SplashNormalShow"); }
    void UnloadSplash() override { calls << QStringLiteral("UnloadSplash"); }
    void DiscoverPlugins() override { calls << QStringLiteral("DiscoverPlugins"); }
    void ShowMainWindow() override { calls << QStringLiteral("ShowMainWindow"); }
    void ShowWelcomeWindow() override { calls << QStringLiteral("ShowWelcomeWindow"); }
    void CameraImportToAlbum() override { calls << QStringLiteral("CameraImportToAlbum"); }
    void ShowGpsWindow() override { calls << QStringLiteral("ShowGpsWindow"); }
    void OpenDoc(const QString &path, bool ask) override { calls << QStringLiteral("OpenDoc [%1] %2").arg(path, ask ? "true" : "false"); }
    void StartVersionUpdater() override { calls << QStringLiteral("StartVersionUpdater"); }
};

const QByteArray EnglishFile =
    "[OrvDocument]\nLanguageName=English\n"
    "[System]\nMyPhotoAlbums=My Photo Albums\nScreenCheck=Too small\n"
    "[Autoplay]\nShowPicturesAction=Import pictures\nShowPicturesProvider=Orvana\n";
const QByteArray ChineseFile =
    "[OrvDocument]\nLanguageName=zh_CN\n[System]\nMyPhotoAlbums=\xE7\x9B\xB8\xE5\x86\x8C\n";
const QByteArray MislabelledFile = "[OrvDocument]\nLanguageName=English\n";

void UseTestLanguages(ScopedTestEnvironment &environment)
{
    environment.UseLanguageFiles({{QStringLiteral("English"), EnglishFile},
                                  {QStringLiteral("zh_CN"), ChineseFile},
                                  {QStringLiteral("zh_TW"), MislabelledFile}});
}

// An earlier start's settings file, holding the given lines under their sections.
void WriteSettings(ScopedTestEnvironment &environment, const QByteArray &content)
{
    QDir().mkpath(environment.UserData());
    WriteAll(environment.SettingsPath(), content);
}

const QStringList SplashOpening = {"ShowSplash", "PumpEvents", "Wait 200", "SplashNormalShow", "DiscoverPlugins"};
const QStringList SplashClosing = {"UnloadSplash", "PumpEvents"};

} // namespace

// A start changes the working folder and process-wide values: each test gets them back.
void StartupTest::init()
{
    workingFolder = QDir::currentPath();
}

void StartupTest::cleanup()
{
    QDir::setCurrent(workingFolder);
    AppState() = AppStateValues();
    RecentDocs().Clear();
}

void StartupTest::firstRunFile_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("library");
    QTest::newRow("English system") << "en_US" << "English" << "My Photo Albums";
    QTest::newRow("Simplified Chinese") << "zh_CN" << "zh_CN" << QString::fromUtf8("\xE7\x9B\xB8\xE5\x86\x8C");
    QTest::newRow("Traditional Chinese starts in English") << "zh_TW" << "English" << "My Photo Albums";
}

void StartupTest::firstRunFile()
{
    QFETCH(QString, locale);
    QFETCH(QString, language);
    QFETCH(QString, library);
    ScopedTestEnvironment environment;
    UseTestLanguages(environment);
    environment.Env().locale = locale;

    QVERIFY(SettleUserDataAndLanguage());
    const QByteArray expected =
        "[System]\r\nOrvanaRoot = " + environment.Env().install.toUtf8() + "\r\n\r\n"
        "[Language]\r\nCurrent = " + language.toUtf8() + "\r\n\r\n"
        "[Library]\r\nMainPath = " + environment.Env().documents.toUtf8() + "/" + library.toUtf8() + "\r\n\r\n"
        "[Layout]\r\nBGColor = FFFFFF\r\n\r\n"
        "[RecentDocs]\r\n\r\n[RecentFTP]\r\n\r\n[MobileReady]\r\n\r\n[PrintExpress]\r\n\r\n"
        "[GPS]\r\n\r\n[ScreenSaver]\r\n\r\n[SlideShow]\r\n\r\n[FlashMaker]\r\n\r\n";
    QCOMPARE(ReadAll(environment.SettingsPath()), expected);
    QCOMPARE(CurrentLanguage(), language);
    QVERIFY(!FolderExists(environment.Env().documents + u'/' + library)); // made later, by the library repair
    QVERIFY(!SettleUserDataAndLanguage());
}

// The windows a command line opens; a screen under 768 pixels opens none and leaves the settings
// as they were.
void StartupTest::dispatch_data()
{
    QTest::addColumn<QString>("commandLine");
    QTest::addColumn<QStringList>("windows");
    QTest::addColumn<int>("screenHeight");

    QTest::newRow("empty line") << "" << QStringList{"ShowMainWindow", "ShowWelcomeWindow"} << 768;
    QTest::newRow("camera import") << "/ImportPhotos /media/CARD" << QStringList{"ShowMainWindow", "ShowWelcomeWindow", "CameraImportToAlbum"} << 768;
    QTest::newRow("import switch without its blank is a path") << "/ImportPhotos" << QStringList{"ShowMainWindow", "OpenDoc [/ImportPhotos] false"} << 768;
    QTest::newRow("GPS window alone") << "/GPS" << QStringList{"ShowGpsWindow"} << 768;
    QTest::newRow("only four letters compared") << "/GPSLOGS please" << QStringList{"ShowGpsWindow"} << 768;
    QTest::newRow("switches keep their case") << "/gps" << QStringList{"ShowMainWindow", "OpenDoc [/gps] false"} << 768;
    QTest::newRow("quoted path") << "\"/home/me/My Album\"" << QStringList{"ShowMainWindow", "OpenDoc [/home/me/My Album] false"} << 768;
    QTest::newRow("unquoted path") << "/home/me/My Album" << QStringList{"ShowMainWindow", "OpenDoc [/home/me/My Album] false"} << 768;
    QTest::newRow("one quote only at the start") << "\"/home/me" << QStringList{"ShowMainWindow", "OpenDoc [\"/home/me] false"} << 768;
    QTest::newRow("two quotes") << "\"\"" << QStringList{"ShowMainWindow", "OpenDoc [] false"} << 768;
    QTest::newRow("a lone quote") << "\"" << QStringList{"ShowMainWindow", "OpenDoc [] false"} << 768;
    QTest::newRow("767 pixels") << "" << QStringList{"Inform"} << 767;
    QTest::newRow("no screen") << "/GPS" << QStringList{"Inform"} << 0;
}

void StartupTest::dispatch()
{
    QFETCH(QString, commandLine);
    QFETCH(QStringList, windows);
    QFETCH(int, screenHeight);
    ScopedTestEnvironment environment;
    UseTestLanguages(environment);
    WriteSettings(environment, "[System]\nLastCheckUpdate=46347\n");
    RecordingHost host;
    host.screenHeight = screenHeight;
    const bool refused = screenHeight < 768;
    QCOMPARE(RunStartup(host, commandLine), refused ? StartupOutcome::ScreenRefused : StartupOutcome::WindowsShown);
    QCOMPARE(host.calls, refused ? windows : QStringList{"LoadMapServerTemplates"} + SplashOpening + windows + SplashClosing);
    QCOMPARE(QFile::exists(AutoPlayEntryPath()), !refused);
    if (refused) {
        QCOMPARE(host.messages, QStringList{"Too small"});
        QCOMPARE(ReadAll(environment.SettingsPath()), QByteArray("[System]\nLastCheckUpdate=46347\n"));
    }
}

void StartupTest::autoPlayHandler_data()
{
    QTest::addColumn<QString>("exec");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("rewritten");
    const QString expected = QStringLiteral("\"%1/orvana\" /ImportPhotos %f");
    QTest::newRow("missing entry") << QString() << QString() << true;
    QTest::newRow("as expected") << expected << "Import pictures" << false;
    QTest::newRow("differs only in letter case") << expected.toUpper().replace(QStringLiteral("%F"), QStringLiteral("%f")) << "Import pictures" << false;
    QTest::newRow("another install folder") << "\"/opt/old/orvana\" /ImportPhotos %f" << "Import pictures" << true;
    QTest::newRow("written without a translation") << expected << "showpicturesaction" << true;
}

void StartupTest::autoPlayHandler()
{
    QFETCH(QString, exec);
    QFETCH(QString, name);
    QFETCH(bool, rewritten);
    ScopedTestEnvironment environment;
    UseTestLanguages(environment);
    SetCurrentLanguage(QStringLiteral("English"));
    exec = exec.arg(environment.Env().install);
    QDir().mkpath(environment.Env().applications);
    const QByteArray before = "[Desktop Entry]\nName=" + name.toUtf8() + "\nExec=" + exec.toUtf8() + "\n";
    if (!exec.isEmpty())
        WriteAll(AutoPlayEntryPath(), before);

    EnsureAutoPlayHandler();
    const QByteArray after = ReadAll(AutoPlayEntryPath());
    QCOMPARE(after != before, rewritten);
    if (rewritten) {
        QVERIFY(after.contains("\nExec=\"" + environment.Env().install.toUtf8() + "/orvana\" /ImportPhotos %f\n"));
        QVERIFY(after.contains("\nName=Import pictures\n"));
        QVERIFY(after.contains("\nMimeType=x-content/image-dcf;\n"));
        QVERIFY(after.contains("\nX-Orvana-Provider=Orvana\n"));
    }
}

void StartupTest::startUpNote()
{
    ScopedTestEnvironment environment;
    QByteArray withNote = EnglishFile;
    withNote.replace("[System]\n", "[System]\nStartUpNote=Welcome\\nback\n");
    environment.UseLanguageFiles({{QStringLiteral("English"), withNote}});
    RecordingHost host;
    RunStartup(host, QString());
    QCOMPARE(host.messages, QStringList{"Welcome\r\nback"});
    QCOMPARE(host.calls.indexOf(QStringLiteral("Inform")), host.calls.indexOf(QStringLiteral("UnloadSplash")) + 2);
}

// What a start leaves behind, from the settings an earlier start left. Expectations are
// "Section/Key=value" for the settings file, "state:name=value" for the process-wide values,
// "language=", "updater=" (whether the update check ran) and "cwd=". {root} and {documents}
// stand for the test's folders.
void StartupTest::settledByStart_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QByteArray>("settings"); // empty: the file is missing, the folder is not
    QTest::addColumn<QString>("commandLine");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("a start's defaults") << "en_US" << QByteArray("[Language]\nCurrent=English\n") << ""
        << QStringList{"System/CheckModifiedWhenOpenFolder=1", "Layout/FastMakeThumbnail=0", "System/SharedServer=",
                       "System/LastCheckUpdate=46348", "state:albumFormat=0", "state:folder=1", "state:album=0", "updater=0"};
    QTest::newRow("stored values, format 7 is 1") << "en_US"
        << QByteArray("[System]\nDefaultAlbumFormat=7\nCheckModifiedWhenOpenFolder=0\nCheckModifiedWhenOpenAlbum=1\n[Layout]\nSelectedExtraTab=3\nFastMakeThumbnail=1\n")
        << "" << QStringList{"state:albumFormat=1", "state:folder=0", "state:album=1", "state:tab=3", "Layout/FastMakeThumbnail=0"};
    QTest::newRow("numbers read leniently") << "en_US"
        << QByteArray("[System]\nDefaultAlbumFormat=abc\nCheckModifiedWhenOpenFolder= 2x\nCheckModifiedWhenOpenAlbum=no\n[Layout]\nSelectedExtraTab=2.5\n")
        << "" << QStringList{"state:albumFormat=0", "state:folder=1", "state:album=0", "state:tab=2", "System/CheckModifiedWhenOpenFolder=2x"};
    QTest::newRow("stored language") << "en_US" << QByteArray("[Language]\nCurrent=zh_CN\n") << "" << QStringList{"language=zh_CN"};
    QTest::newRow("empty language follows the system") << "zh_CN" << QByteArray("[Language]\nCurrent=\n") << "" << QStringList{"language=zh_CN", "Language/Current="};
    QTest::newRow("settings file deleted") << "zh_CN" << QByteArray() << "" << QStringList{"language=zh_CN"};
    QTest::newRow("missing language folder: English for good") << "en_US" << QByteArray("[Language]\nCurrent=fr\n") << "" << QStringList{"language=English", "Language/Current=English"};
    QTest::newRow("mislabelled language folder") << "zh_TW" << QByteArray("[Language]\nCurrent=zh_TW\n") << "" << QStringList{"language=English", "Language/Current=English"};
    QTest::newRow("Chinese system: regional sharing host") << "zh_TW" << QByteArray("[Language]\nCurrent=English\n") << "" << QStringList{"System/SharedServer=share.orvana.cn"};
    QTest::newRow("a chosen sharing host stays") << "zh_CN" << QByteArray("[System]\nSharedServer=mine.example\n") << "" << QStringList{"System/SharedServer=mine.example"};
    QTest::newRow("install folder repaired") << "en_US" << QByteArray("[System]\nOrvanaRoot=/opt/old\n") << "" << QStringList{"System/OrvanaRoot={root}/install"};
    QTest::newRow("library made with its parents") << "en_US" << QByteArray("[Library]\nMainPath={root}/new/library\n") << "/GPS" << QStringList{"Library/MainPath={root}/new/library", "cwd={root}/new/library"};
    QTest::newRow("library that cannot exist: Documents") << "en_US" << QByteArray("[Library]\nMainPath={root}/a-file/library\n") << "/GPS" << QStringList{"Library/MainPath={documents}", "cwd={documents}"};
    QTest::newRow("update check 7 days old") << "en_US" << QByteArray("[System]\nLastCheckUpdate=46341\n") << "" << QStringList{"updater=0", "System/LastCheckUpdate=46341"};
    QTest::newRow("update check 8 days old") << "en_US" << QByteArray("[System]\nLastCheckUpdate=46340\n") << "" << QStringList{"updater=1", "System/LastCheckUpdate=46340"};
    QTest::newRow("zero counts as never") << "en_US" << QByteArray("[System]\nLastCheckUpdate=0\n") << "" << QStringList{"updater=0", "System/LastCheckUpdate=46348"};
    QTest::newRow("update check also for the GPS window") << "en_US" << QByteArray("[System]\nLastCheckUpdate=1\n") << "/GPS" << QStringList{"updater=1"};
}

void StartupTest::settledByStart()
{
    QFETCH(QString, locale);
    QFETCH(QByteArray, settings);
    QFETCH(QString, commandLine);
    QFETCH(QStringList, expected);
    ScopedTestEnvironment environment;
    UseTestLanguages(environment);
    QFile::copy(QStringLiteral(ORVANA_SOURCE_DIR "/resources/Services.ini"), environment.Env().install + QStringLiteral("/Resources/Services.ini"));
    WriteAll(environment.Root() + QStringLiteral("/a-file"), "not a folder");
    environment.Env().locale = locale;
    QDir().mkpath(environment.UserData());
    if (!settings.isEmpty())
        WriteAll(environment.SettingsPath(), settings.replace("{root}", environment.Root().toUtf8()));
    AppState() = {9, false, true, 9};
    RecentDocs().Add(QStringLiteral("/left/over"));

    RecordingHost host;
    QCOMPARE(RunStartup(host, commandLine), StartupOutcome::WindowsShown);
    QCOMPARE(RecentDocs().Count(), 0);
    const AppStateValues &state = AppState();
    const QMap<QString, QString> actual = {
        {QStringLiteral("state:albumFormat"), QString::number(state.defaultAlbumFormat)},
        {QStringLiteral("state:folder"), QString::number(state.checkModifiedWhenOpenFolder)},
        {QStringLiteral("state:album"), QString::number(state.checkModifiedWhenOpenAlbum)},
        {QStringLiteral("state:tab"), QString::number(state.selectedExtraTab)},
        {QStringLiteral("language"), CurrentLanguage()},
        {QStringLiteral("updater"), QString::number(host.calls.contains(QStringLiteral("StartVersionUpdater")))},
        {QStringLiteral("cwd"), QDir::currentPath()},
    };
    for (QString expectation : expected) {
        expectation.replace(QStringLiteral("{root}"), environment.Root()).replace(QStringLiteral("{documents}"), environment.Env().documents);
        const QString name = expectation.section(u'=', 0, 0);
        const QString value = expectation.section(u'=', 1);
        const QString got = name.contains(u'/') ? ReadSetting(name.section(u'/', 0, 0), name.section(u'/', 1)) : actual.value(name);
        QVERIFY2(got == value, qPrintable(QStringLiteral("%1: %2 instead of %3").arg(name, got, value)));
    }
}

QTEST_GUILESS_MAIN(StartupTest)
#include "tst_Startup.moc"
