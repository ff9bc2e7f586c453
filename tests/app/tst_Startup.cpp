#include "AppState.h"
#include "AutoPlay.h"
#include "Language.h"
#include "Paths.h"
#include "RecentDocs.h"
#include "RecordingHost.h"
#include "Settings.h"
#include "TestEnvironment.h"

#include <QDir>
#include <QFile>
#include <QTest>

class StartupTest : public QObject {
    Q_OBJECT
private slots:
    void firstRunFile_data();
    void firstRunFile();
    void settingsAfterFirstStart();
    void languageChoice_data();
    void languageChoice();
    void screenCheck_data();
    void screenCheck();
    void folderRepairs();
    void normalisedSettings_data();
    void normalisedSettings();
    void sharedServerDefault_data();
    void sharedServerDefault();
    void dispatch_data();
    void dispatch();
    void autoPlayHandler_data();
    void autoPlayHandler();
    void updateCheck_data();
    void updateCheck();
    void startUpNote();
};

namespace {

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

QString Setting(const char *section, const char *key)
{
    return ReadSetting(QString::fromLatin1(section), QString::fromLatin1(key));
}

const QStringList SplashOpening = {"ShowSplash", "PumpEvents", "Wait 200", "SplashNormalShow", "DiscoverPlugins"};
const QStringList SplashClosing = {"UnloadSplash", "PumpEvents"};

} // namespace

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

// The whole first start on an English system, as the file ends up.
void StartupTest::settingsAfterFirstStart()
{
    ScopedTestEnvironment environment;
    UseTestLanguages(environment);
    RecordingHost host;
    QCOMPARE(RunStartup(host, QString()), StartupOutcome::WindowsShown);
    const QByteArray expected =
        "[System]\r\nOrvanaRoot = " + environment.Env().install.toUtf8() + "\r\n"
        "SharedServer=\r\nCheckModifiedWhenOpenFolder=1\r\nLastCheckUpdate=46348\r\n\r\n"
        "[Language]\r\nCurrent = English\r\n\r\n"
        "[Library]\r\nMainPath = " + environment.Env().documents.toUtf8() + "/My Photo Albums\r\n\r\n"
        "[Layout]\r\nBGColor = FFFFFF\r\nFastMakeThumbnail=0\r\n\r\n"
        "[RecentDocs]\r\n\r\n[RecentFTP]\r\n\r\n[MobileReady]\r\n\r\n[PrintExpress]\r\n\r\n"
        "[GPS]\r\n\r\n[ScreenSaver]\r\n\r\n[SlideShow]\r\n\r\n[FlashMaker]\r\n\r\n";
    QCOMPARE(ReadAll(environment.SettingsPath()), expected);
    QVERIFY(FolderExists(environment.Env().documents + QStringLiteral("/My Photo Albums")));
    QCOMPARE(QDir::currentPath(), environment.Env().documents + QStringLiteral("/My Photo Albums"));
}

void StartupTest::languageChoice_data()
{
    QTest::addColumn<QByteArray>("settings");
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("stored");
    QTest::newRow("stored choice") << QByteArray("[Language]\nCurrent=zh_CN\n") << "en_US" << "zh_CN" << "zh_CN";
    QTest::newRow("empty choice follows the system") << QByteArray("[Language]\nCurrent=\n") << "zh_CN" << "zh_CN" << "";
    QTest::newRow("missing folder: English for good") << QByteArray("[Language]\nCurrent=fr\n") << "en_US" << "English" << "English";
    QTest::newRow("mislabelled folder: English for good") << QByteArray("[Language]\nCurrent=zh_TW\n") << "zh_TW" << "English" << "English";
    QTest::newRow("settings file deleted") << QByteArray() << "zh_CN" << "zh_CN" << "";
}

void StartupTest::languageChoice()
{
    QFETCH(QByteArray, settings);
    QFETCH(QString, locale);
    QFETCH(QString, language);
    QFETCH(QString, stored);
    ScopedTestEnvironment environment;
    UseTestLanguages(environment);
    environment.Env().locale = locale;
    WriteSettings(environment, settings);
    if (settings.isEmpty())
        QFile::remove(environment.SettingsPath());

    QVERIFY(!SettleUserDataAndLanguage());
    QCOMPARE(CurrentLanguage(), language);
    QCOMPARE(Setting("Language", "Current"), stored);
}

void StartupTest::screenCheck_data()
{
    QTest::addColumn<int>("height");
    QTest::addColumn<bool>("refused");
    QTest::newRow("767 pixels") << 767 << true;
    QTest::newRow("no screen") << 0 << true;
    QTest::newRow("768 pixels") << 768 << false;
}

