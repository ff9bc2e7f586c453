#include "CliRunner.h"
#include "FakeWebServer.h"
#include "GpsTestSupport.h"
#include "TestEnvironment.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTest>

// orvana-cli gps run as a separate process under a HOME of the test's own, on corpus tracks
// and real album folders.
class CliGpsTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void usage_data();
    void usage();
    void logDatabase();
    void geotagging();
    void timeShifts();
    void earthFiles();
    void valuesRefusedOrKept_data();
    void valuesRefusedOrKept();
    void geocode_data();
    void geocode();

private:
    CliRun Cli(const QStringList &arguments) { return RunCli(home->path(), arguments); }
    QJsonArray Json(const QStringList &arguments);
    QString Record(const QString &file, const QString &key);
    void WriteFurnaceCreekAlbum();
    std::unique_ptr<QTemporaryDir> home;
    QString album;
};

void CliGpsTest::init()
{
    home = std::make_unique<QTemporaryDir>();
    album = home->path() + QStringLiteral("/Death Valley");
}

QJsonArray CliGpsTest::Json(const QStringList &arguments)
{
    const CliRun run = Cli(arguments);
    if (run.exitCode != 0)
        qWarning() << run.err;
    return QJsonDocument::fromJson(run.out.toUtf8()).array();
}

QString CliGpsTest::Record(const QString &file, const QString &key)
{
    for (const auto &record : Json({"album", "list", album, "--json"})) {
        if (record[QStringLiteral("File")].toString() == file)
            return record[key].toString();
    }
    return QStringLiteral("(no record)");
}

void CliGpsTest::WriteFurnaceCreekAlbum()
{
    QDir().mkpath(album);
    for (const char *name : {"exiv2-FurnaceCreekInn2.jpg", "exiv2-FurnaceCreekInn3.jpg"})
        QFile::copy(QStringLiteral(ORVANA_SOURCE_DIR "/../shared/corpus/photos/") + QLatin1String(name), album + u'/' + QLatin1String(name));
    MakeAlbum(album, {{"File=exiv2-FurnaceCreekInn2.jpg", "CaptureDate=2008-05-08 09:54:34", "Width=400", "Height=300"},
                      {"File=exiv2-FurnaceCreekInn3.jpg", "CaptureDate=2008-05-08 09:54:41", "Width=400", "Height=300"}});
}

void CliGpsTest::usage_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("out");
    QTest::addColumn<QString>("err");

    QTest::newRow("group help") << QStringList{"gps", "--help"} << 0 << "gps match ALBUM" << "";
    QTest::newRow("verb help") << QStringList{"gps", "kmz", "--help"} << 0 << "gps kmz ALBUM OUT.kmz" << "";
    QTest::newRow("no verb") << QStringList{"gps"} << 2 << "" << "gps needs a verb";
    QTest::newRow("unknown verb") << QStringList{"gps", "fly"} << 2 << "" << "unknown verb";
    QTest::newRow("unknown option") << QStringList{"gps", "tracks", "--xml"} << 2 << "" << "unknown option";
    QTest::newRow("option without its value") << QStringList{"gps", "match", "A", "--offset"} << 2 << "" << "needs a value";
    QTest::newRow("unknown type") << QStringList{"gps", "import", "x.log", "--type", "kml"} << 2 << "" << "usage:";
    QTest::newRow("offset out of range") << QStringList{"gps", "tracks", "--offset", "30"} << 2 << "" << "--offset";
    QTest::newRow("shift by a third of an hour") << QStringList{"gps", "shift", "Album", "0.3", "a.jpg"} << 2 << "" << "whole or half";
    QTest::newRow("waypoint without a number") << QStringList{"gps", "waypoint", "add", "Hut", "north", "13"} << 2 << "" << "\"north\" is not a latitude";
    QTest::newRow("missing file") << QStringList{"gps", "import", "nowhere.gpx"} << 1 << "" << "could not be imported";
    QTest::newRow("nothing to remove") << QStringList{"gps", "track", "remove", "Ghost"} << 1 << "" << "no track named";
    QTest::newRow("missing album") << QStringList{"gps", "match", "nowhere"} << 1 << "" << "nowhere";
    QTest::newRow("download of routes") << QStringList{"gps", "download", "routes", "garmin", "USB"} << 2 << "" << "usage:";
    QTest::newRow("no receiver on the port") << QStringList{"gps", "download", "tracks", "garmin", "COM12"} << 1 << ""
                                             << "No tracks could be downloaded";
    QTest::newRow("nothing to rename") << QStringList{"gps", "track", "rename", "Ghost", "Spirit"} << 1 << "" << "no track named";
}

