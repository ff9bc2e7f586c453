#include "app/AppState.h"
#include "app/AutoPlay.h"
#include "app/Language.h"
#include "app/Paths.h"
#include "app/RecentDocs.h"
#include "app/Startup.h"
#include "app/Settings.h"
#include "TestEnvironment.h"
#include "app/UpdateCheck.h"

#include <QDir>
#include <QFile>
#include <QTest>

// What a start settles and opens, the language every text comes from, and the recent-documents
// list the start empties.
class StartupTest : public QObject {
    Q_OBJECT
private:
    QString workingFolder;
private slots:
    void init();
    void cleanup();
    void dispatch_data();
    void dispatch();
    void autoPlayHandler_data();
    void autoPlayHandler();
    void startUpNote();
    void settledByStart_data();
    void settledByStart();
    void lookups_data();
    void lookups();
    void shippedLanguagesNameThemselves();
    void updatePageAddress_data();
    void updatePageAddress();
    void recentDocsAdding_data();
    void recentDocsAdding();
    void recentDocsSavingAndLoading();
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
#define RECORDED(call) void call() override { calls << QStringLiteral(#call); }
    RECORDED(LoadMapServerTemplates) RECORDED(ShowUpdaterWindow) RECORDED(ShowSplash) RECORDED(PumpEvents) RECORDED(SplashNormalShow)
    RECORDED(UnloadSplash) RECORDED(DiscoverPlugins) RECORDED(ShowMainWindow) RECORDED(ShowWelcomeWindow)
    RECORDED(ShowGpsWindow) RECORDED(StartVersionUpdater) RECORDED(NewAlbum)
#undef RECORDED
    void ImportPhotos(const QStringList &photos) override { calls << QStringLiteral("ImportPhotos [%1]").arg(photos.join(u',')); }
    void WaitMilliseconds(int milliseconds) override { calls << QStringLiteral("Wait %1").arg(milliseconds); }
    void CameraImportToAlbum(const QString &device) override { calls << QStringLiteral("CameraImportToAlbum [%1]").arg(device); }
    void OpenDoc(const QString &path, bool ask) override { calls << QStringLiteral("OpenDoc [%1] %2").arg(path, ask ? "true" : "false"); }
};

const QByteArray EnglishFile =
    "[OrvDocument]\nLanguageName=English\n"
    "[Form]\nButtonOK=OK\nTwoLines=one\\ntwo\nPair=one\\n\\rtwo\nReturn=one\\rtwo\nMixed=a\\r\\nb\n"
    "[System]\nMyPhotoAlbums=My Photo Albums\nScreenCheck=Too small\n"
    "[Autoplay]\nShowPicturesAction=Import pictures\nShowPicturesProvider=Orvana\n";
const QString Chinese = QString::fromUtf8("\xE7\x9B\xB8\xE5\x86\x8C");
const QByteArray ChineseFile = "[OrvDocument]\nLanguageName=zh_CN\n[System]\nMyPhotoAlbums=" + Chinese.toUtf8() + "\n";
const QByteArray MislabelledFile = "[OrvDocument]\nLanguageName=English\n";

void UseTestLanguages(ScopedTestEnvironment &environment)
{
    environment.UseLanguageFiles({{QStringLiteral("English"), EnglishFile},
                                  {QStringLiteral("zh_CN"), ChineseFile},
                                  {QStringLiteral("zh_TW"), MislabelledFile}});
}

const QStringList SplashOpening = {"ShowSplash", "PumpEvents", "Wait 200", "SplashNormalShow", "DiscoverPlugins"};
const QStringList SplashClosing = {"UnloadSplash", "PumpEvents"};

QStringList Numbered(int from, int to)
{
    QStringList paths;
    for (int i = from; i <= to; ++i)
        paths << QStringLiteral("/albums/%1").arg(i);
    return paths;
}

QStringList Contents(const RecentDocList &list)
{
    QStringList paths;
    for (int slot = 1; slot <= list.Count(); ++slot)
        paths << list.At(slot);
    return paths;
}

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

