#include "EarthOutput.h"
#include "GpsTestSupport.h"
#include "GpxImport.h"
#include "KmlDocument.h"
#include "Language.h"
#include "Settings.h"
#include "TestEnvironment.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>
#include <QXmlStreamReader>

// KML and KMZ for the globe viewer: the balloon text, the album document with its tracks, the
// GPS log documents, the KMZ archive and the viewer's start.
class KmlTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void balloons_data();
    void balloons();
    void albumDocument_data();
    void albumDocument();
    void noPositionNoFile();
    void generatedFiles();
    void kmzArchive();
    void logDocuments();
    void viewer();

private:
    std::unique_ptr<AlbumDocument> Album(const QList<QStringList> &records);
    std::unique_ptr<ScopedTestEnvironment> environment;
    GpsStore store;
};

namespace {

struct Placemarks {
    QString error;
    QStringList names;
    QStringList coordinates;
};

// Reads the document as XML: every placemark's name and coordinates.
Placemarks ReadKml(const QByteArray &kml)
{
    Placemarks found;
    QXmlStreamReader reader(kml);
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement || reader.namespaceUri() != u"http://www.opengis.net/kml/2.2")
            continue;
        if (reader.name() == u"name")
            found.names << reader.readElementText();
        else if (reader.name() == u"coordinates")
            found.coordinates << reader.readElementText().trimmed();
    }
    found.error = reader.errorString();
    return found;
}

QStringList ZipListing(const QString &path)
{
    QProcess python;
    python.start(QStringLiteral("python3"), {QStringLiteral("-c"), QStringLiteral("import sys, zipfile\nfor i in zipfile.ZipFile(sys.argv[1]).infolist(): print(i.filename, i.file_size)"), path});
    python.waitForFinished();
    return QString::fromUtf8(python.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
}

const QStringList Positioned = {"File=a.jpg", "CaptureDate=2020-06-01 12:30:00", "Longitude=13.5", "Latitude=46.25", "Elevation=410.0",
                                "Width=4000", "Height=3000"};

} // namespace

void KmlTest::init()
{
    store = GpsStore();
    RenewEnvironment(environment);
}

std::unique_ptr<AlbumDocument> KmlTest::Album(const QList<QStringList> &records)
{
    const QString folder = environment->Root() + QStringLiteral("/Trip");
    QDir().mkpath(folder);
    for (const QStringList &record : records)
        WriteAll(folder + u'/' + record[0].mid(5), "picture of " + record[0].toUtf8());
    return MakeAlbum(folder, records);
}

void KmlTest::balloons_data()
{
    QTest::addColumn<QStringList>("record");
    QTest::addColumn<QString>("balloon");
    QTest::newRow("description and keywords")
        << QStringList{"File=a.jpg", "CaptureDate=2020-06-01 12:30:00", "Description=<b> & \"x\"", "Keywords=a;b;c", "Width=40", "Height=30"}
        << "<![CDATA[<div align='left'><b>2020-06-01 12:30:00</b><br/>&lt;b&gt; & &quot;x&quot;<br/>a b c<br/><br/></div>"
           "<div align='center'><img src='IMAGES/a.jpg' width='320' /><br/></div>]]>";
    QTest::newRow("portrait, nothing to say") << QStringList{"File=b.jpg", "CaptureDate=2020-06-01 12:31:00", "Width=30", "Height=40"}
                                              << "<![CDATA[<div align='left'><b>2020-06-01 12:31:00</b><br/><br/></div>"
                                                 "<div align='center'><img src='IMAGES/b.jpg' height='320' /><br/></div>]]>";
}

void KmlTest::balloons()
{
    QFETCH(QStringList, record);
    QFETCH(QString, balloon);
    const auto album = Album({record});
    QCOMPARE(PhotoBalloon(*album, 1, QStringLiteral("IMAGES")), balloon);
}

void KmlTest::albumDocument_data()
{
    QTest::addColumn<double>("zone");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QStringList>("names");

    // The track runs 10:00 to 11:00 UTC; the photo was taken at 12:30 local time.
    QTest::newRow("zone +2: the track overlaps") << 2.0 << "Lakes <2020>" << QStringList{"Lakes <2020>", "Photos", "a.jpg", "c.jpg", "Tracks", "Loop"};
    QTest::newRow("UTC: it does not") << 0.0 << "Lakes" << QStringList{"Lakes", "Photos", "a.jpg", "c.jpg", "Tracks"};
}

