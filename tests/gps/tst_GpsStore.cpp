#include "GpsTestSupport.h"
#include "gps/GpxImport.h"
#include "app/Language.h"
#include "app/Settings.h"
#include "gps/StoreFiles.h"
#include "TestEnvironment.h"
#include "gps/TrackPoints.h"
#include "gps/TrackStatistics.h"

#include <QDir>
#include <QFile>
#include <QTest>

// The GPS log database on disk: backups before saves and in place of damaged files, the edits
// of tracks and waypoints, and the statistics of a track.
class GpsStoreTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void damagedFiles_data();
    void damagedFiles();
    void foreignValuesSurvive();
    void statistics_data();
    void statistics();

private:
    void ImportGpx(GpsStore &store, const QByteArray &body);
    std::unique_ptr<ScopedTestEnvironment> environment;
};

void GpsStoreTest::init()
{
    RenewEnvironment(environment);
}

void GpsStoreTest::ImportGpx(GpsStore &store, const QByteArray &body)
{
    QVERIFY(ImportGPXFile(store, WriteTemporary(environment->Root(), QStringLiteral("in.gpx"), Gpx(body))).ok);
}

void GpsStoreTest::damagedFiles_data()
{
    QTest::addColumn<QString>("damaged");  // "index", "waypoints", "points", "missing"; "+backup" when the backup is damaged too
    QTest::addColumn<bool>("withBackup");
    QTest::addColumn<bool>("told");
    QTest::addColumn<int>("tracks");       // -1: the store refuses to open
    QTest::addColumn<int>("waypoints");
    QTest::addColumn<int>("points");       // of the first track

    QTest::newRow("index from its backup") << "index" << true << true << 1 << 2 << 0;
    QTest::newRow("index without backup: refused") << "index" << false << false << -1 << 0 << 0;
    QTest::newRow("index and its backup damaged: refused") << "index+backup" << true << true << -1 << 0 << 0;
    QTest::newRow("waypoints from their backup") << "waypoints" << true << true << 2 << 1 << 3;
    QTest::newRow("waypoints without backup: refused") << "waypoints" << false << false << -1 << 0 << 0;
    QTest::newRow("points from their backup") << "points" << true << true << 2 << 2 << 3;
    QTest::newRow("points without backup") << "points" << false << false << 2 << 2 << 0;
    QTest::newRow("missing index") << "missing" << false << false << 0 << 2 << 0;
}

void GpsStoreTest::damagedFiles()
{
    QFETCH(QString, damaged);
    QFETCH(bool, withBackup);
    QFETCH(bool, told);
    QFETCH(int, tracks);
    QFETCH(int, waypoints);
    QFETCH(int, points);

    // Two imports of one track and two saves: the backups hold the first version of each list;
    // the second track's own point file got its backup when the track was renamed.
    GpsStore store;
    ImportGpx(store, "<trk><trkseg><trkpt lat=\"1\" lon=\"1\"><time>2020-01-01T00:00:00Z</time></trkpt>"
                     "<trkpt lat=\"1\" lon=\"1\"><time>2020-01-01T00:10:00Z</time></trkpt></trkseg></trk><wpt lat=\"1\" lon=\"1\"/>");
    QVERIFY(store.Save());
    ImportGpx(store, "<trk><trkseg><trkpt lat=\"1\" lon=\"1\"><time>2020-01-01T00:00:00Z</time></trkpt><trkpt lat=\"2\" lon=\"2\"/>"
                     "<trkpt lat=\"1\" lon=\"1\"><time>2020-01-01T00:10:00Z</time></trkpt></trkseg></trk><wpt lat=\"2\" lon=\"2\"/>");
    QVERIFY(store.ModifyTrackName(1, QStringLiteral("Twice"), nullptr)); // keeps the point file's backup
    QVERIFY(store.Save());

    const QString pointFile = GpsStore::TrackFilePath(store.TrackAt(1));
    const QString file = damaged.startsWith(u"index") || damaged == u"missing" ? GpsStore::IndexPath()
        : damaged == u"waypoints"                                             ? GpsStore::WaypointsPath()
                                                                              : pointFile;
    const QByteArray garbage = "<?xml version=\"1.0\"?><plist><dict><key>Items</key><array><dict>";
    if (damaged == u"missing")
        QFile::remove(file);
    else
        WriteAll(file, garbage);
    if (!withBackup)
        QFile::remove(StoreFiles::BackupPath(file));
    if (damaged.endsWith(u"+backup"))
        WriteAll(StoreFiles::BackupPath(file), garbage);

    RecordingPrompter prompter;
    GpsStore reopened;
    const Result loaded = reopened.Load(&prompter);
    TrackPoints loadedPoints;
    if (reopened.GetTrackCount() > 1)
        LoadTrackPoints(reopened.TrackAt(1), loadedPoints, &prompter);
    QCOMPARE(prompter.errors, told ? QStringList{GetLocalizedString(QStringLiteral("DataFileError"), QStringLiteral("System"))} : QStringList());
    if (tracks < 0) {
        // Refused, naming the file; a save never writes over what could not be read.
        QVERIFY(!loaded.ok && loaded.message.contains(file));
        reopened.AddNewWaypoint({"W", "1", "1", "0.0", ""});
        QVERIFY(!reopened.Save());
        QCOMPARE(ReadAll(file), garbage);
        return;
    }
    QVERIFY2(loaded.ok, qPrintable(loaded.message));
    QCOMPARE(reopened.GetTrackCount(), tracks);
    QCOMPARE(reopened.WaypointCount(), waypoints);
    QCOMPARE(loadedPoints.Count(), points);
    // A restored file is whole again: the next load says nothing.
    RecordingPrompter again;
    GpsStore third;
    QVERIFY(third.Load(&again).ok);
    if (told)
        QCOMPARE(again.errors, QStringList());
}