void CliGpsTest::usage()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QFETCH(QString, out);
    QFETCH(QString, err);
    const CliRun run = Cli(arguments);
    QCOMPARE(run.exitCode, exitCode);
    QVERIFY2(run.out.contains(out), qPrintable(run.out));
    QVERIFY2(run.err.contains(err), qPrintable(run.err));
}

void CliGpsTest::logDatabase()
{
    const CliRun imported = Cli({"gps", "import", CorpusTrack(QStringLiteral("gpsbabel-gdb-sample.gpx"))});
    QCOMPARE(imported.exitCode, 0);
    QCOMPARE(imported.out, QStringLiteral("The GPS log file has been imported.\n9 track(s), 747 point(s), 9 waypoint(s)\n"));
    QCOMPARE(Cli({"gps", "import", CorpusTrack(QStringLiteral("mapsoft2-test.plt"))}).exitCode, 0);
    const QJsonArray tracks = Json({"gps", "tracks", "--json", "--offset", "2"});
    QCOMPARE(tracks.size(), 12);
    QCOMPARE(tracks[0][QStringLiteral("begin")].toString(), QStringLiteral("2005-05-01 12:12:47"));
    QCOMPARE(tracks[0][QStringLiteral("beginUtc")].toString(), QStringLiteral("2005-05-01 10:12:47"));
    QCOMPARE(tracks[0][QStringLiteral("points")].toInt(), 17);
    QCOMPARE(tracks[11][QStringLiteral("points")].toInt(), 18);

    QCOMPARE(Cli({"gps", "waypoint", "add", "Hut & bar", "46.5", "-13.25", "1500.26", "beds"}).exitCode, 0);
    const QJsonArray waypoints = Json({"gps", "waypoints", "--json"});
    QCOMPARE(waypoints.size(), 10);
    QCOMPARE(waypoints[9].toObject(), (QJsonObject{{"name", "Hut & bar"}, {"lat", "46.5"}, {"lon", "-13.25"}, {"ele", "1500.3"}, {"desc", "beds"}}));

    const QString out = home->path() + QStringLiteral("/all.gpx");
    QCOMPARE(Cli({"gps", "export", "tracks", out}).out.trimmed(), out);
    QVERIFY(ReadAll(out).startsWith("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n<gpx Version =\"1.0\"\r\n"));
    QCOMPARE(Cli({"gps", "export", "waypoints", "w.gpx"}).exitCode, 0);
    QVERIFY(ReadAll(home->path() + QStringLiteral("/w.gpx")).contains("<name>Hut &amp; bar</name>\r\n<cmt>Hut &amp; bar</cmt>"));

    QCOMPARE(Cli({"gps", "waypoint", "remove", "Hut & bar"}).exitCode, 0);
    QCOMPARE(Json({"gps", "waypoints", "--json"}).size(), 9);
    const QDir logs(home->path() + QStringLiteral("/Documents/Orvana User Data/GPS Logs"));
    const QStringList before = logs.entryList({"2005*.plist"});
    QCOMPARE(Cli({"gps", "track", "rename", "ACTIVE LOG 001", "Morning & walk"}).exitCode, 0);
    QCOMPARE(Json({"gps", "tracks", "--json"})[0][QStringLiteral("name")].toString(), QStringLiteral("Morning & walk"));
    qsizetype rewritten = 0;
    for (const QString &file : before)
        rewritten += ReadAll(logs.filePath(file)).count("<string>Morning &amp; walk</string>");
    QCOMPARE(rewritten, 1);
    QCOMPARE(Cli({"gps", "track", "remove", "Morning & walk"}).exitCode, 0);
    QCOMPARE(Json({"gps", "tracks", "--json"}).size(), 11);
    QCOMPARE(logs.entryList({"2005*.plist"}).size(), before.size() - 1);
}