void KmlTest::albumDocument()
{
    QFETCH(double, zone);
    QFETCH(QString, title);
    QFETCH(QStringList, names);
    QVERIFY(ImportGPXFile(store, WriteTemporary(environment->Root(), QStringLiteral("t.gpx"),
                                                Gpx("<trk><name>Loop</name><trkseg><trkpt lat=\"46.2\" lon=\"13.4\"><ele>400</ele><time>2020-06-01T10:00:00Z</time></trkpt>"
                                                    "<trkpt lat=\"46.3\" lon=\"13.6\"><ele>420.5</ele><time>2020-06-01T11:00:00Z</time></trkpt></trkseg></trk>")))
                .ok);
    auto album = Album({Positioned, {"File=b.jpg", "CaptureDate=2020-06-01 12:40:00"}, {"File=c.jpg", "Longitude=-1.5", "Latitude=-2.5", "Elevation="}});
    album->List().SetDocumentProperty(QStringLiteral("Title"), title);
    const AlbumKml kml = BuildAlbumKml(*album, {1, 2, 3}, QStringLiteral("files"), &store, {0}, zone, nullptr);
    QCOMPARE(kml.photos, 2);
    const Placemarks read = ReadKml(kml.text);
    QCOMPARE(read.error, QString());
    const bool withTrack = zone != 0;
    QCOMPARE(read.names, names);
    QCOMPARE(read.coordinates, QStringList({"13.5,46.25,410.0", "-1.5,-2.5,"}) + (withTrack ? QStringList{"13.4,46.2,400.0 13.6,46.3,420.5"} : QStringList()));
    QVERIFY(kml.text.contains("<Placemark id=\"photo2\">"));
    QVERIFY(kml.text.contains("<name>" + EscapeForEarth(title).toUtf8() + "</name>"));
    QVERIFY(!QString::fromUtf8(kml.text).contains(QRegularExpression(QStringLiteral(R"(\$[A-Za-z]+\$)"))));
}

void KmlTest::noPositionNoFile()
{
    auto album = Album({{"File=a.jpg", "CaptureDate=2020-06-01 12:30:00"}});
    RecordingPrompter prompter;
    AlbumOnEarth what{{1}, false, false, {}, 0};
    QVERIFY(!GenerateKml(*album, what, store, QString(), prompter).result);
    what.onlySelected = true;
    QVERIFY(!ShowAlbumOnEarth(*album, what, store, prompter).result);
    QCOMPARE(prompter.informed, (QStringList{GetLocalizedString(QStringLiteral("MessageNoLocationForEarth"), QStringLiteral("GPS")),
                                             GetLocalizedString(QStringLiteral("MessageNoLocationForEarth1"), QStringLiteral("GPS"))}));
    QVERIFY(!QDir(EarthPlacesFolder()).exists() || QDir(EarthPlacesFolder()).isEmpty());
}

void KmlTest::generatedFiles()
{
    auto album = Album({Positioned});
    RecordingPrompter prompter;
    const EarthFile generated = GenerateKml(*album, {{1}, false, false, {}, 0}, store, QString(), prompter);
    QVERIFY(generated.result);
    QCOMPARE(generated.path, EarthPlacesFolder() + QStringLiteral("/5c1d0e3a-trip.kml"));
    QCOMPARE(prompter.informed, QStringList{QStringLiteral("1 photo(s) written to the KML file:\r\n") + generated.path});
    // The balloons find the photos themselves while no export has made display-size images.
    QVERIFY(ReadAll(generated.path).contains(("<img src='" + album->Path() + "/a.jpg' width='320' />").toUtf8()));
    const QString chosen = environment->Root() + QStringLiteral("/new/folder/trip.kml");
    QCOMPARE(GenerateKml(*album, {{1}, false, false, {}, 0}, store, chosen, prompter).path, chosen);
    QCOMPARE(ReadKml(ReadAll(chosen)).error, QString());
}