// The windows a command line opens; a screen under 768 pixels opens none and leaves the settings
// as they were.
void StartupTest::dispatch_data()
{
    QTest::addColumn<QString>("commandLine");
    QTest::addColumn<QStringList>("windows");
    QTest::addColumn<int>("screenHeight");

    QTest::newRow("empty line") << "" << QStringList{"ShowMainWindow", "ShowWelcomeWindow"} << 768;
    QTest::newRow("camera import") << "/ImportPhotos /media/CARD" << QStringList{"ShowMainWindow", "ShowWelcomeWindow", "CameraImportToAlbum [/media/CARD]"} << 768;
    QTest::newRow("camera import, quoted card") << "/ImportPhotos \"/media/MY CARD\"" << QStringList{"ShowMainWindow", "ShowWelcomeWindow", "CameraImportToAlbum [/media/MY CARD]"} << 768;
    QTest::newRow("import switch without its blank is a path") << "/ImportPhotos" << QStringList{"ShowMainWindow", "OpenDoc [/ImportPhotos] false"} << 768;
    QTest::newRow("GPS window alone") << "/GPS" << QStringList{"ShowGpsWindow"} << 768;
    QTest::newRow("only four letters compared") << "/GPSLOGS please" << QStringList{"ShowGpsWindow"} << 768;
    QTest::newRow("switches keep their case") << "/gps" << QStringList{"ShowMainWindow", "OpenDoc [/gps] false"} << 768;
    QTest::newRow("quoted path") << "\"/home/me/My Album\"" << QStringList{"ShowMainWindow", "OpenDoc [/home/me/My Album] false"} << 768;
    QTest::newRow("unquoted path") << "/home/me/My Album" << QStringList{"ShowMainWindow", "OpenDoc [/home/me/My Album] false"} << 768;
    QTest::newRow("one quote only at the start") << "\"/home/me" << QStringList{"ShowMainWindow", "OpenDoc [\"/home/me] false"} << 768;
    QTest::newRow("two quotes") << "\"\"" << QStringList{"ShowMainWindow", "OpenDoc [] false"} << 768;
    QTest::newRow("a lone quote") << "\"" << QStringList{"ShowMainWindow", "OpenDoc [] false"} << 768;
    QTest::newRow("new album") << "/NewAlbum" << QStringList{"ShowMainWindow", "NewAlbum"} << 768;
    QTest::newRow("a photo stands for its album") << "\"<root>/Trip.album/photo.jpg\"" << QStringList{"ShowMainWindow", "OpenDoc [<root>/Trip.album] false"} << 768;
    QTest::newRow("a photo in no album is imported") << "<root>/Downloads/photo.jpg"
                                                     << QStringList{"ShowMainWindow", "ShowWelcomeWindow", "ImportPhotos [<root>/Downloads/photo.jpg]"} << 768;
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
    QDir().mkpath(environment.UserData());
    WriteAll(environment.SettingsPath(), "[System]\nLastCheckUpdate=46347\n");
    QDir().mkpath(environment.Root() + QStringLiteral("/Trip.album/studio.data"));
    WriteAll(environment.Root() + QStringLiteral("/Trip.album/photo.jpg"), "a photo the file manager named");
    QDir().mkpath(environment.Root() + QStringLiteral("/Downloads"));
    WriteAll(environment.Root() + QStringLiteral("/Downloads/photo.jpg"), "a photo from elsewhere");
    commandLine.replace(QStringLiteral("<root>"), environment.Root());
    windows.replaceInStrings(QStringLiteral("<root>"), environment.Root());
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
    QTest::addColumn<bool>("packaged"); // the installed package holds the entry for every user
    QTest::addColumn<bool>("rewritten");
    const QString expected = QStringLiteral("\"%1/orvana\" /ImportPhotos %f");
    QTest::newRow("missing entry") << QString() << QString() << false << true;
    QTest::newRow("as expected") << expected << "Import pictures" << false << false;
    QTest::newRow("differs only in letter case") << expected.toUpper().replace(QStringLiteral("%F"), QStringLiteral("%f")) << "Import pictures" << false << false;
    QTest::newRow("another install folder") << "\"/opt/old/orvana\" /ImportPhotos %f" << "Import pictures" << false << true;
    QTest::newRow("written without a translation") << expected << "showpicturesaction" << false << true;
    QTest::newRow("packaged: none written") << QString() << QString() << true << false;
    QTest::newRow("packaged: an earlier one goes") << "\"/opt/old/orvana\" /ImportPhotos %f" << "Import pictures" << true << false;
}