void StartupTest::screenCheck()
{
    QFETCH(int, height);
    QFETCH(bool, refused);
    ScopedTestEnvironment environment;
    UseTestLanguages(environment);
    WriteSettings(environment, "[System]\nOrvanaRoot=/elsewhere\n");
    RecordingHost host;
    host.screenHeight = height;

    const StartupOutcome outcome = RunStartup(host, QString());
    QCOMPARE(outcome == StartupOutcome::ScreenRefused, refused);
    if (refused) {
        QCOMPARE(host.calls, QStringList{"Inform"});
        QCOMPARE(host.messages, QStringList{"Too small"});
        QCOMPARE(ReadAll(environment.SettingsPath()), QByteArray("[System]\nOrvanaRoot=/elsewhere\n"));
    } else {
        QCOMPARE(Setting("System", "OrvanaRoot"), environment.Env().install);
    }
}

void StartupTest::folderRepairs()
{
    ScopedTestEnvironment environment;
    UseTestLanguages(environment);
    const QString blocker = environment.Root() + QStringLiteral("/a-file");
    WriteAll(blocker, "not a folder");
    const QString nested = environment.Root() + QStringLiteral("/new/library");
    const struct {
        QString stored;
        QString expected;
    } cases[] = {
        {nested, nested},                                                        // created with its parents
        {blocker + QStringLiteral("/library"), environment.Env().documents},     // cannot exist: Documents
        {QString(), environment.Env().documents},
    };
    for (const auto &c : cases) {
        WriteSettings(environment, "[Library]\nMainPath=" + c.stored.toUtf8() + "\n");
        RecordingHost host;
        RunStartup(host, QStringLiteral("/GPS"));
        QCOMPARE(Setting("Library", "MainPath"), c.expected);
        QVERIFY(FolderExists(c.expected));
        QCOMPARE(QDir::currentPath(), c.expected);
    }
}

void StartupTest::normalisedSettings_data()
{
    QTest::addColumn<QByteArray>("settings");
    QTest::addColumn<int>("albumFormat");
    QTest::addColumn<bool>("onOpenFolder");
    QTest::addColumn<bool>("onOpenAlbum");
    QTest::addColumn<int>("extraTab");
    QTest::addColumn<QString>("storedOnOpenFolder");

    QTest::newRow("defaults") << QByteArray() << 0 << true << false << 0 << "1";
    QTest::newRow("format 7 is 1, flags as stored")
        << QByteArray("[System]\nDefaultAlbumFormat=7\nCheckModifiedWhenOpenFolder=0\nCheckModifiedWhenOpenAlbum=1\n"
                      "[Layout]\nSelectedExtraTab=3\nFastMakeThumbnail=1\n")
        << 1 << false << true << 3 << "0";
    QTest::newRow("lenient numbers")
        << QByteArray("[System]\nDefaultAlbumFormat=abc\nCheckModifiedWhenOpenFolder= 2x\nCheckModifiedWhenOpenAlbum=no\n"
                      "[Layout]\nSelectedExtraTab=2.5\n")
        << 0 << true << false << 2 << "2x";
}

void StartupTest::normalisedSettings()
{
    QFETCH(QByteArray, settings);
    QFETCH(int, albumFormat);
    QFETCH(bool, onOpenFolder);
    QFETCH(bool, onOpenAlbum);
    QFETCH(int, extraTab);
    QFETCH(QString, storedOnOpenFolder);
    ScopedTestEnvironment environment;
    UseTestLanguages(environment);
    WriteSettings(environment, settings);
    AppState() = {9, false, false, 9};
    RecentDocs().Add(QStringLiteral("/left/over"));

    RecordingHost host;
    RunStartup(host, QString());
    QCOMPARE(AppState().defaultAlbumFormat, albumFormat);
    QCOMPARE(AppState().checkModifiedWhenOpenFolder, onOpenFolder);
    QCOMPARE(AppState().checkModifiedWhenOpenAlbum, onOpenAlbum);
    QCOMPARE(static_cast<int>(AppState().selectedExtraTab), extraTab);
    QCOMPARE(Setting("System", "CheckModifiedWhenOpenFolder"), storedOnOpenFolder);
    QCOMPARE(Setting("Layout", "FastMakeThumbnail"), QStringLiteral("0"));
    QCOMPARE(RecentDocs().Count(), 0);
}

void StartupTest::sharedServerDefault_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QByteArray>("settings");
    QTest::addColumn<QString>("expected");
    QTest::newRow("English system: present and empty") << "en_US" << QByteArray() << "";
    QTest::newRow("Chinese system: regional host") << "zh_TW" << QByteArray() << "share.orvana.cn";
    QTest::newRow("a chosen host stays") << "zh_CN" << QByteArray("[System]\nSharedServer=mine.example\n") << "mine.example";
}

