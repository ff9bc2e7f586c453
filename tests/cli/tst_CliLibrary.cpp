#include "library/AlbumFormat.h"
#include "CliRunner.h"
#include "datalist/DataList.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

// The library verbs and the album calendar of orvana-cli, run as a separate process on a library
// of two albums.
class CliLibraryTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void verbs_data();
    void verbs();

private:
    CliRun Cli(const QStringList &arguments)
    {
        return RunCli(home->path(), arguments, {{QStringLiteral("XDG_DATA_HOME"), home->path() + QStringLiteral("/.local/share")}});
    }
    std::unique_ptr<QTemporaryDir> home;
    QString library;
};

namespace {

void WriteAlbum(const QString &path, const QStringList &captures)
{
    QDir().mkpath(AlbumFormat::ThumbnailFolder(path));
    DataList list;
    list.SetDocumentProperty(QStringLiteral("Title"), QFileInfo(path).completeBaseName());
    for (const QString &capture : captures) {
        const int at = list.ItemCount() + 1;
        list.AddItem(at);
        list.SetItemProperty(QStringLiteral("File"), QStringLiteral("p%1.jpg").arg(at), at);
        list.SetItemProperty(QStringLiteral("CaptureDate"), capture, at);
        list.SetItemProperty(QStringLiteral("Size"), QStringLiteral("1500"), at);
    }
    QVERIFY(list.Save(AlbumFormat::StudioPlistPath(path)));
}

} // namespace

void CliLibraryTest::init()
{
    home = std::make_unique<QTemporaryDir>();
    library = home->path() + QStringLiteral("/Albums");
    WriteAlbum(library + QStringLiteral("/Lake.album"), {"2024-06-01 09:00:00"});
    WriteAlbum(library + QStringLiteral("/Hills.album"), {"2024-07-01 09:00:00", "2024-07-02 21:30:00"});
    QCOMPARE(Cli({"settings", "set", "Library", "MainPath", library}).exitCode, 0);
}

void CliLibraryTest::verbs_data()
{
    QTest::addColumn<QList<QStringList>>("commands"); // all but the last must succeed
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("output"); // "$L" stands for the library folder
    QTest::newRow("albums with their facts") << QList<QStringList>{{"library", "albums", "Albums"}} << 0
        << "$L/Hills.album\tHills\t2\t3000\t2024-07-01 09:00 AM\t2024-07-02 09:30 PM\n$L/Lake.album\tLake\t1\t1500\t2024-06-01 09:00 AM\t2024-06-01 09:00 AM\n";
    QTest::newRow("search by file name") << QList<QStringList>{{"library", "search", "P1"}} << 0
        << "Hills\t2\t1\t$L/Hills.album\nLake\t1\t1\t$L/Lake.album\n";
    QTest::newRow("search by date alone") << QList<QStringList>{{"library", "search", "--in", "date", "--from", "2024-07-02", "--to", "2024-12-31"}} << 0
        << "Hills\t2\t1\t$L/Hills.album\n";
    QTest::newRow("date mode needs a range") << QList<QStringList>{{"library", "search", "--in", "date"}} << 1 << "";
    QTest::newRow("fresh domain list") << QList<QStringList>{{"library", "domains"}} << 0 << "[x] $L\n";
    QTest::newRow("unchecked domain is not searched")
        << QList<QStringList>{{"library", "domains", "check", "Albums", "off"}, {"library", "search", "p"}} << 0 << "";
    QTest::newRow("domain added") << QList<QStringList>{{"library", "domains", "add", "More"}, {"library", "domains"}} << 0 << "[x] $L\n[x] " + QStringLiteral("$H/More\n");
    QTest::newRow("new album") << QList<QStringList>{{"library", "new-album", "Albums", "Trip.album"}} << 0 << "$L/Trip.album\n";
    QTest::newRow("new album with a taken name") << QList<QStringList>{{"library", "new-album", "Albums", "Lake"}} << 1 << "";
    QTest::newRow("rename keeps the suffix") << QList<QStringList>{{"library", "rename", "Albums/Lake.album", "Pond"}, {"library", "albums", "Albums", "--json"}} << 0 << "";
    QTest::newRow("trash") << QList<QStringList>{{"library", "trash", "Albums/Lake.album"}, {"library", "search", "p"}} << 0 << "Hills\t2\t2\t$L/Hills.album\n";
    QTest::newRow("month calendar") << QList<QStringList>{{"album", "calendar", "Albums/Hills.album", "month", "2024"}} << 0 << "7 1 2\n7 1 3\n";
    QTest::newRow("week calendar") << QList<QStringList>{{"album", "calendar", "Albums/Hills.album", "week", "2024-06-30"}} << 0 << "2 10\n3 22\n";
    QTest::newRow("calendar of another year") << QList<QStringList>{{"album", "calendar", "Albums/Hills.album", "month", "2023"}} << 0 << "";
}

void CliLibraryTest::verbs()
{
    QFETCH(QList<QStringList>, commands);
    QFETCH(int, exitCode);
    QFETCH(QString, output);
    for (qsizetype i = 0; i + 1 < commands.size(); ++i) {
        const CliRun step = Cli(commands[i]);
        QVERIFY2(step.exitCode == 0, qPrintable(step.err));
    }
    const CliRun last = Cli(commands.back());
    QVERIFY2(last.exitCode == exitCode, qPrintable(last.err));
    if (QTest::currentDataTag() == QLatin1String("rename keeps the suffix")) {
        QVERIFY(last.out.contains(library + QStringLiteral("/Pond.album")));
        QVERIFY(!last.out.contains(QStringLiteral("Lake.album")));
        return;
    }
    QCOMPARE(last.out, QString(output).replace(QStringLiteral("$L"), library).replace(QStringLiteral("$H"), home->path()));
}

QTEST_GUILESS_MAIN(CliLibraryTest)
#include "tst_CliLibrary.moc"