void StartupTest::autoPlayHandler()
{
    QFETCH(QString, exec);
    QFETCH(QString, name);
    QFETCH(bool, packaged);
    QFETCH(bool, rewritten);
    ScopedTestEnvironment environment;
    UseTestLanguages(environment);
    SetCurrentLanguage(QStringLiteral("English"));
    exec = exec.arg(environment.Env().install);
    QDir().mkpath(environment.Env().applications);
    const QByteArray before = "[Desktop Entry]\nName=" + name.toUtf8() + "\nExec=" + exec.toUtf8() + "\nX-Orvana-Provider=Orvana\n";
    if (!exec.isEmpty())
        WriteAll(AutoPlayEntryPath(), before);
    if (packaged) {
        QDir().mkpath(environment.Root() + QStringLiteral("/share/applications"));
        WriteAll(PackagedAutoPlayEntryPath(), "[Desktop Entry]\nExec=orvana /ImportPhotos %f\n");
    }

    EnsureAutoPlayHandler();
    if (packaged) {
        QVERIFY(!QFile::exists(AutoPlayEntryPath()));
        return;
    }
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
    QTest::addColumn<QByteArray>("settings"); // empty: the file is missing, the folder is not; null: a first run
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
    QTest::newRow("settings file deleted") << "zh_CN" << QByteArray("") << "" << QStringList{"language=zh_CN"};
    QTest::newRow("first run, English system") << "en_US" << QByteArray() << ""
        << QStringList{"Language/Current=English", "Library/MainPath={documents}/My Photo Albums", "cwd={documents}/My Photo Albums"};
    QTest::newRow("first run, Simplified Chinese") << "zh_CN" << QByteArray() << "" << QStringList{"language=zh_CN", "Library/MainPath={documents}/" + Chinese};
    QTest::newRow("first run, Traditional Chinese starts in English") << "zh_TW" << QByteArray() << ""
        << QStringList{"Language/Current=English", "Library/MainPath={documents}/My Photo Albums"};
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
    QTest::newRow("no update page: no check") << "en_US" << QByteArray("[System]\nLastCheckUpdate=1\n") << "" << QStringList{"updater=0"};
}

