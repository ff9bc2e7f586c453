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
#include <QTest>

// KML and KMZ for the globe viewer: the album and GPS log documents against golden files, the
// files written, the KMZ archive and the viewer's start.
class KmlTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void documents_data();
    void documents();
    void noPositionNoFile();
    void generatedFiles();
    void kmzArchive();
    void viewer();

private:
    std::unique_ptr<AlbumDocument> Album(const QList<QStringList> &records);
    std::unique_ptr<ScopedTestEnvironment> environment;
    GpsStore store;
};

namespace {

QStringList ZipListing(const QString &path)
{
    QProcess python;
    python.start(QStringLiteral("python3"), {QStringLiteral("-c"), QStringLiteral("import sys, zipfile\nfor i in zipfile.ZipFile(sys.argv[1]).infolist(): print(i.filename, i.file_size)"), path});
    python.waitForFinished();
    return QString::fromUtf8(python.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
}

const QStringList Positioned = {"File=a.jpg", "CaptureDate=2020-06-01 12:30:00", "Longitude=13.5", "Latitude=46.25", "Elevation=410.0",
                                "Width=4000", "Height=3000"};

QByteArray Golden(const QString &name)
{
    return ReadAll(QStringLiteral(ORVANA_SOURCE_DIR "/tests/gps/data/") + name);
}

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

// Whole documents against the golden files beside the test: placemarks with their balloons
// (escaping, keywords, portrait and landscape), coordinates with and without an elevation, and
// the tracks whose period meets the photos' times in the zone.
void KmlTest::documents_data()
{
    QTest::addColumn<QString>("document"); // "album ZONE", "tracks" or "waypoints"
    QTest::addColumn<QString>("golden");
    QTest::newRow("album, zone +2: the track overlaps") << "album 2" << "album-with-track.kml";
    QTest::newRow("album, UTC: it does not") << "album 0" << "album.kml";
    QTest::newRow("GPS log: tracks") << "tracks" << "my_tracks.kml";
    QTest::newRow("GPS log: waypoints") << "waypoints" << "my_waypoints.kml";
}

void KmlTest::documents()
{
    QFETCH(QString, document);
    QFETCH(QString, golden);
    // The track runs 10:00 to 11:00 UTC; the photos were taken at 12:30 and 12:31 local time.
    QVERIFY(ImportGPXFile(store, WriteTemporary(environment->Root(), QStringLiteral("t.gpx"),
                                                Gpx("<trk><name>Loop</name><trkseg><trkpt lat=\"46.2\" lon=\"13.4\"><ele>400</ele><time>2020-06-01T10:00:00Z</time></trkpt>"
                                                    "<trkpt lat=\"46.3\" lon=\"13.6\"><ele>420.5</ele><time>2020-06-01T11:00:00Z</time></trkpt></trkseg></trk>"
                                                    "<wpt lat=\"46.1\" lon=\"13.2\"><ele>1500</ele><name>Hut &amp; bar</name><desc>beds</desc></wpt>")))
                .ok);
    store.AddNewWaypoint({"No height", "-2.5", "-1.5", "", ""});
    QByteArray text;
    if (document.startsWith(u"album")) {
        auto album = Album({Positioned, {"File=b.jpg", "CaptureDate=2020-06-01 12:40:00"},
                            {"File=c.jpg", "CaptureDate=2020-06-01 12:31:00", "Longitude=-1.5", "Latitude=-2.5", "Elevation=",
                             "Description=<b> & \"x\"", "Keywords=a;b;c", "Width=30", "Height=40"}});
        album->List().SetDocumentProperty(QStringLiteral("Title"), QStringLiteral("Lakes <2020>"));
        const AlbumKml kml = BuildAlbumKml(*album, {1, 2, 3}, QStringLiteral("files"), &store, {0}, document.mid(6).toDouble(), nullptr);
        QCOMPARE(kml.photos, 2);
        text = kml.text;
    } else {
        RecordingPrompter prompter;
        const EarthFile written = document == u"tracks" ? WriteTracksForEarth(store, {0}, prompter) : WriteWaypointsForEarth(store);
        QCOMPARE(written.path, EarthPlacesFolder() + u'/' + golden);
        text = ReadAll(written.path);
    }
    QCOMPARE(text, Golden(golden));
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
    QCOMPARE(ReadAll(chosen), ReadAll(generated.path));
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