void CliGpsTest::geotagging()
{
    WriteFurnaceCreekAlbum();
    QCOMPARE(Cli({"gps", "import", CorpusTrack(QStringLiteral("exiv2-FurnaceCreekInn.gpx"))}).exitCode, 0);
    // Without --offset the zone saved in [GPS] counts: zone 6 is Pacific time.
    QCOMPARE(Cli({"settings", "set", "GPS", "TimeZone", "5"}).exitCode, 0);
    const CliRun matched = Cli({"gps", "match", album, "exiv2-FurnaceCreekInn3.jpg"});
    QCOMPARE(matched.exitCode, 0);
    QCOMPARE(matched.out, QStringLiteral("1 photo(s) examined, 1 located.\n"));
    QCOMPARE(Record(QStringLiteral("exiv2-FurnaceCreekInn3.jpg"), QStringLiteral("Latitude")), QStringLiteral("36.448590020"));
    QCOMPARE(Record(QStringLiteral("exiv2-FurnaceCreekInn2.jpg"), QStringLiteral("Latitude")), QString());

    const CliRun wrongZone = Cli({"gps", "match", album, "--offset", "0"});
    QCOMPARE(wrongZone.exitCode, 0);
    QVERIFY(wrongZone.out.startsWith(QStringLiteral("2 photo(s) examined. None was taken within 5 minutes")));
    QCOMPARE(Cli({"settings", "get", "GPS", "LocatedPhotos"}).out, QStringLiteral("1\n"));

    QCOMPARE(Cli({"gps", "waypoint", "add", "Inn", "36.4", "-116.8"}).exitCode, 0);
    QCOMPARE(Cli({"gps", "match-waypoint", album, "Inn", "exiv2-FurnaceCreekInn2.jpg"}).exitCode, 0);
    QCOMPARE(Record(QStringLiteral("exiv2-FurnaceCreekInn2.jpg"), QStringLiteral("Longitude")), QStringLiteral("-116.8"));
    const CliRun noWaypoint = Cli({"gps", "match-waypoint", album, "Nowhere", "exiv2-FurnaceCreekInn2.jpg"});
    QCOMPARE(noWaypoint.exitCode, 1);
    QVERIFY(noWaypoint.err.contains(QStringLiteral("one waypoint")));
}

void CliGpsTest::timeShifts()
{
    WriteFurnaceCreekAlbum();
    QCOMPARE(Cli({"gps", "shift", album, "-8.5", "exiv2-FurnaceCreekInn2.jpg"}).exitCode, 0);
    QCOMPARE(Record(QStringLiteral("exiv2-FurnaceCreekInn2.jpg"), QStringLiteral("CaptureDate")), QStringLiteral("2008-05-08 01:24:34"));
    QCOMPARE(Cli({"gps", "correct", album, "--days", "1", "--hours", "25", "--back", "exiv2-FurnaceCreekInn3.jpg"}).exitCode, 0);
    QCOMPARE(Record(QStringLiteral("exiv2-FurnaceCreekInn3.jpg"), QStringLiteral("CaptureDate")), QStringLiteral("2008-05-06 08:54:41"));
    QCOMPARE(Cli({"gps", "correct", album, "--secs", "x", "exiv2-FurnaceCreekInn3.jpg"}).exitCode, 2);
    QCOMPARE(Cli({"gps", "shift", album, "1", "missing.jpg"}).exitCode, 1);
}

void CliGpsTest::earthFiles()
{
    WriteFurnaceCreekAlbum();
    QCOMPARE(Cli({"gps", "import", CorpusTrack(QStringLiteral("exiv2-FurnaceCreekInn.gpx"))}).exitCode, 0);
    const CliRun none = Cli({"gps", "kml", album});
    QCOMPARE(none.exitCode, 1);
    QVERIFY(none.err.contains(QStringLiteral("None of the photos in this album has a location")));
    QVERIFY(!QFile::exists(home->path() + QStringLiteral("/Documents/Orvana User Data/Earth Places")));
    QCOMPARE(Cli({"gps", "match", album, "--offset", "-8"}).exitCode, 0);

    const QString kml = home->path() + QStringLiteral("/valley.kml");
    QCOMPARE(Cli({"gps", "kml", album, "valley.kml", "--tracks", "--offset", "-8"}).out.trimmed(), kml);
    const QByteArray text = ReadAll(kml);
    QVERIFY(text.contains("<img src='" + album.toUtf8() + "/exiv2-FurnaceCreekInn2.jpg' width='320' />"));
    QVERIFY(text.contains("-116.855238480,36.448572837,-14.3 "));
    const CliRun kmz = Cli({"gps", "kmz", album, "valley.kmz"});
    QCOMPARE(kmz.exitCode, 0);
    QCOMPARE(kmz.out.trimmed(), home->path() + QStringLiteral("/valley.kmz"));
    QVERIFY(QFileInfo(home->path() + QStringLiteral("/valley.kmz")).size() > 49660 + 38821);
    QCOMPARE(Cli({"gps", "kmz", album, "valley.kmz"}).out.trimmed(), home->path() + QStringLiteral("/valley(1).kmz")); // a taken name is numbered
    QCOMPARE(Cli({"gps", "kml-tracks"}).out.trimmed(), home->path() + QStringLiteral("/Documents/Orvana User Data/Earth Places/my_tracks.kml"));
    QCOMPARE(Cli({"gps", "kml-waypoints"}).exitCode, 0);
}

