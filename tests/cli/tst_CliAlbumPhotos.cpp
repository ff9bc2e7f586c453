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
    qunsetenv("XDG_DATA_HOME");
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
    QTest::addColumn<QList<QStringList>>("steps"); // on an album "A" of p1.jpg .. p3.jpg; "fails" first: exit 1
    QTest::addColumn<QString>("out");              // of the last step
    QTest::addColumn<QStringList>("err");          // found in the last step's stderr
    QTest::addColumn<QString>("key");
    QTest::addColumn<QStringList>("values");       // of the key over the records afterwards
    QTest::addColumn<QStringList>("files");        // that exist afterwards ("!": that do not)
    using Steps = QList<QStringList>;
    using L = QStringList;
    QTest::newRow("one note for many, then search") << Steps{{"album", "set-note", "A", "Harbour at dawn", "p1.jpg", "p3.jpg"}, {"album", "search", "A", "HARBOUR"}}
                                                   << "p1.jpg\np3.jpg\n" << L{} << "Description" << L{"Harbour at dawn", "", "Harbour at dawn"} << L{};
    QTest::newRow("keywords copied and added") << Steps{{"album", "set", "A", "p1.jpg", "keywords", "sea;boat;"}, {"album", "set", "A", "p2.jpg", "keywords", "Boat;"},
                                                       {"album", "keywords-copy", "A", "p1.jpg"}, {"album", "keywords-paste", "A", "p2.jpg", "p3.jpg"}}
                                               << "" << L{} << "Keywords" << L{"sea;boat;", "Boat;sea;", "sea;boat;"} << L{};
    QTest::newRow("rotate right") << Steps{{"album", "rotate", "A", "right", "p1.jpg"}} << "" << L{} << "Width" << L{"968", "800", "640"} << L{};
    // One file, one record: the album's own photo, a folder holding it, a photo pasted into its
    // own album are copies with records of their own, and a check drops no note.
    QTest::newRow("own photos imported again are copies") << Steps{{"album", "set", "A", "p1.jpg", "note", "N"}, {"album", "import", "A", "A/p1.jpg"},
                                                                   {"fails", "album", "import", "A", "A"}, {"album", "copy", "A", "p2.jpg"}, {"album", "paste", "A"}, {"album", "check", "A", "--remove-missing"}}
                                                           << "" << L{} << "File" << L{"p1.jpg", "p2.jpg", "p3.jpg", "p1(1).jpg", "p1(1)(1).jpg", "p1(2).jpg", "p2(1).jpg", "p3(1).jpg", "p2(2).jpg"} << L{};
    // Names differing only in case are two photos; a name in another case finds its one photo.
    QTest::newRow("names in two cases") << Steps{{"@copy", "A/p1.jpg", "A/P1.JPG"}, {"album", "set", "A", "p1.jpg", "note", "lower"}, {"album", "check", "A", "--remove-missing"},
                                                 {"album", "set", "A", "P1.JPG", "note", "upper"}, {"album", "set", "A", "P2.JPG", "note", "two"}, {"album", "check", "A", "--remove-missing"}}
                                        << "" << L{} << "Description" << L{"lower", "two", "", "upper"} << L{};
    QTest::newRow("what is not imported is named") << Steps{{"@write", "notes.txt"}, {"@mkdir", "empty"}, {"fails", "album", "import", "A", "gone.jpg", "notes.txt", "empty"}}
                                                   << "" << L{"gone.jpg: does not exist", "notes.txt: not a photo", "empty: holds no photo"} << "File" << L{"p1.jpg", "p2.jpg", "p3.jpg"} << L{};
    QTest::newRow("an undecodable photo: record and warning") << Steps{{"@write", "bad.jpg"}, {"fails", "album", "import", "A", "bad.jpg"}}
                                                              << "bad.jpg\n" << L{"bad.jpg: imported, but no thumbnail"} << "File" << L{"p1.jpg", "p2.jpg", "p3.jpg", "bad.jpg"} << L{};
    // Pixel sizes come from the picture when its tags give none; an unreadable one is 0 by 0.
    QTest::newRow("sizes of a 16-bit TIFF and of a damaged JPEG") << Steps{{"settings", "set", "System", "AllowNonJPEG", "1"},
                                                                     {"fails", "album", "import", "A", Corpus + "drewnoakes-Issue_555_1.tif", Corpus + "../photos-malformed/exiv2-issue_2352_poc.jpg"}}
                                                              << "drewnoakes-Issue_555_1.tif\nexiv2-issue_2352_poc.jpg\n" << L{"exiv2-issue_2352_poc.jpg: imported, but no thumbnail"}
                                                              << "Width" << L{"1296", "800", "640", "1600", "0"} << L{};
    QTest::newRow("drop folder: its subfolders stay") << Steps{{"@copy", "A/p1.jpg", "A/raw.files/DCIM/100CANON/x.jpg"}, {"@copy", "A/p2.jpg", "A/raw.files/top.jpg"},
                                                               {"@write", "A/raw.files/t.txt"}, {"fails", "album", "list", "A"}}
                                                      << "p1.jpg\np2.jpg\np3.jpg\ntop.jpg\n" << L{"x.jpg: lies in a subfolder", "t.txt: not a photo", "kept in non-photo.files as t.txt"}
                                                      << "File" << L{"p1.jpg", "p2.jpg", "p3.jpg", "top.jpg"} << L{"A/raw.files/DCIM/100CANON/x.jpg", "A/non-photo.files/t.txt", "!A/raw.files/top.jpg"};
    // A camera import takes what the album lacks (same name, size and capture time: in it), never
    // a phone's hidden previews, and leaves the card as it was.
    QTest::newRow("camera import skips photos in the album") << Steps{{"@copy", "A/p1.jpg", "card/DCIM/100CANON/p1.jpg"}, {"@copy", "A/p2.jpg", "card/DCIM/100CANON/new.jpg"},
                                                                      {"@copy", "A/p3.jpg", "card/DCIM/.thumbnails/t.jpg"}, {"album", "camera-import", "A", "card"}}
                                                             << "new.jpg\n" << L{} << "File" << L{"p1.jpg", "p2.jpg", "p3.jpg", "new.jpg"}
                                                             << L{"card/DCIM/100CANON/p1.jpg", "card/DCIM/100CANON/new.jpg", "!A/raw.files"};
    QTest::newRow("a photo the trash refuses stays") << Steps{{"@write", "blocker"}, {"@env", "blocker/data"}, {"fails", "album", "delete", "A", "p2.jpg", "p3.jpg"}}
                                                     << "" << L{"p2.jpg could not be moved to the trash: there is no trash", "p3.jpg could not"} << "File" << L{"p1.jpg", "p2.jpg", "p3.jpg"} << L{"A/p2.jpg"};
    QTest::newRow("changes outside: new, rewritten, gone") << Steps{{"@copy", "A/p3.jpg", "A/new.jpg"}, {"@write", "A/p1.jpg"}, {"@remove", "A/p2.jpg"}, {"album", "check", "A", "--remove-missing"}}
                                                         << "" << L{} << "Size" << L{"13", "126300", "126300"} << L{"!A/p2.jpg"};
    // Every edit keeps the photo as it was first; revert puts that file back, in an album moved
    // since, and the record takes back its size.
    QTest::newRow("revert after a turn and sepia") << Steps{{"album", "rotate", "A", "right", "p1.jpg"}, {"album", "edit", "A", "sepia", "p1.jpg"}, {"@move", "A", "Moved"},
                                                           {"album", "revert", "Moved", "p1.jpg"}, {"@move", "Moved", "A"}}
                                                   << "" << L{} << "Size" << L{"338025", "25248", "126300"} << L{"!A/studio.data/originals/p1.jpg"};
    QTest::newRow("an unedited photo has nothing to revert") << Steps{{"album", "edit", "A", "bw", "p1.jpg"}, {"fails", "album", "revert", "A", "p1.jpg", "p2.jpg"}}
                                                             << "" << L{"1 of 2 photos could not be changed"} << "Size" << L{"338025", "25248", "126300"} << L{};
    QTest::newRow("a deleted photo's original goes to the trash with it") << Steps{{"album", "edit", "A", "enhance", "p2.jpg"}, {"album", "delete", "A", "p2.jpg"}}
                                                                          << "" << L{} << "File" << L{"p1.jpg", "p3.jpg"}
                                                                          << L{"!A/studio.data/originals/p2.jpg", ".local/share/Trash/files/p2.jpg", "!A/p2.jpg"};
    // A photo gone outside the program leaves its original behind; another photo taken in under
    // that name must never be reverted to it.
    QTest::newRow("a new photo under an old name has no original") << Steps{{"album", "rotate", "A", "left", "p1.jpg"}, {"@remove", "A/p1.jpg"}, {"album", "check", "A", "--remove-missing"},
                                                                           {"@copy", "A/p3.jpg", "A/p1.jpg"}, {"album", "check", "A"}, {"fails", "album", "revert", "A", "p1.jpg"}}
                                                                   << "" << L{} << "Size" << L{"25248", "126300", "126300"} << L{"!A/studio.data/originals/p1.jpg"};
    QTest::newRow("arranged by name as a file manager does") << Steps{{"@copy", "A/p1.jpg", "A/P10.jpg"}, {"album", "check", "A"}, {"album", "arrange", "A", "file", "--desc"}}
                                                             << "" << L{} << "File" << L{"P10.jpg", "p3.jpg", "p2.jpg", "p1.jpg"} << L{};
}

