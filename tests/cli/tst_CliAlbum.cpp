#include "AlbumFormat.h"
#include "CliRunner.h"
#include "DataList.h"
#include "TestEnvironment.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

// The album verbs of orvana-cli on real folders, run as a separate process.
class CliAlbumTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void createListAndEdit();
    void verbs_data();
    void verbs();
    void convertCorpusFolder();
    void damagedAlbumIsLeftAlone();

private:
    CliRun Cli(const QStringList &arguments) { return RunCli(home->path(), arguments); }
    void WriteAlbum(); // a list written by another tool, with a key of its own
    std::unique_ptr<QTemporaryDir> home;
    QString album;
};

void CliAlbumTest::init()
{
    home = std::make_unique<QTemporaryDir>();
    album = home->path() + QStringLiteral("/Walks");
}

void CliAlbumTest::WriteAlbum()
{
    QDir().mkpath(AlbumFormat::StudioDataPath(album));
    DataList list;
    list.SetDocumentProperty(QStringLiteral("Title"), QStringLiteral("Walks"));
    list.SetDocumentProperty(QStringLiteral("Sidecar"), QStringLiteral("from another tool"));
    const QList<QStringList> records = {{"c.jpg", "2026-03-02 10:00:00"}, {"a.jpg", "2026-03-01 09:30:00"}, {"b.jpg", "2026-03-02 16:45:00"}};
    for (const QStringList &record : records) {
        list.AddItem(list.ItemCount() + 1);
        list.SetItemProperty(QStringLiteral("File"), record[0], list.ItemCount());
        list.SetItemProperty(QStringLiteral("CaptureDate"), record[1], list.ItemCount());
        list.SetItemProperty(QStringLiteral("Rating"), QStringLiteral("5"), list.ItemCount());
    }
    QVERIFY(list.Save(AlbumFormat::StudioPlistPath(album)));
}

void CliAlbumTest::createListAndEdit()
{
    const CliRun created = Cli({"album", "create", "New.ALBUM"});
    QCOMPARE(created.exitCode, 0);
    QCOMPARE(created.out.trimmed(), home->path() + QStringLiteral("/New.ALBUM"));
    QCOMPARE(Cli({"album", "create", "New.ALBUM"}).exitCode, 1);

    const CliRun info = Cli({"album", "info", "New.ALBUM", "--json"});
    QCOMPARE(info.exitCode, 0);
    const QJsonObject object = QJsonDocument::fromJson(info.out.toUtf8()).object();
    QCOMPARE(object.value(QStringLiteral("title")).toString(), QStringLiteral("New"));
    QCOMPARE(object.value(QStringLiteral("photos")).toInt(), 0);
    QCOMPARE(object.value(QStringLiteral("identification")).toString().size(), 36);

    WriteAlbum();
    QCOMPARE(Cli({"album", "set", album, "a.jpg", "note", "Fog on the \"ridge\""}).exitCode, 0);
    QCOMPARE(Cli({"album", "set", album, "a.jpg", "lat", "46.5"}).exitCode, 0);
    QCOMPARE(Cli({"album", "star", album, "a.jpg", "b.jpg"}).exitCode, 0);
    QCOMPARE(Cli({"album", "star", album, "--off", "b.jpg"}).exitCode, 0);
    QCOMPARE(Cli({"album", "arrange", album, "time", "--desc"}).exitCode, 0);

    const CliRun listed = Cli({"album", "list", album, "--json"});
    QCOMPARE(listed.exitCode, 0);
    const QJsonArray records = QJsonDocument::fromJson(listed.out.toUtf8()).array();
    QCOMPARE(records.size(), 3);
    QCOMPARE(records[0].toObject().value(QStringLiteral("File")).toString(), QStringLiteral("b.jpg"));
    QCOMPARE(records[0].toObject().value(QStringLiteral("Star")).toString(), QStringLiteral("0"));
    const QJsonObject a = records[2].toObject();
    QCOMPARE(a.value(QStringLiteral("File")).toString(), QStringLiteral("a.jpg"));
    QCOMPARE(a.value(QStringLiteral("Description")).toString(), QStringLiteral("Fog on the \"ridge\""));
    QCOMPARE(a.value(QStringLiteral("Latitude")).toString(), QStringLiteral("46.500000"));
    QCOMPARE(a.value(QStringLiteral("Star")).toString(), QStringLiteral("1"));
    QCOMPARE(a.value(QStringLiteral("Rating")).toString(), QStringLiteral("5"));

    DataList saved;
    QVERIFY(saved.Load(AlbumFormat::StudioPlistPath(album)));
    QCOMPARE(saved.GetDocumentProperty(QStringLiteral("Sidecar")), QStringLiteral("from another tool"));
}

