#include "library/AlbumFormat.h"
#include "CliRunner.h"
#include "datalist/DataList.h"
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
    void convertAndPackages_data();
    void convertAndPackages();
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

    const QJsonObject object = QJsonDocument::fromJson(Cli({"album", "info", "New.ALBUM", "--json"}).out.toUtf8()).object();
    QCOMPARE(object.value(QStringLiteral("title")).toString(), QStringLiteral("New"));
    QCOMPARE(object.value(QStringLiteral("photos")).toInt(), 0);
    QCOMPARE(object.value(QStringLiteral("identification")).toString().size(), 36);
    // Only the texts given change, and the list is saved.
    QCOMPARE(Cli({"album", "describe", "New.ALBUM", "--title", "Coast", "--description=Two\nlines"}).exitCode, 0);
    QCOMPARE(Cli({"album", "describe", "New.ALBUM", "--id", "coast-2026"}).exitCode, 0);
    QCOMPARE(Cli({"album", "describe", "New.ALBUM", "--id", "../up"}).exitCode, 1);
    const QJsonObject described = QJsonDocument::fromJson(Cli({"album", "info", "New.ALBUM", "--json"}).out.toUtf8()).object();
    QCOMPARE(QStringList({described.value(QStringLiteral("title")).toString(), described.value(QStringLiteral("identification")).toString(), described.value(QStringLiteral("description")).toString()}),
             QStringList({"Coast", "coast-2026", "Two\nlines"}));

    WriteAlbum();
    QCOMPARE(Cli({"album", "set", album, "a.jpg", "note", "Fog on the \"ridge\""}).exitCode, 0);
    QCOMPARE(Cli({"album", "set", album, "a.jpg", "lat", "46.5"}).exitCode, 0);
    QCOMPARE(Cli({"album", "star", album, "a.jpg", "b.jpg"}).exitCode, 0);
    QCOMPARE(Cli({"album", "star", album, "--off", "b.jpg"}).exitCode, 0);
    QCOMPARE(Cli({"album", "arrange", album, "time", "--desc"}).exitCode, 0);

    const QJsonArray records = QJsonDocument::fromJson(Cli({"album", "list", album, "--json"}).out.toUtf8()).array();
    QCOMPARE(records.size(), 3);
    QStringList values;
    for (const auto &[record, key] : {std::pair{0, "File"}, {0, "Star"}, {2, "File"}, {2, "Description"}, {2, "Latitude"}, {2, "Star"}, {2, "Rating"}})
        values << records[record].toObject().value(QLatin1String(key)).toString();
    QCOMPARE(values, (QStringList{"b.jpg", "0", "a.jpg", "Fog on the \"ridge\"", "46.500000", "1", "5"}));

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
    QTest::newRow("read-only value") << QStringList{"album", "set", "ALBUM", "a.jpg", "CameraModel", "X"} << 1 << "" << "Camera Model is read-only";
    QTest::newRow("latitude past the pole") << QStringList{"album", "set", "ALBUM", "a.jpg", "lat", "91"} << 1 << "" << "from -90 to 90";
    QTest::newRow("capture date without time") << QStringList{"album", "set", "ALBUM", "a.jpg", "date", "2025-12-31"} << 1 << "" << "yyyy-mm-dd hh:mm:ss";
    QTest::newRow("a star is 1 or 0") << QStringList{"album", "set", "ALBUM", "a.jpg", "star", "yes"} << 1 << "" << "1 or 0";
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
    QCOMPARE(ReadAll(AlbumFormat::StudioPlistPath(album)), before);
}

// Folder and package albums (DefaultAlbumFormat 0 and 1) made by convert and by create, then
// used: the photos of a package lie in "studio.data/size_full".
void CliAlbumTest::convertAndPackages_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("photos"); // where an album's photos lie, inside it
    QTest::newRow("folder albums") << "0" << "";
    QTest::newRow("package albums") << "1" << "/studio.data/size_full";
}