void StartupTest::sharedServerDefault()
{
    QFETCH(QString, locale);
    QFETCH(QByteArray, settings);
    QFETCH(QString, expected);
    ScopedTestEnvironment environment; // the shipped resources, with their service hosts
    environment.Env().locale = locale;
    WriteSettings(environment, settings);
    RecordingHost host;
    RunStartup(host, QString());
    QCOMPARE(Setting("System", "SharedServer"), expected);
    QVERIFY(ReadAll(environment.SettingsPath()).contains("SharedServer="));
}

void StartupTest::dispatch_data()
{
    QTest::addColumn<QString>("commandLine");
    QTest::addColumn<QStringList>("windows");

    QTest::newRow("empty line") << "" << QStringList{"ShowMainWindow", "ShowWelcomeWindow"};
    QTest::newRow("camera import") << "/ImportPhotos /media/CARD"
                                   << QStringList{"ShowMainWindow", "ShowWelcomeWindow", "CameraImportToAlbum"};
    QTest::newRow("import switch without its blank is a path") << "/ImportPhotos" << QStringList{"ShowMainWindow", "OpenDoc [/ImportPhotos] false"};
    QTest::newRow("GPS window alone") << "/GPS" << QStringList{"ShowGpsWindow"};
    QTest::newRow("only four letters compared") << "/GPSLOGS please" << QStringList{"ShowGpsWindow"};
    QTest::newRow("switches keep their case") << "/gps" << QStringList{"ShowMainWindow", "OpenDoc [/gps] false"};
    QTest::newRow("quoted path") << "\"/home/me/My Album\"" << QStringList{"ShowMainWindow", "OpenDoc [/home/me/My Album] false"};
    QTest::newRow("unquoted path") << "/home/me/My Album" << QStringList{"ShowMainWindow", "OpenDoc [/home/me/My Album] false"};
    QTest::newRow("one quote only at the start") << "\"/home/me" << QStringList{"ShowMainWindow", "OpenDoc [\"/home/me] false"};
    QTest::newRow("two quotes") << "\"\"" << QStringList{"ShowMainWindow", "OpenDoc [] false"};
    QTest::newRow("a lone quote") << "\"" << QStringList{"ShowMainWindow", "OpenDoc [] false"};
}

void StartupTest::dispatch()
{
    QFETCH(QString, commandLine);
    QFETCH(QStringList, windows);
    ScopedTestEnvironment environment;
    UseTestLanguages(environment);
    WriteSettings(environment, "[System]\nLastCheckUpdate=46347\n");
    RecordingHost host;
    QCOMPARE(RunStartup(host, commandLine), StartupOutcome::WindowsShown);
    QCOMPARE(host.calls, QStringList{"LoadMapServerTemplates"} + SplashOpening + windows + SplashClosing);
    QVERIFY(QFile::exists(AutoPlayEntryPath()));
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

void StartupTest::updateCheck_data()
{
    QTest::addColumn<QByteArray>("settings");
    QTest::addColumn<bool>("checks");
    QTest::addColumn<QString>("stored");
    QTest::newRow("first time: today is written") << QByteArray() << false << "46348";
    QTest::newRow("zero counts as never") << QByteArray("[System]\nLastCheckUpdate=0\n") << false << "46348";
    QTest::newRow("7 days old") << QByteArray("[System]\nLastCheckUpdate=46341\n") << false << "46341";
    QTest::newRow("8 days old") << QByteArray("[System]\nLastCheckUpdate=46340\n") << true << "46340";
    QTest::newRow("also with the GPS window alone") << QByteArray("[System]\nLastCheckUpdate=1\n") << true << "1";
}

void StartupTest::updateCheck()
{
    QFETCH(QByteArray, settings);
    QFETCH(bool, checks);
    QFETCH(QString, stored);
    ScopedTestEnvironment environment;
    UseTestLanguages(environment);
    WriteSettings(environment, settings);
    RecordingHost host;
    RunStartup(host, QStringLiteral("/GPS"));
    QCOMPARE(host.calls.contains(QStringLiteral("StartVersionUpdater")), checks);
    QCOMPARE(Setting("System", "LastCheckUpdate"), stored);

    RecordingHost updater;
    QCOMPARE(RunStartup(updater, QStringLiteral("/VersionUpdater")), StartupOutcome::UpdaterOnly);
    QCOMPARE(updater.calls, (QStringList{"LoadMapServerTemplates", "ShowUpdaterWindow"}));
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

QTEST_GUILESS_MAIN(StartupTest)
#include "tst_Startup.moc"