void KmlTest::kmzArchive()
{
    auto album = Album({Positioned, {"File=b.jpg", "CaptureDate=2020-06-01 12:31:00", "Longitude=13.6", "Latitude=46.3", "Width=30", "Height=40"},
                        {"File=c.jpg"}});
    // An export has made a display-size copy of a.jpg only.
    QDir().mkpath(album->Path() + QStringLiteral("/album.data/size_2"));
    WriteAll(album->Path() + QStringLiteral("/album.data/size_2/a.jpg"), "smaller");
    const QString target = environment->Root() + QStringLiteral("/out/Trip.kmz");
    QDir().mkpath(environment->Root() + QStringLiteral("/out"));
    WriteAll(target, "taken");
    RecordingPrompter prompter;
    const EarthFile kmz = GenerateKmz(*album, {{1, 2, 3}, false, false, {}, 0}, store, target, prompter);
    QVERIFY2(kmz.result, qPrintable(kmz.result.message));
    QCOMPARE(kmz.path, environment->Root() + QStringLiteral("/out/Trip(1).kmz"));
    QCOMPARE(ReadAll(target), QByteArray("taken"));
    const QByteArray doc = ReadAll(album->Path() + QStringLiteral("/album.data/doc.kml"));
    QCOMPARE(ZipListing(kmz.path), (QStringList{QStringLiteral("doc.kml %1").arg(doc.size()), "files/a.jpg 7", "files/b.jpg 21"}));
    QVERIFY(doc.contains("<img src='files/b.jpg' height='320' />"));
    QCOMPARE(ReadAll(kmz.path), ReadAll(album->Path() + QStringLiteral("/album.data/album.kmz")));
    QCOMPARE(prompter.informed, QStringList{GetLocalizedString(QStringLiteral("MessageGenerateKMZ"), QStringLiteral("GPS"))});
}

void KmlTest::logDocuments()
{
    QVERIFY(ImportGPXFile(store, CorpusTrack(QStringLiteral("gpxpy-cerknicko-jezero.gpx"))).ok);
    RecordingPrompter prompter;
    const EarthFile tracks = WriteTracksForEarth(store, {0, 1}, prompter);
    const EarthFile waypoints = WriteWaypointsForEarth(store);
    QCOMPARE(tracks.path, EarthPlacesFolder() + QStringLiteral("/my_tracks.kml"));
    QCOMPARE(waypoints.path, EarthPlacesFolder() + QStringLiteral("/my_waypoints.kml"));
    const Placemarks trackMarks = ReadKml(ReadAll(tracks.path));
    const Placemarks waypointMarks = ReadKml(ReadAll(waypoints.path));
    QCOMPARE(trackMarks.error, QString());
    QCOMPARE(waypointMarks.error, QString());
    QCOMPARE(trackMarks.names.mid(0, 2), (QStringList{"My Tracks", "My Tracks"}));
    QCOMPARE(trackMarks.coordinates.size(), 2);
    QCOMPARE(waypointMarks.names.size(), 2 + store.WaypointCount());
    QCOMPARE(waypointMarks.coordinates.size(), store.WaypointCount());
    const Waypoint first = store.WaypointAt(0);
    QCOMPARE(waypointMarks.coordinates[0], first.lon + u',' + first.lat + u',' + first.ele);
}

void KmlTest::viewer()
{
    const QString recorded = environment->Root() + QStringLiteral("/opened.txt");
    const QString viewer = environment->Root() + QStringLiteral("/viewer");
    WriteAll(viewer, ("#!/bin/sh\nprintf '%s\\n' \"$@\" > '" + recorded + ".part' && mv '" + recorded + ".part' '" + recorded + "'\n").toUtf8());
    QFile::setPermissions(viewer, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    WriteSetting(QStringLiteral("GPS"), QStringLiteral("EarthAppPath"), viewer);
    RecordingPrompter prompter;
    auto album = Album({Positioned});
    const EarthFile shown = ShowAlbumOnEarth(*album, {{1}, false, false, {}, 0}, store, prompter);
    QCOMPARE(shown.path, EarthPlacesFolder() + QStringLiteral("/doc.kml"));
    QTRY_VERIFY(QFile::exists(recorded));
    QCOMPARE(ReadAll(recorded), (shown.path + u'\n').toUtf8());

    WriteSetting(QStringLiteral("GPS"), QStringLiteral("EarthAppPath"), environment->Root() + QStringLiteral("/no-such-viewer"));
    QVERIFY(!StartEarthViewer(shown.path, prompter));
    QCOMPARE(prompter.errors, QStringList{GetLocalizedString(QStringLiteral("MessageNoGoogleEarthFound"), QStringLiteral("GPS"))});
    QVERIFY(QFile::exists(shown.path));
}

QTEST_GUILESS_MAIN(KmlTest)
#include "tst_Kml.moc"
