#include "CliRunner.h"
#include "TestEnvironment.h"

#include <QFile>
#include <QRegularExpression>
#include <QTest>

// orvana-cli run as a separate process under a HOME of the test's own.
class CliTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void commands_data();
    void commands();
    void settingsShareTheProgramsFile();
    void everyVerbHasItsHelp();

private:
    using Run = CliRun;
    Run Cli(const QStringList &arguments) { return RunCli(home->path(), arguments); }
    std::unique_ptr<QTemporaryDir> home;
};

void CliTest::init()
{
    home = std::make_unique<QTemporaryDir>();
}

void CliTest::commands_data()
{
    QTest::addColumn<QList<QStringList>>("steps"); // run in order; the last one is checked
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("out");
    QTest::addColumn<QString>("err");

    using Steps = QList<QStringList>;
    QTest::newRow("version") << Steps{{"--version"}} << 0 << "orvana-cli 0.1.0\n" << "";
    QTest::newRow("set then get") << Steps{{"settings", "set", "RecentFTP", "Password", "p\"a ss"}, {"settings", "get", "recentftp", "PASSWORD"}}
                                  << 0 << "p\"a ss\n" << "";
    QTest::newRow("set twice keeps one line") << Steps{{"settings", "set", "GPS", "TimeZone", "8"}, {"settings", "set", "GPS", "TimeZone", "-3.5"}, {"settings", "get", "GPS", "TimeZone"}}
                                              << 0 << "-3.5\n" << "";
    QTest::newRow("absent key reads empty") << Steps{{"settings", "get", "System", "Nothing"}} << 0 << "\n" << "";
    QTest::newRow("localised text") << Steps{{"text", "LanguageName", "OrvDocument"}} << 0 << "English\n" << "";
    QTest::newRow("text of an unknown key is the key") << Steps{{"text", "NoSuchKey", "Form"}} << 0 << "NoSuchKey\n" << "";
    QTest::newRow("broken language reads English") << Steps{{"settings", "set", "Language", "Current", "Klingon"}, {"text", "LanguageName", "OrvDocument"}}
                                                   << 0 << "English\n" << "";
    QTest::newRow("value with a line break refused") << Steps{{"settings", "set", "A", "k", "two\nlines"}} << 1 << "" << "line break";
    QTest::newRow("\"--\" ends the options") << Steps{{"settings", "set", "A", "k", "--", "--x"}, {"settings", "get", "A", "k"}} << 0 << "--x\n" << "";

    // Usage comes from the verb tables: bad usage exits 2 with the usage on stderr.
    QTest::newRow("missing arguments") << Steps{{"settings", "get", "System"}} << 2 << "" << "usage: orvana-cli settings get SECTION KEY\n";
    QTest::newRow("unknown verb") << Steps{{"settings", "remove", "A", "k"}} << 2 << "" << "unknown verb \"remove\"";
    QTest::newRow("no verb") << Steps{{"album"}} << 2 << "" << "album needs a verb\nusage: orvana-cli album create FOLDER\n";
    QTest::newRow("unknown group") << Steps{{"albums"}} << 2 << "" << "unknown command";
    QTest::newRow("nothing") << Steps{{}} << 2 << "" << "no command";
    QTest::newRow("unknown option") << Steps{{"album", "info", "A", "--xml"}} << 2 << "" << "unknown option \"--xml\"\nusage: orvana-cli album info ALBUM [--json]";
    QTest::newRow("unknown short option") << Steps{{"album", "list", "A", "-x"}} << 2 << "" << "unknown option \"-x\"";
    QTest::newRow("option without its value") << Steps{{"image", "write-metadata", "a.jpg", "--keywords"}} << 2 << "" << "--keywords needs a value";
    QTest::newRow("switch given a value") << Steps{{"http", "get", "http://h/", "o", "--headers=1"}} << 2 << "" << "usage: orvana-cli http get";
    QTest::newRow("option of another verb") << Steps{{"gps", "waypoints", "--offset", "2"}} << 2 << "" << "unknown option \"--offset\"";

    QTest::newRow("help lists the groups") << Steps{{"--help"}} << 0 << "  gps VERB ..." << "";
    QTest::newRow("group help") << Steps{{"settings", "--help"}} << 0 << "orvana-cli settings set SECTION KEY VALUE\n      writes" << "";
    QTest::newRow("verb help") << Steps{{"album", "star", "--help"}} << 0 << "usage: orvana-cli album star ALBUM FILE... [--off]\nstars" << "";
    QTest::newRow("help of a two-word verb") << Steps{{"gps", "waypoint", "remove", "-h"}} << 0 << "usage: orvana-cli gps waypoint remove NAME\nevery" << "";
    QTest::newRow("help of a command of its own") << Steps{{"convert", "--help"}} << 0 << "usage: orvana-cli convert FOLDER\nTurns" << "";
    QTest::newRow("help before bad usage") << Steps{{"image", "crop", "--bogus", "--help"}} << 0 << "image crop LEFT TOP RIGHT BOTTOM FILE" << "";
    QTest::newRow("options with their help") << Steps{{"gps", "kmz", "--help"}} << 0 << "\n  --offset HOURS" << "";
}