void CliAlbumPhotosTest::verbs()
{
    QFETCH(QList<QStringList>, steps);
    QFETCH(QString, out);
    QFETCH(QStringList, err);
    QFETCH(QString, key);
    QFETCH(QStringList, values);
    QFETCH(QStringList, files);
    MakeAlbum(QStringLiteral("A"), 3);
    const QString root = home->path() + u'/';
    CliRun last{};
    for (QStringList step : steps) {
        if (step[0] == QLatin1String("@copy"))
            QVERIFY(QDir().mkpath(QFileInfo(root + step[2]).path()) && QFile::copy(root + step[1], root + step[2]));
        else if (step[0] == QLatin1String("@write"))
            WriteAll(root + step[1], "not a picture");
        else if (step[0] == QLatin1String("@remove"))
            QFile::remove(root + step[1]);
        else if (step[0] == QLatin1String("@mkdir"))
            QDir().mkpath(root + step[1]);
        else if (step[0] == QLatin1String("@move"))
            QVERIFY(QDir().rename(root + step[1], root + step[2]));
        else if (step[0] == QLatin1String("@env"))
            qputenv("XDG_DATA_HOME", (root + step[1]).toUtf8()); // under a file: no trash can be made
        if (step[0].startsWith(u'@'))
            continue;
        const int expected = step[0] == QLatin1String("fails") ? 1 : 0;
        last = Cli(expected ? step.mid(1) : step);
        QVERIFY2(last.exitCode == expected, qPrintable(step.join(u' ') + QStringLiteral(": ") + last.err));
    }
    QCOMPARE(last.out, out);
    for (const QString &text : err)
        QVERIFY2(last.err.contains(text), qPrintable(last.err));
    qunsetenv("XDG_DATA_HOME");
    QCOMPARE(Names(Records(QStringLiteral("A")), key.toLatin1().constData()), values);
    for (const QString &file : files)
        QVERIFY2(QFileInfo::exists(root + QString(file).remove(u'!')) != file.startsWith(u'!'), qPrintable(file));
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
