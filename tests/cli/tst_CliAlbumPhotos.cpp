#include "CliRunner.h"
#include "TestEnvironment.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTest>
#include <csignal>

// The album verbs that bring photos in, annotate, move and rewrite them, on real photos through
// the real orvana-cli and ExifTool.
class CliAlbumPhotosTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void verbs_data();
    void verbs();
    void copyCutAndPaste();
    void writeMetadataReadsBack();
    void killedImportReopens();

private:
    CliRun Cli(const QStringList &arguments) { return RunCli(home->path(), arguments); }
    QJsonArray Records(const QString &album);
    void MakeAlbum(const QString &album, int photos);
    std::unique_ptr<QTemporaryDir> home;
};

namespace {

const QString Corpus = QStringLiteral(ORVANA_SOURCE_DIR "/../shared/corpus/photos/");

QStringList Names(const QJsonArray &records, const char *key = "File")
{
    QStringList names;
    for (const QJsonValue &record : records)
        names << record.toObject().value(QLatin1String(key)).toString();
    return names;
}

} // namespace

void CliAlbumPhotosTest::init()
{
    home = std::make_unique<QTemporaryDir>();
}

QJsonArray CliAlbumPhotosTest::Records(const QString &album)
{
    return QJsonDocument::fromJson(Cli({"album", "list", album, "--json"}).out.toUtf8()).array();
}

// An album with copies of corpus photos named p1.jpg, p2.jpg, ...
void CliAlbumPhotosTest::MakeAlbum(const QString &album, int photos)
{
    const QString source = home->path() + QStringLiteral("/source-") + album;
    QDir().mkpath(source);
    const QStringList corpus = QDir(Corpus).entryList({QStringLiteral("*.jpg")}, QDir::Files, QDir::Name);
    for (int i = 0; i < photos; ++i)
        QFile::copy(Corpus + corpus[i % corpus.size()], source + QStringLiteral("/p%1.jpg").arg(i + 1));
    QCOMPARE(Cli({"album", "create", album}).exitCode, 0);
    QCOMPARE(Cli({"album", "import", album, source}).exitCode, 0);
}

void CliAlbumPhotosTest::verbs_data()
{
    QTest::addColumn<QList<QStringList>>("steps"); // on an album "A" of p1.jpg .. p3.jpg
    QTest::addColumn<QString>("out");              // of the last step
    QTest::addColumn<QString>("key");
    QTest::addColumn<QStringList>("values");       // of the key over the records afterwards
    using Steps = QList<QStringList>;
    QTest::newRow("one note for many, then search") << Steps{{"album", "set-note", "A", "Harbour at dawn", "p1.jpg", "p3.jpg"}, {"album", "search", "A", "HARBOUR"}}
                                                   << "p1.jpg\np3.jpg\n" << "Description" << QStringList{"Harbour at dawn", "", "Harbour at dawn"};
    QTest::newRow("keywords copied and added") << Steps{{"album", "set", "A", "p1.jpg", "keywords", "sea;boat;"}, {"album", "set", "A", "p2.jpg", "keywords", "Boat;"},
                                                       {"album", "keywords-copy", "A", "p1.jpg"}, {"album", "keywords-paste", "A", "p2.jpg", "p3.jpg"}}
                                               << "" << "Keywords" << QStringList{"sea;boat;", "Boat;sea;", "sea;boat;"};
    QTest::newRow("rotate right") << Steps{{"album", "rotate", "A", "right", "p1.jpg"}} << "" << "Width" << QStringList{"968", "800", "640"};
    QTest::newRow("import prints the new names") << Steps{{"album", "import", "A", "source-A/p1.jpg"}} << "p1(1).jpg\n" << "File" << QStringList{"p1.jpg", "p2.jpg", "p3.jpg", "p1(1).jpg"};
}

void CliAlbumPhotosTest::verbs()
{
    QFETCH(QList<QStringList>, steps);
    QFETCH(QString, out);
    QFETCH(QString, key);
    QFETCH(QStringList, values);
    MakeAlbum(QStringLiteral("A"), 3);
    CliRun last{};
    for (const QStringList &step : steps) {
        last = Cli(step);
        QVERIFY2(last.exitCode == 0, qPrintable(step.join(u' ') + QStringLiteral(": ") + last.err));
    }
    QCOMPARE(last.out, out);
    QCOMPARE(Names(Records(QStringLiteral("A")), key.toLatin1().constData()), values);
}