void StartupTest::settledByStart()
{
    QFETCH(QString, locale);
    QFETCH(QByteArray, settings);
    QFETCH(QString, commandLine);
    QFETCH(QStringList, expected);
    ScopedTestEnvironment environment;
    UseTestLanguages(environment);
    const QString services = environment.Env().install + QStringLiteral("/Resources/Services.ini");
    QFile::copy(QStringLiteral(ORVANA_SOURCE_DIR "/resources/Services.ini"), services);
    // The shipped file names no update page; these starts have one, but for the row about that.
    if (QLatin1String(QTest::currentDataTag()) != QLatin1String("no update page: no check"))
        WriteAll(services, ReadAll(services).replace("[Updates]\nPage=", "[Updates]\nPage=https://updates.example/check"));
    WriteAll(environment.Root() + QStringLiteral("/a-file"), "not a folder");
    environment.Env().locale = locale;
    if (!settings.isNull())
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

void StartupTest::lookups_data()
{
    QTest::addColumn<QString>("language");  // empty: the system's
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("settled");   // the current language after the lookup
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("section");
    QTest::addColumn<QString>("expected");

    QTest::newRow("escape \\n gives CR LF") << "English" << "en_US" << "English" << "TwoLines" << "Form" << "one\r\ntwo";
    QTest::newRow("escape \\n\\r gives one CR LF") << "English" << "en_US" << "English" << "Pair" << "Form" << "one\r\ntwo";
    QTest::newRow("escape \\r gives CR LF") << "English" << "en_US" << "English" << "Return" << "Form" << "one\r\ntwo";
    QTest::newRow("\\r then \\n give two") << "English" << "en_US" << "English" << "Mixed" << "Form" << "a\r\n\r\nb";
    QTest::newRow("own translation first") << "zh_CN" << "en_US" << "zh_CN" << "MyPhotoAlbums" << "System" << Chinese;
    QTest::newRow("English when the language lacks the key") << "zh_CN" << "en_US" << "zh_CN" << "ButtonOK" << "Form" << "OK";
    QTest::newRow("section matters") << "English" << "en_US" << "English" << "ButtonOK" << "Menu" << "ButtonOK";
    QTest::newRow("unset language follows the system") << "" << "en_US" << "English" << "MyPhotoAlbums" << "System" << "My Photo Albums";
    QTest::newRow("Singapore") << "" << "zh_SG" << "zh_CN" << "MyPhotoAlbums" << "System" << Chinese;
    QTest::newRow("Taiwan") << "" << "zh_TW" << "zh_TW" << "MyPhotoAlbums" << "System" << "My Photo Albums";
    QTest::newRow("Hong Kong") << "" << "zh_HK" << "zh_TW" << "ButtonOK" << "Form" << "OK";
    QTest::newRow("with an encoding") << "" << "zh_TW.UTF-8" << "zh_TW" << "ButtonOK" << "Form" << "OK";
    QTest::newRow("BCP 47 form") << "" << "zh-CN" << "zh_CN" << "MyPhotoAlbums" << "System" << Chinese;
    QTest::newRow("French") << "" << "fr_FR" << "English" << "ButtonOK" << "Form" << "OK";
}

void StartupTest::lookups()
{
    QFETCH(QString, language);
    QFETCH(QString, locale);
    QFETCH(QString, settled);
    QFETCH(QString, key);
    QFETCH(QString, section);
    QFETCH(QString, expected);
    ScopedTestEnvironment environment;
    UseTestLanguages(environment);
    environment.Env().locale = locale;
    SetCurrentLanguage(language);
    QCOMPARE(GetLocalizedString(key, section), expected);
    QCOMPARE(CurrentLanguage(), settled);
}

// Start-up drops a language whose file does not name it; the shipped ones must survive that.
void StartupTest::shippedLanguagesNameThemselves()
{
    ScopedTestEnvironment environment;
    for (const QString &language : {QStringLiteral("English"), QStringLiteral("zh_CN"), QStringLiteral("zh_TW")}) {
        SetCurrentLanguage(language);
        QCOMPARE(GetLocalizedString(QStringLiteral("LanguageName"), QStringLiteral("OrvDocument")), language);
        QVERIFY(GetLocalizedString(QStringLiteral("ScreenCheck"), QStringLiteral("System")) != QLatin1String("ScreenCheck"));
    }
}

void StartupTest::updatePageAddress_data()
{
    QTest::addColumn<int>("offsetSeconds");
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("system");
    QTest::addColumn<QString>("expected"); // after the page

    QTest::newRow("half-hour zone east") << 19800 << "English" << "debian 12"
        << "?software=Orvana-Win-V2&language=English&machine=5f0c&timezone=GMT%2B05.5&version=2.0.0&albums=17&osversion=debian%2012";
    QTest::newRow("zone west") << -3 * 3600 << "English" << "debian 12"
        << "?software=Orvana-Win-V2&language=English&machine=5f0c&timezone=GMT-03.0&version=2.0.0&albums=17&osversion=debian%2012";
    QTest::newRow("UTC, a language name to encode") << 0 << QString::fromUtf8("简体中文") << "arch"
        << "?software=Orvana-Win-V2&language=%E7%AE%80%E4%BD%93%E4%B8%AD%E6%96%87&machine=5f0c&timezone=GMT%2B00.0&version=2.0.0&albums=17&osversion=arch";
}

void StartupTest::updatePageAddress()
{
    QFETCH(int, offsetSeconds);
    QFETCH(QString, language);
    QFETCH(QString, system);
    QFETCH(QString, expected);
    const UpdateFacts facts{language, QStringLiteral("5f0c"), UpdateTimeZone(offsetSeconds), QStringLiteral("2.0.0"), QStringLiteral("17"), system};
    QCOMPARE(UpdatePageAddress(QStringLiteral("https://updates.example/check"), facts), QStringLiteral("https://updates.example/check") + expected);
}

void StartupTest::recentDocsAdding_data()
{
    QTest::addColumn<QStringList>("added");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("oldest first") << QStringList{"/a", "/b"} << QStringList{"/a", "/b"};
    QTest::newRow("re-opened from slot 3 of 5 moves to the end") << QStringList{"/1", "/2", "/3", "/4", "/5", "/3"} << QStringList{"/1", "/2", "/4", "/5", "/3"};
    QTest::newRow("re-opened newest stays") << QStringList{"/1", "/2", "/2"} << QStringList{"/1", "/2"};
    QTest::newRow("a new path to a full list drops slot 1") << Numbered(1, 11) << Numbered(2, 11);
    QTest::newRow("a known path to a full list drops nothing") << Numbered(1, 10) + QStringList{"/albums/1"} << Numbered(2, 10) + QStringList{"/albums/1"};
    QTest::newRow("comparison keeps letter case") << QStringList{"c:\\A", "C:\\a"} << QStringList{"c:\\A", "C:\\a"};
}

void StartupTest::recentDocsAdding()
{
    QFETCH(QStringList, added);
    QFETCH(QStringList, expected);
    RecentDocList list;
    for (const QString &path : added)
        list.Add(path);
    QCOMPARE(Contents(list), expected);
}

void StartupTest::recentDocsSavingAndLoading()
{
    ScopedTestEnvironment environment;
    QDir().mkpath(environment.UserData());

    RecentDocList full;
    for (const QString &path : Numbered(1, 10))
        full.Add(path);
    full.Save();

    RecentDocList two;
    two.Add(QStringLiteral("/x"));
    two.Add(QStringLiteral("/y"));
    two.Save();
    for (int slot = 3; slot <= 10; ++slot) {
        const QByteArray key = "\r\nDoc" + QByteArray::number(slot) + "=\r\n";
        QVERIFY2(ReadAll(environment.SettingsPath()).contains(key), key.constData());
    }

    // A value after the first empty slot is never reached.
    WriteSetting(QStringLiteral("RecentDocs"), QStringLiteral("Doc5"), QStringLiteral("/stray"));
    LoadRecentDocs();
    QCOMPARE(Contents(RecentDocs()), (QStringList{"/x", "/y"}));
}

QTEST_GUILESS_MAIN(StartupTest)
#include "tst_Startup.moc"
