#include "app/Language.h"
#include "app/Plugins.h"
#include "app/ProgressSink.h"
#include "library/AlbumOpening.h"
#include "library/PluginCall.h"
#include "app/Prompter.h"
#include "CliRunner.h"
#include "TestEnvironment.h"

#include <QDir>
#include <QFile>
#include <QImageReader>
#include <QTest>

namespace {

const QString Corpus = QStringLiteral(ORVANA_SOURCE_DIR "/../shared/corpus/photos/");
const QStringList Photos = {QStringLiteral("drewnoakes-Canon_PowerShot_S330.jpg"), QStringLiteral("drewnoakes-HTC_Desire.jpg")};

// A plug-in folder: its descriptor, its translations (language -> Menu) and, when given, its
// program as a shell script.
void MakePlugin(const QString &plugins, const QString &folder, const QByteArray &descriptor,
                const QMap<QString, QByteArray> &menus = {}, const QByteArray &script = {})
{
    const QString resources = plugins + u'/' + folder + QStringLiteral("/Resources");
    QDir().mkpath(resources);
    WriteAll(resources + QStringLiteral("/Plugin.ini"), "[Plugin]\n" + descriptor);
    for (auto it = menus.begin(); it != menus.end(); ++it) {
        QDir().mkpath(resources + u'/' + it.key());
        WriteAll(resources + u'/' + it.key() + QStringLiteral("/Localizable.ini"), "[Plugin]\nMenu=" + it.value() + '\n');
    }
    if (!script.isEmpty())
        WriteAll(plugins + u'/' + folder + QStringLiteral("/run"), "#!/bin/sh\n" + script);
}

class NoQuestions : public Prompter {
public:
    bool AskYesNo(const QString &, const QString &) override { return false; }
    void Inform(const QString &, const QString &) override {}
    void Error(const QString &, const QString &) override {}
    std::optional<QString> AskText(const QString &, const QString &, const QString &) override { return {}; }
};

} // namespace

class PluginsTest : public QObject {
    Q_OBJECT
private slots:
    void discovery_data();
    void discovery();
    void hostilePluginsChangeNothing_data();
    void hostilePluginsChangeNothing();
    void samplesRunForReal_data();
    void samplesRunForReal();
};

void PluginsTest::discovery_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QByteArray>("descriptor");
    QTest::addColumn<QString>("translated"); // a language with a translated Menu, "" for none
    QTest::addColumn<QString>("language");   // the program's language
    QTest::addColumn<QString>("listedAs");   // "name|menu", "" when not listed

    QTest::newRow("an importer") << "Cards.plugin" << QByteArray("Menu=From Cards\nType=Importer\n") << "" << "English" << "Cards|From Cards";
    QTest::newRow("the ending in any case") << "Cards.PLUGIN" << QByteArray("Menu=From Cards\nType=Importer\n") << "" << "English" << "Cards|From Cards";
    QTest::newRow("not a plug-in folder") << "Cards" << QByteArray("Menu=From Cards\nType=Importer\n") << "" << "English" << "";
    QTest::newRow("hidden") << "Cards.plugin" << QByteArray("Menu=From Cards\nType=Importer\nHidden=1\n") << "" << "English" << "";
    QTest::newRow("for another language") << "Cards.plugin" << QByteArray("Menu=X\nType=Editor\nLanguageName=zh_TW\n") << "" << "English" << "";
    QTest::newRow("for the language in use") << "Cards.plugin" << QByteArray("Menu=X\nType=Editor\nLanguageName=zh_TW\n") << "" << "zh_TW" << "Cards|X";
    QTest::newRow("meant for English lists everywhere") << "Cards.plugin" << QByteArray("Menu=X\nType=Editor\nLanguageName=English\n") << "" << "zh_CN" << "Cards|X";
    QTest::newRow("menu from its English translation") << "Cards.plugin" << QByteArray("Type=Importer\n") << "English" << "zh_CN" << "Cards|Menu in English";
    QTest::newRow("menu from the language in use") << "Cards.plugin" << QByteArray("Type=Importer\n") << "zh_CN" << "zh_CN" << "Cards|Menu in zh_CN";
}

void PluginsTest::discovery()
{
    QFETCH(QString, folder);
    QFETCH(QByteArray, descriptor);
    QFETCH(QString, translated);
    QFETCH(QString, language);
    QFETCH(QString, listedAs);
    ScopedTestEnvironment environment;
    const QString plugins = environment.Root() + QStringLiteral("/Plugins");
    QMap<QString, QByteArray> menus;
    if (!translated.isEmpty())
        menus.insert(translated, "Menu in " + translated.toUtf8());
    MakePlugin(plugins, folder, descriptor, menus);
    const QString before = CurrentLanguage();
    SetCurrentLanguage(language);
    const std::vector<PluginInfo> found = FindPlugins(plugins);
    SetCurrentLanguage(before);
    QCOMPARE(found.empty(), listedAs.isEmpty());
    if (!found.empty())
        QCOMPARE(found.front().name + u'|' + found.front().menu, listedAs);
}