// Positions are checked wherever they come in; capture times are wall-clock values, valid in an
// hour the machine's zone skips (Berlin went from 02:00 to 03:00 on 2024-03-31); a damaged
// tracks list stops every verb and is left as it is. "ALBUM" stands for the album, "GAPPATH" for
// a real photo whose tags say it was taken at 02:30 that night, imported into it as "GAP.jpg".
void CliGpsTest::valuesRefusedOrKept_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("said");   // on stdout when it succeeds, on stderr when not
    QTest::addColumn<QString>("record"); // "FILE KEY=VALUE" afterwards, "" to skip

    const QString inn2 = QStringLiteral("exiv2-FurnaceCreekInn2.jpg");
    QTest::newRow("capture time in the skipped hour") << QStringList{"album", "set", "ALBUM", inn2, "CaptureDate", "2024-03-31 02:30:00"} << 0 << "" << inn2 + " CaptureDate=2024-03-31 02:30:00";
    QTest::newRow("find the skipped hour") << QStringList{"album", "find-date", "ALBUM", "2024-03-31 02"} << 0 << "GAP.jpg" << "";
    QTest::newRow("tags' time in the skipped hour") << QStringList{"album", "import", "ALBUM", "GAPPATH"} << 0 << "GAP(1).jpg" << "GAP(1).jpg CaptureDate=2024-03-31 02:30:00";
    QTest::newRow("shift out of the skipped hour") << QStringList{"gps", "shift", "ALBUM", "-1", "GAP.jpg"} << 0 << "" << "GAP.jpg CaptureDate=2024-03-31 01:30:00";
    QTest::newRow("no 30 February") << QStringList{"album", "set", "ALBUM", inn2, "CaptureDate", "2024-02-30 12:00:00"} << 1 << "yyyy-mm-dd" << inn2 + " CaptureDate=2008-05-08 09:54:34";
    QTest::newRow("latitude nan") << QStringList{"album", "set", "ALBUM", inn2, "Latitude", "nan"} << 1 << "latitude from -90 to 90" << inn2 + " Latitude=";
    QTest::newRow("longitude inf") << QStringList{"album", "set", "ALBUM", inn2, "lon", "inf"} << 1 << "longitude from -180 to 180" << inn2 + " Longitude=";
    QTest::newRow("latitude 90.5") << QStringList{"album", "set", "ALBUM", inn2, "lat", "90.5"} << 1 << "latitude" << inn2 + " Latitude=";
    QTest::newRow("latitude with a sign and blanks") << QStringList{"album", "set", "ALBUM", inn2, "lat", " +45.25 "} << 0 << "" << inn2 + " Latitude=45.250000";
    QTest::newRow("latitude with two signs") << QStringList{"album", "set", "ALBUM", inn2, "lat", "+-45"} << 1 << "latitude" << inn2 + " Latitude=";
    QTest::newRow("latitude with a unit") << QStringList{"album", "set", "ALBUM", inn2, "lat", "45N"} << 1 << "latitude" << inn2 + " Latitude=";
    QTest::newRow("latitude -90") << QStringList{"album", "set", "ALBUM", inn2, "lat", "-90"} << 0 << "" << inn2 + " Latitude=-90.000000";
    QTest::newRow("waypoint at latitude 91") << QStringList{"gps", "waypoint", "add", "Hut", "91", "13"} << 2 << "latitude from -90 to 90" << "";
    QTest::newRow("waypoint at longitude nan") << QStringList{"gps", "waypoint", "add", "Hut", "46", "nan"} << 2 << "longitude" << "";
    QTest::newRow("locate at longitude -181") << QStringList{"gps", "locate", "ALBUM", "46", "-181", inn2} << 2 << "longitude" << inn2 + " Longitude=";
    QTest::newRow("locate by hand") << QStringList{"gps", "locate", "ALBUM", "36.5", "-116.75", inn2} << 0 << "" << inn2 + " Longitude=-116.750000000";
    QTest::newRow("damaged tracks list") << QStringList{"gps", "waypoint", "add", "Hut", "46", "13"} << 1 << "tracks.plist cannot be read" << "";
}