void CliAlbumTest::convertAndPackages()
{
    QFETCH(QString, format);
    QFETCH(QString, photos);
    QCOMPARE(Cli({"settings", "set", "System", "DefaultAlbumFormat", format}).exitCode, 0);
    const QString folder = home->path() + QStringLiteral("/Card");
    QDir().mkpath(folder + QStringLiteral("/Extras"));
    const QDir corpus(QStringLiteral(ORVANA_SOURCE_DIR "/../shared/corpus/photos"));
    const QStringList names = corpus.entryList({QStringLiteral("*.jpg")}, QDir::Files).mid(0, 3);
    for (const QString &photo : names)
        QVERIFY(QFile::copy(corpus.filePath(photo), folder + u'/' + photo));
    QCOMPARE(Cli({"convert", "Card"}).exitCode, 1);
    QVERIFY(QDir(folder + QStringLiteral("/Extras")).removeRecursively());

    const CliRun converted = Cli({"convert", "Card"});
    QVERIFY2(converted.exitCode == 0, qPrintable(converted.err));
    QCOMPARE(converted.out.trimmed(), folder + QStringLiteral(".album"));
    QVERIFY(!QFileInfo::exists(folder) && !QFileInfo::exists(folder + QStringLiteral(".album/raw.files")));
    QCOMPARE(QDir(folder + QStringLiteral(".album") + photos).entryList({QStringLiteral("*.jpg")}), names);
    QCOMPARE(Cli({"album", "list", "Card.album"}).out, names.join(u'\n') + u'\n');
    QCOMPARE(Cli({"convert", "Card.album"}).exitCode, 1);

    QCOMPARE(Cli({"album", "create", "New.album"}).exitCode, 0);
    QCOMPARE(Cli({"album", "import", "New.album", corpus.filePath(names[0])}).out, names[0] + u'\n');
    QVERIFY(QFile::copy(corpus.filePath(names[1]), home->path() + QStringLiteral("/New.album") + photos + QStringLiteral("/outside.jpg")));
    QCOMPARE(Cli({"album", "check", "New.album"}).exitCode, 0);
    QCOMPARE(Cli({"album", "list", "New.album"}).out, names[0] + QStringLiteral("\noutside.jpg\n"));
    const QJsonObject info = QJsonDocument::fromJson(Cli({"album", "info", "New.album", "--json"}).out.toUtf8()).object();
    QCOMPARE(info.value(QStringLiteral("package")).toBool(), format == QLatin1String("1"));
    QCOMPARE(info.value(QStringLiteral("bytesOnDisk")).toInteger(), info.value(QStringLiteral("bytesByList")).toInteger());
}

// A list that cannot be read is never written over, whatever the verb; each says why.
void CliAlbumTest::damagedAlbumIsLeftAlone()
{
    QDir().mkpath(AlbumFormat::StudioDataPath(album));
    QDir().mkpath(album + QStringLiteral("/raw.files"));
    const QByteArray damaged = "<?xml version=\"1.0\"?><plist><dict><key>Items</key><array><dict>";
    WriteAll(AlbumFormat::StudioPlistPath(album), damaged);
    WriteAll(album + QStringLiteral("/raw.files/a.jpg"), ReadAll(QStringLiteral(ORVANA_SOURCE_DIR "/../shared/corpus/photos/drewnoakes-Canon_PowerShot_S330.jpg")));
    const QList<QStringList> runs = {{"album", "star", album, "a.jpg"}, {"album", "import", album, album + "/raw.files/a.jpg"},
                                     {"album", "set", album, "a.jpg", "note", "x"}, {"album", "describe", album, "--title", "T"},
                                     {"album", "check", album, "--remove-missing"}, {"album", "arrange", album, "file"}};
    for (const QStringList &arguments : runs) {
        const CliRun run = Cli(arguments);
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.err.contains(QStringLiteral("studio.plist: The file is damaged")), qPrintable(run.err));
    }
    QCOMPARE(ReadAll(AlbumFormat::StudioPlistPath(album)), damaged);
    QVERIFY(QFileInfo::exists(album + QStringLiteral("/raw.files/a.jpg")));
}

QTEST_GUILESS_MAIN(CliAlbumTest)
#include "tst_CliAlbum.moc"