void PluginsTest::hostilePluginsChangeNothing_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<bool>("executable");
    QTest::addColumn<int>("added"); // records the album gains; -1: the run fails and none are added

    const QByteArray importsPhoto = "printf 'ImportedFiles=%s\\n' \"$PHOTO\" >>\"$1\"\n";
    QTest::newRow("a well-behaved importer") << importsPhoto << true << 1;
    QTest::newRow("not executable: made so, then run") << importsPhoto << false << 1;
    QTest::newRow("no program") << QByteArray() << true << -1;
    QTest::newRow("hangs past its time") << QByteArray("sleep 30\n") << true << -1;
    QTest::newRow("crashes") << QByteArray("kill -SEGV $$\n") << true << -1;
    QTest::newRow("ends with an error") << QByteArray("echo 'no card' >&2; exit 3\n") << true << -1;
    QTest::newRow("writes garbage") << QByteArray("head -c 600 /bin/sh >\"$1\"\n") << true << -1;
    QTest::newRow("names a file that is not there") << importsPhoto + "echo ImportedFiles=/nowhere/x.jpg >>\"$1\"\n" << true << -1;
    QTest::newRow("names a file that is no photo") << QByteArray("echo \"ImportedFiles=$1\" >>\"$1\"\n") << true << -1;
    QTest::newRow("names a relative path") << QByteArray("echo ImportedFiles=x.jpg >>\"$1\"\n") << true << -1;
}

void PluginsTest::hostilePluginsChangeNothing()
{
    QFETCH(QByteArray, script);
    QFETCH(bool, executable);
    QFETCH(int, added);
    ScopedTestEnvironment environment;
    const QString plugins = environment.Root() + QStringLiteral("/Plugins");
    MakePlugin(plugins, QStringLiteral("Cards.plugin"), "Menu=From Cards\nType=Importer\nFile=run\n", {}, script);
    if (executable && !script.isEmpty())
        QFile::setPermissions(plugins + QStringLiteral("/Cards.plugin/run"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const QString photo = environment.Root() + QStringLiteral("/in/") + Photos[0];
    QDir().mkpath(environment.Root() + QStringLiteral("/in"));
    QFile::copy(Corpus + Photos[0], photo);
    QDir().mkpath(environment.Root() + QStringLiteral("/Trip"));
    NoQuestions no;
    NoProgress quiet;
    auto album = OpenAlbumDocument(environment.Root() + QStringLiteral("/Trip"), {}, no, quiet).document;
    QVERIFY(album);

    qputenv("PHOTO", photo.toUtf8());
    const PluginOutcome outcome = LaunchPlugin(*album, plugins, QStringLiteral("Cards"), PluginValuesFor(*album, 0, {}, 0, 0), quiet, 2);
    qunsetenv("PHOTO");
    QCOMPARE(bool(outcome.run), added >= 0);
    QCOMPARE(outcome.run.message.isEmpty(), added >= 0);
    QCOMPARE(album->RecordCount(), std::max(added, 0));
}

void PluginsTest::samplesRunForReal_data()
{
    QTest::addColumn<QString>("plugin");
    QTest::addColumn<QStringList>("selected");
    QTest::addColumn<int>("records");    // the album's records afterwards, once and after a second run
    QTest::addColumn<QString>("written"); // a file the plug-in makes, under HOME

    QTest::newRow("downloads importer, twice") << "DownloadsImport" << QStringList() << 2 << "";
    QTest::newRow("e-mail copies of one photo") << "EmailCopies" << QStringList{Photos[1]} << 0 << "Desktop/Trip for e-mail/drewnoakes-HTC_Desire.jpg";
}

// The plug-ins that come with the program, run by orvana-cli as the windows run them.
void PluginsTest::samplesRunForReal()
{
    QFETCH(QString, plugin);
    QFETCH(QStringList, selected);
    QFETCH(int, records);
    QFETCH(QString, written);
    QTemporaryDir home;
    const QString album = home.path() + QStringLiteral("/Trip");
    QDir().mkpath(home.path() + QStringLiteral("/Downloads"));
    QDir().mkpath(home.path() + QStringLiteral("/in"));
    for (const QString &photo : Photos) {
        QFile::copy(Corpus + photo, home.path() + QStringLiteral("/Downloads/") + photo);
        QFile::copy(Corpus + photo, home.path() + QStringLiteral("/in/") + photo);
    }
    QCOMPARE(RunCli(home.path(), {QStringLiteral("album"), QStringLiteral("create"), album}).exitCode, 0);
    if (!selected.isEmpty())
        QCOMPARE(RunCli(home.path(), {QStringLiteral("album"), QStringLiteral("import"), album, home.path() + QStringLiteral("/in")}).exitCode, 0);
    const int before = selected.isEmpty() ? 0 : int(Photos.size());

    for (int run = 0; run < 2; ++run) {
        const CliRun ran = RunCli(home.path(), QStringList{QStringLiteral("plugin"), QStringLiteral("run"), album, plugin} + selected);
        QVERIFY2(ran.exitCode == 0, qPrintable(ran.err));
        const CliRun listed = RunCli(home.path(), {QStringLiteral("album"), QStringLiteral("list"), album});
        QCOMPARE(int(listed.out.split(u'\n', Qt::SkipEmptyParts).size()), before + records);
    }
    if (!written.isEmpty()) {
        // At most 1600 pixels on the long side, never enlarged.
        const QSize original = QImageReader(Corpus + selected.front()).size();
        const QSize copy = QImageReader(home.path() + u'/' + written).size();
        QVERIFY2(copy.isValid(), qPrintable(written));
        QCOMPARE(std::max(copy.width(), copy.height()), std::min(1600, std::max(original.width(), original.height())));
    }
}

QTEST_GUILESS_MAIN(PluginsTest)
#include "tst_Plugins.moc"