void CliGpsTest::valuesRefusedOrKept()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QFETCH(QString, said);
    QFETCH(QString, record);
    WriteFurnaceCreekAlbum();
    const QString gap = home->path() + QStringLiteral("/GAP.jpg");
    QVERIFY(QFile::copy(album + QStringLiteral("/exiv2-FurnaceCreekInn3.jpg"), gap));
    QProcess exiftool;
    exiftool.start(QStringLiteral("exiftool"), {QStringLiteral("-q"), QStringLiteral("-overwrite_original"), QStringLiteral("-DateTimeOriginal=2024:03:31 02:30:00"), gap});
    QVERIFY(exiftool.waitForFinished() && exiftool.exitCode() == 0);
    QCOMPARE(Cli({"album", "import", album, gap}).exitCode, 0);
    const QString logs = home->path() + QStringLiteral("/Documents/Orvana User Data/GPS Logs");
    const QByteArray damaged = "<?xml version=\"1.0\"?><plist><dict>";
    if (QTest::currentDataTag() == QLatin1String("damaged tracks list")) {
        QDir().mkpath(logs);
        WriteAll(logs + QStringLiteral("/tracks.plist"), damaged);
    }

    // The zone of the machine is not the album's business: the checks run in one with a gap.
    const QByteArray zone = qgetenv("TZ");
    const bool hadZone = qEnvironmentVariableIsSet("TZ");
    qputenv("TZ", "Europe/Berlin");
    const CliRun run = Cli(arguments.replaceInStrings(QStringLiteral("ALBUM"), album).replaceInStrings(QStringLiteral("GAPPATH"), gap));
    hadZone ? qputenv("TZ", zone) : qunsetenv("TZ");
    QCOMPARE(run.exitCode, exitCode);
    QVERIFY2((exitCode == 0 ? run.out : run.err).contains(said), qPrintable(run.out + run.err));
    const QString keyValue = record.section(u' ', 1);
    if (!record.isEmpty())
        QCOMPARE(Record(record.section(u' ', 0, 0), keyValue.section(u'=', 0, 0)), keyValue.section(u'=', 1));
    if (QTest::currentDataTag() == QLatin1String("damaged tracks list")) {
        QCOMPARE(ReadAll(logs + QStringLiteral("/tracks.plist")), damaged);
        QVERIFY(!QFile::exists(logs + QStringLiteral("/waypoints.plist")));
    }
}

void CliGpsTest::geocode_data()
{
    QTest::addColumn<QString>("setting");
    QTest::addColumn<QByteArray>("served");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("printed");
    QTest::addColumn<QStringList>("asked");
    // "setting" points Orvana at the fake server (%1 is its port): [Map] Geocoder, a
    // Nominatim stand-in behind Orvana's own pages, or [System] MapServer, a map host whose search
    // page answers itself.
    QTest::newRow("place through Orvana's pages and the geocoder")
        << "Map Geocoder http://127.0.0.1:%1/search" << QByteArray(R"([{"lat":"48.8566","lon":"2.3522","display_name":"Paris"}])")
        << "Paris, France" << 0 << "48.8566 2.3522\n"
        << QStringList{"GET /search?q=Paris,%20France&format=json&limit=1 ", "User-Agent: Orvana/"};
    QTest::newRow("nothing found") << "Map Geocoder http://127.0.0.1:%1/search" << QByteArray("[]") << "Atlantis" << 1 << ""
                                   << QStringList{"q=Atlantis"};
    QTest::newRow("chosen map host") << "System MapServer 127.0.0.1:%1" << QByteArray("<p>$GEO_CODE=[200,0,-33.8688,151.2093]</p>") << "Sydney NSW"
                                     << 0 << "-33.8688 151.2093\n" << QStringList{"GET /gmap/map_search/?address=Sydney%20NSW "};
    QTest::newRow("typed pair asks nobody") << "Map Geocoder http://127.0.0.1:%1/search" << QByteArray("[]") << "48.85, 2.35" << 0
                                            << "48.85 2.35\n" << QStringList{};
}

void CliGpsTest::geocode()
{
    QFETCH(QString, setting);
    QFETCH(QByteArray, served);
    QFETCH(QString, typed);
    QFETCH(QStringList, asked);
    const FakeWebServer server(served, "text/html");
    QStringList set = setting.arg(server.Port()).split(u' ');
    QCOMPARE(Cli(QStringList{"settings", "set"} + set).exitCode, 0);
    const CliRun run = Cli({"gps", "geocode", typed});
    QTEST(run.exitCode, "exitCode");
    QTEST(run.out, "printed");
    if (run.exitCode != 0)
        QVERIFY(run.err.contains(Cli({"text", "MessageNotFindPlace", "GPS"}).out.trimmed()));
    const QStringList requests = server.Requests();
    QCOMPARE(requests.size(), asked.isEmpty() ? 0 : 1);
    for (const QString &part : asked)
        QVERIFY2(requests.front().contains(part), qPrintable(requests.front()));
}

QTEST_GUILESS_MAIN(CliGpsTest)
#include "tst_CliGps.moc"