void CliTest::commands()
{
    QFETCH(QList<QStringList>, steps);
    QFETCH(int, exitCode);
    QFETCH(QString, out);
    QFETCH(QString, err);
    Run last{};
    for (const QStringList &step : steps)
        last = Cli(step);
    QCOMPARE(last.exitCode, exitCode);
    if (exitCode == 0 && !out.endsWith(u'\n'))
        QVERIFY2(last.out.contains(out), qPrintable(last.out));
    else
        QCOMPARE(last.out, out);
    QVERIFY2(last.err.contains(err), qPrintable(last.err));
}

// The first write makes the same first-run file the program makes, so a later start of the
// windows does not take the folder for a first run with a half-empty file.
void CliTest::settingsShareTheProgramsFile()
{
    QCOMPARE(Cli({"settings", "set", "System", "AllowNonJPEG", "1"}).exitCode, 0);
    const QString ini = home->path() + QStringLiteral("/Documents/Orvana User Data/Orvana.ini");
    const QByteArray content = ReadAll(ini);
    QVERIFY(content.startsWith("[System]\r\nOrvanaRoot = "));
    QVERIFY(content.contains("AllowNonJPEG=1\r\n\r\n[Language]\r\nCurrent = English\r\n"));
    QVERIFY(content.contains("[FlashMaker]\r\n"));

    QFile::setPermissions(ini, QFileDevice::ReadOwner);
    const Run refused = Cli({"settings", "set", "System", "AllowNonJPEG", "0"});
    QCOMPARE(refused.exitCode, 1);
    QVERIFY(refused.err.contains(QStringLiteral("read-only")));
    QCOMPARE(ReadAll(ini), content);
}

// Each verb the group's help lists answers --help with the same usage line: help and parsing
// come from one table.
void CliTest::everyVerbHasItsHelp()
{
    static const QRegularExpression verbWord(QStringLiteral("^[a-z][a-z-]*$"));
    int verbs = 0;
    for (const QString &groupLine : Cli({"--help"}).out.split(u'\n').filter(QRegularExpression(QStringLiteral("^  [a-z]")))) {
        const QString group = groupLine.section(u' ', 2, 2);
        const QStringList help = Cli({group, "--help"}).out.split(u'\n');
        for (QString synopsis : help.filter(QRegularExpression(QStringLiteral("^(  |usage: )orvana-cli ")))) {
            synopsis = synopsis.section(QStringLiteral("orvana-cli "), 1);
            if (synopsis.endsWith(QLatin1String(" VERB ...")))
                continue;
            QStringList words{group};
            for (const QString &word : synopsis.split(u' ').mid(1)) {
                if (!verbWord.match(word).hasMatch())
                    break;
                words << word;
            }
            const Run run = Cli(words << QStringLiteral("--help"));
            QCOMPARE(run.exitCode, 0);
            QCOMPARE(run.out.section(u'\n', 0, 0), QStringLiteral("usage: orvana-cli ") + synopsis);
            ++verbs;
        }
    }
    QVERIFY2(verbs > 50, qPrintable(QString::number(verbs)));
}

QTEST_GUILESS_MAIN(CliTest)
#include "tst_Cli.moc"