void GpsStoreTest::foreignValuesSurvive()
{
    QDir().mkpath(GpsStore::Folder());
    DataList index;
    index.SetDocumentProperty(QStringLiteral("Creator"), QStringLiteral("another tool"));
    index.AddItem(1);
    index.SetItemProperty(QStringLiteral("NAME"), QStringLiteral("Kept"), 1);
    index.SetItemProperty(QStringLiteral("COLOR"), QStringLiteral("red"), 1);
    QVERIFY(index.Save(GpsStore::IndexPath()));
    GpsStore store;
    store.Load(nullptr);
    store.AddNewWaypoint({"W", "1", "1", "0.0", ""});
    QVERIFY(store.Save());
    DataList saved;
    QVERIFY(saved.Load(GpsStore::IndexPath()));
    QCOMPARE(saved.GetDocumentProperty(QStringLiteral("Creator")), QStringLiteral("another tool"));
    QCOMPARE(saved.GetItemProperty(QStringLiteral("COLOR"), 1), QStringLiteral("red"));
}

void GpsStoreTest::statistics_data()
{
    QTest::addColumn<QByteArray>("points");
    QTest::addColumn<QString>("units");
    QTest::addColumn<QStringList>("labels"); // distance, time, average speed, elevation

    const QByteArray degree = "<trkpt lat=\"0\" lon=\"0\"><ele>-12.5</ele><time>2020-01-01T00:00:00Z</time></trkpt>"
                              "<trkpt lat=\"0\" lon=\"1\"><ele>100</ele><time>2020-01-01T01:00:00Z</time></trkpt>"
                              "<trkpt lat=\"0\" lon=\"1\"><ele>40</ele><time>2020-01-01T02:30:05Z</time></trkpt>";
    // One degree of longitude on the equator: 6370 km x pi / 180 = 111.177 km.
    QTest::newRow("metric") << degree << "M" << QStringList{"111.2 km", "02:30:05", "44.4 km/hr", "-12.5 ~ 100.0 m"};
    QTest::newRow("English") << degree << "E" << QStringList{"69.1 mi", "02:30:05", "27.6 mi/hr", "-41.0 ~ 328.1 ft"};
    QTest::newRow("one point, no time") << QByteArray("<trkpt lat=\"48\" lon=\"11\"/>") << "" << QStringList{"0.0 km", "00:00:00", "0.0 km/hr", "0.0 ~ 0.0 m"};
    QTest::newRow("a quarter of the earth") << QByteArray("<trkpt lat=\"90\" lon=\"0\"><time>2020-01-01T00:00:00Z</time></trkpt><trkpt lat=\"0\" lon=\"0\"><time>2020-01-03T04:00:00Z</time></trkpt>")
        << "" << QStringList{"10006.0 km", "52:00:00", "192.4 km/hr", "0.0 ~ 0.0 m"};
}

void GpsStoreTest::statistics()
{
    QFETCH(QByteArray, points);
    QFETCH(QString, units);
    QFETCH(QStringList, labels);
    WriteSetting(QStringLiteral("System"), QStringLiteral("UnitSystem"), units);
    GpsStore store;
    ImportGpx(store, "<trk><trkseg>" + points + "</trkseg></trk>");
    TrackPoints loaded;
    QVERIFY(LoadTrackPoints(store.TrackAt(0), loaded, nullptr));
    const StatisticsLabels shown = FormatTrackStatistics(ComputeTrackStatistics(store.TrackAt(0), loaded), MetricUnits());
    QCOMPARE((QStringList{shown.distance, shown.time, shown.averageSpeed, shown.elevation}), labels);
    QCOMPARE(EmptyStatisticsLabels(true).elevation, QStringLiteral("0 ~ 0 m"));
}

QTEST_GUILESS_MAIN(GpsStoreTest)
#include "tst_GpsStore.moc"
