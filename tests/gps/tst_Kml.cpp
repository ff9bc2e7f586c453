#include "gps/EarthOutput.h"
#include "GpsTestSupport.h"
#include "gps/GpxImport.h"
#include "gps/KmlDocument.h"
#include "app/Language.h"
#include "app/Settings.h"
#include "TestEnvironment.h"

#include <QDir>
#include <QFile>
#include <QTest>

// KML for the globe viewer: the album and GPS log documents against golden files, and the
// viewer's start; files written and KMZ archives are checked end to end in tst_CliGps.
class KmlTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void documents_data();
    void documents();
    void viewer();

private:
    std::unique_ptr<AlbumDocument> Album(const QList<QStringList> &records);
    std::unique_ptr<ScopedTestEnvironment> environment;
    GpsStore store;
};

namespace {

const QStringList Positioned = {"File=a.jpg", "CaptureDate=2020-06-01 12:30:00", "Longitude=13.5", "Latitude=46.25", "Elevation=410.0", "Width=4000", "Height=3000"};

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
        QVERIFY(album->SetAlbumTexts({QStringLiteral("Lakes <2020>"), std::nullopt, std::nullopt}).ok);
        const AlbumKml kml = BuildAlbumKml(*album, {1, 2, 3}, QStringLiteral("files"), &store, {0}, document.mid(6).toDouble(), nullptr);
        QCOMPARE(kml.photos, 2);
        text = kml.text;
    } else {
        RecordingPrompter prompter;
        const EarthFile written = document == u"tracks" ? WriteTracksForEarth(store, {0}, prompter) : WriteWaypointsForEarth(store);
        QCOMPARE(written.path, EarthPlacesFolder() + u'/' + golden);
        text = ReadAll(written.path);
    }
    QCOMPARE(text, ReadAll(QStringLiteral(ORVANA_SOURCE_DIR "/tests/gps/data/") + golden));
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