void CliAlbumTest::verbs_data()
{
    QTest::addColumn<QStringList>("arguments"); // ALBUM stands for the album written by another tool
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("out");
    QTest::addColumn<QString>("err");
    QTest::newRow("list in album order") << QStringList{"album", "list", "ALBUM"} << 0 << "c.jpg\na.jpg\nb.jpg\n" << "";
    QTest::newRow("find a day") << QStringList{"album", "find-date", "ALBUM", "2026-03-02"} << 0 << "c.jpg\nb.jpg\n" << "";
    QTest::newRow("find with a bad date") << QStringList{"album", "find-date", "ALBUM", "March"} << 2 << "" << "usage:";
    QTest::newRow("arrange by name") << QStringList{"album", "arrange", "ALBUM", "file"} << 0 << "" << "";
    QTest::newRow("read-only value") << QStringList{"album", "set", "ALBUM", "a.jpg", "CameraModel", "X"} << 1 << "" << "Camera Model is read-only";
    QTest::newRow("photo not in the album") << QStringList{"album", "star", "ALBUM", "z.jpg"} << 1 << "" << "z.jpg";
    QTest::newRow("missing album") << QStringList{"album", "info", "/no/such/album"} << 1 << "" << "/no/such/album";
    QTest::newRow("unknown verb") << QStringList{"album", "paint", "ALBUM"} << 2 << "" << "unknown verb";
}

void CliAlbumTest::verbs()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QFETCH(QString, out);
    QFETCH(QString, err);
    WriteAlbum();
    arguments.replaceInStrings(QStringLiteral("ALBUM"), album);
    const QByteArray before = ReadAll(AlbumFormat::StudioPlistPath(album));
    const CliRun run = Cli(arguments);
    QCOMPARE(run.exitCode, exitCode);
    QCOMPARE(run.out, out);
    QVERIFY2(run.err.contains(err), qPrintable(run.err));
    const bool changes = arguments[1] == QLatin1String("arrange") && exitCode == 0;
    QCOMPARE(ReadAll(AlbumFormat::StudioPlistPath(album)) != before, changes);
}

void CliAlbumTest::convertCorpusFolder()
{
    const QString folder = home->path() + QStringLiteral("/Card");
    QDir().mkpath(folder);
    const QDir corpus(QStringLiteral(ORVANA_SOURCE_DIR "/../shared/corpus/photos"));
    const QStringList photos = corpus.entryList({QStringLiteral("*.jpg")}, QDir::Files).mid(0, 3);
    QCOMPARE(photos.size(), 3);
    for (const QString &photo : photos)
        QVERIFY(QFile::copy(corpus.filePath(photo), folder + u'/' + photo));

    QDir().mkpath(folder + QStringLiteral("/Extras"));
    const CliRun refused = Cli({"convert", "Card"});
    QCOMPARE(refused.exitCode, 1);
    QVERIFY(QFileInfo::exists(folder));
    QDir(folder + QStringLiteral("/Extras")).removeRecursively();

    const CliRun converted = Cli({"convert", "Card"});
    QCOMPARE(converted.exitCode, 0);
    QCOMPARE(converted.out.trimmed(), folder + QStringLiteral(".album"));
    QVERIFY(!QFileInfo::exists(folder));
    QVERIFY(QFileInfo::exists(folder + QStringLiteral(".album/") + photos[0]));
    QVERIFY(QFileInfo::exists(AlbumFormat::StudioPlistPath(folder + QStringLiteral(".album"))));
    QCOMPARE(Cli({"convert", "Card.album"}).exitCode, 1);
}

void CliAlbumTest::damagedAlbumIsLeftAlone()
{
    QDir().mkpath(AlbumFormat::StudioDataPath(album));
    const QByteArray damaged = "<?xml version=\"1.0\"?><plist><dict><key>Items</key><array><dict>";
    WriteAll(AlbumFormat::StudioPlistPath(album), damaged);
    const CliRun run = Cli({"album", "star", album, "a.jpg"});
    QCOMPARE(run.exitCode, 1);
    QVERIFY2(run.err.contains(QStringLiteral("damaged")), qPrintable(run.err));
    QCOMPARE(ReadAll(AlbumFormat::StudioPlistPath(album)), damaged);
}

QTEST_GUILESS_MAIN(CliAlbumTest)
#include "tst_CliAlbum.moc"
