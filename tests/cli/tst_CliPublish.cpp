#include "CliRunner.h"
#include "ServerProcess.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

// orvana-cli's publish verbs, each row a session of commands on one album under a fresh HOME.
class CliPublishTest : public QObject {
    Q_OBJECT
private slots:
    void sessions_data();
    void sessions();
};

void CliPublishTest::sessions_data()
{
    QTest::addColumn<QList<QStringList>>("commands"); // "{port}" is the FTP server's
    QTest::addColumn<QStringList>("outputs");         // a pattern for each command's whole stdout
    QTest::addColumn<QList<int>>("exits");
    const QStringList preview = {"publish", "options", "Trip", "--set", "NeedExportPreview", "1", "--set", "NeedExportThumbnail", "0",
                                 "--set", "NeedExportStandard", "0"};
    const QStringList desktop = {"publish", "export", "Trip.album", "--desktop"};
    QTest::newRow("exporting to the desktop again takes the next free name")
        << QList<QStringList>{preview, desktop, desktop, desktop}
        << QStringList{"(?s).*NeedExportPreview=1.*", ".*/Desktop/[-0-9a-f]+\\.data", ".*/Desktop/[-0-9a-f]+ \\(1\\)\\.data",
                       ".*/Desktop/[-0-9a-f]+ \\(2\\)\\.data"}
        << QList<int>{0, 0, 0, 0};
    QTest::newRow("favourite servers: one entry per address, login and directory")
        << QList<QStringList>{{"publish", "favourites", "add", "host", "ann", "data"},
                              {"publish", "favourites", "add", "host", "ann", "/data/"},
                              {"publish", "favourites", "clear", "--json"}}
        << QStringList{"ftp://ann@host/data/", "ftp://ann@host/data/", "\\[\\s*\\]"} << QList<int>{0, 0, 0};
    const QStringList server = {"publish", "options", "Trip", "--set", "FTPServerAddress", "127.0.0.1:{port}", "--set", "FTPLoginName",
                                "photographer", "--set", "FTPDirectory", "orv"};
    const QStringList sync = {"publish", "sync", "Trip.album"};
    QTest::newRow("a sync, then a second one that sends the list alone")
        << QList<QStringList>{preview, server, {"publish", "test", "Trip.album"}, sync, sync, {"publish", "test", "Trip.album"}}
        << QStringList{"(?s).*", "(?s).*", "The server is ready for publishing.",
                       "[-0-9a-f]+\\.data/size_1/photo\\.jpg\n[-0-9a-f]+\\.data/album\\.plist", "[-0-9a-f]+\\.data/album\\.plist",
                       "The server is ready, and this album.*"}
        << QList<int>{0, 0, 0, 0, 0, 0};
    QTest::newRow("an unknown option is bad usage")
        << QList<QStringList>{{"publish", "options", "Trip", "--set", "Sharpness", "1"}} << QStringList{""} << QList<int>{2};
}

void CliPublishTest::sessions()
{
    QFETCH(QList<QStringList>, commands);
    QFETCH(QStringList, outputs);
    QFETCH(QList<int>, exits);
    QTemporaryDir home;
    QVERIFY(QDir(home.path()).mkpath(QStringLiteral("Trip")));
    QVERIFY(QFile::copy(QStringLiteral(ORVANA_SOURCE_DIR "/../shared/corpus/photos/exif-samples-DSCN0010.jpg"),
                        home.path() + QStringLiteral("/Trip/photo.jpg")));
    QCOMPARE(RunCli(home.path(), {"convert", "Trip"}).exitCode, 0);
    ServerProcess ftp(ServerProcess::Ftp);
    QVERIFY(ftp.Started() && QDir(ftp.Root()).mkpath(QStringLiteral("orv/data")));
    for (qsizetype i = 0; i < commands.size(); ++i) {
        QStringList arguments = commands[i].replaceInStrings(QStringLiteral("{port}"), QString::number(ftp.Port()));
        if (arguments.value(2) == QLatin1String("Trip"))
            arguments[2] = QStringLiteral("Trip.album");
        const CliRun run = RunCli(home.path(), arguments, {{QStringLiteral("ORVANA_FTP_PASSWORD"), QString::fromLatin1(ServerProcess::Password)}});
        QVERIFY2(run.exitCode == exits[i], qPrintable(arguments.join(u' ') + u'\n' + run.err));
        const QRegularExpression pattern(QRegularExpression::anchoredPattern(outputs[i]));
        QVERIFY2(pattern.match(run.out.trimmed()).hasMatch(), qPrintable(arguments.join(u' ') + QStringLiteral(" printed:\n") + run.out));
    }
}

QTEST_GUILESS_MAIN(CliPublishTest)
#include "tst_CliPublish.moc"