void CliAlbumPhotosTest::copyCutAndPaste()
{
    MakeAlbum(QStringLiteral("From"), 3);
    QCOMPARE(Cli({"album", "create", "To"}).exitCode, 0);
    QCOMPARE(Cli({"album", "set", "From", "p2.jpg", "note", "Lighthouse"}).exitCode, 0);
    QCOMPARE(Cli({"album", "star", "From", "p2.jpg"}).exitCode, 0);

    QCOMPARE(Cli({"album", "copy", "From", "p2.jpg"}).exitCode, 0);
    QCOMPARE(Cli({"album", "paste", "To"}).out, QStringLiteral("p2.jpg\n"));
    const QJsonObject pasted = Records(QStringLiteral("To"))[0].toObject();
    QCOMPARE(pasted.value(QStringLiteral("Description")).toString(), QStringLiteral("Lighthouse"));
    QCOMPARE(pasted.value(QStringLiteral("Star")).toString(), QStringLiteral("1"));
    QCOMPARE(Names(Records(QStringLiteral("From"))).size(), 3);

    QCOMPARE(Cli({"album", "cut", "From", "p1.jpg", "p3.jpg"}).exitCode, 0);
    QCOMPARE(Cli({"album", "paste", "From"}).out, QString()); // back into its own album: nothing
    QCOMPARE(Cli({"album", "paste", "To"}).out, QStringLiteral("p1.jpg\np3.jpg\n"));
    QCOMPARE(Names(Records(QStringLiteral("From"))), QStringList{"p2.jpg"});
    QVERIFY(!QFileInfo::exists(home->path() + QStringLiteral("/From/p1.jpg")));
    QCOMPARE(Cli({"album", "paste", "To"}).out, QString()); // a cut is pasted once
    QCOMPARE(Names(Records(QStringLiteral("To"))), (QStringList{"p2.jpg", "p1.jpg", "p3.jpg"}));
}

void CliAlbumPhotosTest::writeMetadataReadsBack()
{
    MakeAlbum(QStringLiteral("Tags"), 2);
    const QString note = QStringLiteral("Quay \"North\" \\ Pier, caf\u00e9");
    QCOMPARE(Cli({"album", "set", "Tags", "p1.jpg", "note", note}).exitCode, 0);
    QCOMPARE(Cli({"album", "set", "Tags", "p1.jpg", "keywords", "pier;night;"}).exitCode, 0);
    QCOMPARE(Cli({"album", "set", "Tags", "p1.jpg", "lat", "-33.856784"}).exitCode, 0);
    QCOMPARE(Cli({"album", "set", "Tags", "p1.jpg", "lon", "151.215297"}).exitCode, 0);
    const CliRun written = Cli({"album", "write-metadata", "Tags", "p1.jpg"});
    QVERIFY2(written.exitCode == 0, qPrintable(written.err));

    QProcess exiftool;
    exiftool.start(QStringLiteral("exiftool"), {QStringLiteral("-j"), QStringLiteral("-n"), QStringLiteral("-Caption-Abstract"),
                                                QStringLiteral("-Keywords"), QStringLiteral("-GPSLatitude#"), QStringLiteral("-Composite:GPSLatitude"),
                                                QStringLiteral("-Composite:GPSLongitude"), home->path() + QStringLiteral("/Tags/p1.jpg")});
    QVERIFY(exiftool.waitForFinished(60000));
    const QJsonObject tags = QJsonDocument::fromJson(exiftool.readAllStandardOutput()).array()[0].toObject();
    QCOMPARE(tags.value(QStringLiteral("Caption-Abstract")).toString(), note);
    QCOMPARE(tags.value(QStringLiteral("Keywords")).toArray().size(), 2);
    QCOMPARE(QString::number(tags.value(QStringLiteral("GPSLatitude")).toDouble(), 'f', 6), QStringLiteral("-33.856784"));
    const QJsonObject record = Records(QStringLiteral("Tags"))[0].toObject();
    QCOMPARE(record.value(QStringLiteral("Size")).toString(), QString::number(QFileInfo(home->path() + QStringLiteral("/Tags/p1.jpg")).size()));
}

// An import killed at any moment leaves an album that opens, and the photos it had copied are
// taken in by the next outside-change check, each once.
void CliAlbumPhotosTest::killedImportReopens()
{
    const QString source = home->path() + QStringLiteral("/many");
    QDir().mkpath(source);
    const QStringList corpus = QDir(Corpus).entryList({QStringLiteral("*.jpg")}, QDir::Files, QDir::Name);
    for (int i = 0; i < 300; ++i)
        QFile::copy(Corpus + corpus[i % corpus.size()], source + QStringLiteral("/m%1.jpg").arg(i));
    QCOMPARE(Cli({"album", "create", "Big"}).exitCode, 0);

    QProcess import;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), home->path());
    import.setProcessEnvironment(environment);
    import.setWorkingDirectory(home->path());
    import.start(QStringLiteral(ORVANA_BIN_DIR "/orvana-cli"), {"album", "import", "Big", "many"});
    QVERIFY(import.waitForStarted());
    const QDir album(home->path() + QStringLiteral("/Big"));
    QTRY_VERIFY_WITH_TIMEOUT(album.entryList({QStringLiteral("*.jpg")}, QDir::Files).size() >= 20, 60000);
    ::kill(static_cast<pid_t>(import.processId()), SIGKILL);
    QVERIFY(import.waitForFinished(10000));

    const QJsonArray records = Records(QStringLiteral("Big"));
    QStringList recorded = Names(records);
    QStringList onDisk = album.entryList({QStringLiteral("*.jpg")}, QDir::Files, QDir::Name);
    recorded.sort();
    QCOMPARE(recorded, onDisk);
    QVERIFY(onDisk.size() < 300);
    QVERIFY(recorded.filter(QStringLiteral("(1)")).isEmpty());
}

QTEST_GUILESS_MAIN(CliAlbumPhotosTest)
#include "tst_CliAlbumPhotos.moc"
