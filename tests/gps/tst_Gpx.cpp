#include "GpsTestSupport.h"
#include "gps/GpxImport.h"
#include "gps/GpxWriter.h"
#include "app/ProgressSink.h"
#include "TestEnvironment.h"
#include "gps/TrackPoints.h"

#include <QDir>
#include <QRegularExpression>
#include <QTest>

// GPX files in and out of the GPS store: the corpus against its reference counts, the reading
// rules on small files, faults, entities, and the exact export text.
class GpxTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void corpusFiles_data();
    void corpusFiles();
    void readingRules_data();
    void readingRules();
    void cancelKeepsCompletedTracks();
    void exportText();

private:
    GpxImportReport Import(const QByteArray &gpx);
    std::unique_ptr<ScopedTestEnvironment> environment;
    std::unique_ptr<GpsStore> store;
};

namespace {

// The union of the tracks' BOUNDS texts "(lat,lon)-(lat,lon)": minLat, maxLat, minLon, maxLon.
QList<double> BoundsUnion(const GpsStore &store)
{
    static const QRegularExpression corners(QStringLiteral(R"(^\(([^,]*),([^)]*)\)-\(([^,]*),([^)]*)\)$)"));
    QList<double> box{1e9, -1e9, 1e9, -1e9};
    for (int n = 0; n < store.GetTrackCount(); ++n) {
        const QRegularExpressionMatch m = corners.match(store.TrackAt(n).bounds);
        for (int side = 0; side < 4; ++side) {
            const double corner = m.captured(QList<int>{1, 3, 2, 4}[side]).toDouble();
            box[side] = side % 2 ? std::max(box[side], corner) : std::min(box[side], corner);
        }
    }
    return box;
}

const QByteArray Point = "<trkpt lat=\"46.5\" lon=\"13.5\"><time>2020-06-01T10:00:00Z</time></trkpt>\n";

class CancelAtFirstReport : public NoProgress {
public:
    void Advance(int) override { asked = true; }
    bool Cancelled() const override { return asked; }
    bool asked = false;
};

} // namespace

void GpxTest::init()
{
    store.reset();
    RenewEnvironment(environment);
    store = std::make_unique<GpsStore>();
}

GpxImportReport GpxTest::Import(const QByteArray &gpx)
{
    return ImportGPXFile(*store, WriteTemporary(environment->Root(), QStringLiteral("in.gpx"), gpx));
}

void GpxTest::corpusFiles_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("tracks");
    QTest::addColumn<int>("points");
    QTest::addColumn<int>("waypoints");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("last");
    QTest::addColumn<QList<double>>("box");
    const QMap<QString, TrackSummary> summaries = TrackSummaries(QStringLiteral("direct"));
    QVERIFY(summaries.size() >= 30);
    for (auto it = summaries.begin(); it != summaries.end(); ++it) {
        const TrackSummary &s = it.value();
        QTest::newRow(qPrintable(it.key())) << it.key() << s.tracks << s.points << s.waypoints << s.first << s.last << s.box;
    }
}

void GpxTest::corpusFiles()
{
    QFETCH(QString, file);
    QFETCH(int, tracks);
    QFETCH(int, points);
    QFETCH(int, waypoints);
    QFETCH(QString, first);
    QFETCH(QString, last);
    QFETCH(QList<double>, box);

    const GpxImportReport report = ImportGPXFile(*store, CorpusTrack(file));
    QVERIFY2(report.ok, qPrintable(report.error));
    QCOMPARE(report.points, points);
    QCOMPARE(report.waypoints, waypoints);
    QCOMPARE(store->WaypointCount(), waypoints);
    // Tracks without points are left out.
    QVERIFY(report.tracks <= tracks && (points == 0) == (report.tracks == 0));
    QCOMPARE(store->GetTrackCount(), report.tracks);

    QStringList begins;
    QStringList ends;
    QSet<QString> files; // every track keeps its own points
    for (int n = 0; n < store->GetTrackCount(); ++n) {
        const Track track = store->TrackAt(n);
        if (!track.beginTime.isEmpty())
            begins << track.beginTime;
        if (!track.endTime.isEmpty())
            ends << track.endTime;
        files << GpsStore::TrackFilePath(track);
    }
    QCOMPARE(begins.value(0, QStringLiteral("-")), first == u"-" ? first : first.left(19).replace(u'T', u' '));
    QCOMPARE(ends.value(ends.size() - 1, QStringLiteral("-")), last == u"-" ? last : last.left(19).replace(u'T', u' '));
    if (!box.isEmpty()) {
        const QList<double> got = BoundsUnion(*store);
        for (int k = 0; k < 4; ++k)
            QVERIFY2(std::abs(got[k] - box[k]) < 0.0000051, qPrintable(QStringLiteral("side %1: %2 against %3").arg(k).arg(got[k], 0, 'f', 6).arg(box[k])));
    }
    QCOMPARE(files.size(), store->GetTrackCount());
    int loaded = 0;
    for (int n = 0; n < store->GetTrackCount(); ++n) {
        TrackPoints trackPoints;
        QVERIFY(LoadTrackPoints(store->TrackAt(n), trackPoints, nullptr));
        loaded += trackPoints.Count();
    }
    QCOMPARE(loaded, points);
}

void GpxTest::readingRules_data()
{
    QTest::addColumn<QByteArray>("gpx");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<QStringList>("tracks");
    QTest::addColumn<QStringList>("waypoints");
    QTest::addColumn<int>("skipped");

    const QByteArray twoTracks = "<trk><name>A</name><trkseg><trkpt lat=\"1\" lon=\"2\"><time>2020-01-01T00:00:00Z</time></trkpt></trkseg></trk>"
                                 "<trk><name>B</name><trkseg><trkpt lat=\"3\" lon=\"4\"><time>2020-01-02T00:00:00Z</time></trkpt>";
    const QStringList trackA = {"A|2020-01-01 00:00:00|2020-01-01 00:00:00|(1,2)-(1,2)", "2020-01-01T00:00:00Z,1,2,0.0"};

    QTest::newRow("zone suffix and fraction kept, read as UTC") << Gpx("<trk><trkseg><trkpt lat=\"48.1\" lon=\"11.6\"><time>2008-05-01T10:20:30.5+02:00</time></trkpt></trkseg></trk>") << true
        << QStringList{"|2008-05-01 10:20:30|2008-05-01 10:20:30|(48.1,11.6)-(48.1,11.6)", "2008-05-01T10:20:30.5+02:00,48.1,11.6,0.0"} << QStringList() << 0;
    QTest::newRow("segments make one point list") << Gpx("<trk><name>Ride</name><trkseg><trkpt lat=\"1.5\" lon=\"2\"><time>2020-01-01T10:00:00Z</time></trkpt></trkseg>"
               "<trkseg><trkpt lat=\"1.6\" lon=\"2.1\"><time>2020-01-01T10:05:00Z</time></trkpt></trkseg></trk>") << true
        << QStringList{"Ride|2020-01-01 10:00:00|2020-01-01 10:05:00|(1.5,2)-(1.6,2.1)", "2020-01-01T10:00:00Z,1.5,2,0.0", "2020-01-01T10:05:00Z,1.6,2.1,0.0"} << QStringList() << 0;
    QTest::newRow("elevation to one decimal, half away from zero") << Gpx("<trk><trkseg><trkpt lat=\"1\" lon=\"1\"><ele>123.456</ele></trkpt><trkpt lat=\"1\" lon=\"1\"><ele>1.45</ele></trkpt>"
               "<trkpt lat=\"1\" lon=\"1\"><ele>-14.25</ele></trkpt><trkpt lat=\"1\" lon=\"1\"><ele> 7</ele></trkpt>"
               "<trkpt lat=\"1\" lon=\"1\"><ele>9.96</ele></trkpt><trkpt lat=\"1\" lon=\"1\"><ele>-0.04</ele></trkpt>"
               "<trkpt lat=\"1\" lon=\"1\"/></trkseg></trk>")
        << true << QStringList{"|||(1,1)-(1,1)", ",1,1,123.5", ",1,1,1.5", ",1,1,-14.3", ",1,1,7.0", ",1,1,10.0", ",1,1,0.0", ",1,1,0.0"} << QStringList() << 0;
    QTest::newRow("points without time kept; begin and end from the timed ones") << Gpx("<trk><trkseg><trkpt lat=\"1\" lon=\"1\"/><trkpt lat=\"2\" lon=\"2\"><time>2020-02-29T23:59:59Z</time></trkpt>"
               "<trkpt lat=\"3\" lon=\"3\"><time>not a time</time></trkpt></trkseg></trk>")
        << true << QStringList{"|2020-02-29 23:59:59|2020-02-29 23:59:59|(1,1)-(3,3)", ",1,1,0.0", "2020-02-29T23:59:59Z,2,2,0.0", "not a time,3,3,0.0"} << QStringList() << 0;
    QTest::newRow("bounds set by the first point, then widened, as texts")
        << Gpx("<trk><trkseg><trkpt lat=\"10.0\" lon=\"20\"/><trkpt lat=\"5.50\" lon=\"30\"/><trkpt lat=\"12\" lon=\"-1.000\"/></trkseg></trk>")
        << true << QStringList{"|||(5.50,-1.000)-(12,30)", ",10.0,20,0.0", ",5.50,30,0.0", ",12,-1.000,0.0"} << QStringList() << 0;
    QTest::newRow("bounds stay zero through a point at 0,0") << Gpx("<trk><trkseg><trkpt lat=\"0\" lon=\"0\"/><trkpt lat=\"-3\" lon=\"4\"/><trkpt lat=\"-5\" lon=\"6\"/></trkseg></trk>")
        << true << QStringList{"|||(-5,4)-(-3,6)", ",0,0,0.0", ",-3,4,0.0", ",-5,6,0.0"} << QStringList() << 0;
    QTest::newRow("only the track's own name; routes and metadata passed over")
        << Gpx("<metadata><name>File</name><time>2000-01-01T00:00:00Z</time></metadata><rte><name>R</name><rtept lat=\"9\" lon=\"9\"/></rte>"
               "<trk><trkseg><trkpt lat=\"1\" lon=\"1\"><name>Point</name><extensions><time>1999-01-01T00:00:00Z</time></extensions></trkpt></trkseg>"
               "<name>Walk &amp; talk</name></trk>") << true << QStringList{"Walk & talk|||(1,1)-(1,1)", ",1,1,0.0"} << QStringList() << 0;
    QTest::newRow("waypoints") << Gpx("<wpt lat=\"-36.7\" lon=\"142.1\"><ele>12.34</ele><name>Camp</name><cmt>x</cmt><desc><![CDATA[<b>tent</b>]]></desc></wpt>"
               "<wpt lat=\"1\" lon=\"2\"/>") << true << QStringList() << QStringList{"Camp|-36.7|142.1|12.3|<b>tent</b>", "|1|2|0.0|"} << 0;
    QTest::newRow("a track without points is left out") << Gpx("<trk><name>Empty</name><trkseg/></trk>") << true << QStringList() << QStringList() << 0;
    QTest::newRow("truncated: the tracks before the fault stay") << ("<gpx>" + twoTracks) << false << trackA << QStringList() << 0;
    QTest::newRow("not XML at all") << QByteArray("GPS log\n") << false << QStringList() << QStringList() << 0;
    QTest::newRow("a declared entity that is not used does no harm") << ("<?xml version=\"1.0\"?><!DOCTYPE gpx [<!ENTITY x \"y\">]><gpx>" + twoTracks + "</trkseg></trk></gpx>") << true
        << trackA + QStringList{"B|2020-01-02 00:00:00|2020-01-02 00:00:00|(3,4)-(3,4)", "2020-01-02T00:00:00Z,3,4,0.0"} << QStringList() << 0;
    QTest::newRow("a declared entity is never expanded") << QByteArray("<?xml version=\"1.0\"?><!DOCTYPE gpx [<!ENTITY x \"EXPANDED\">]><gpx>"
                      "<trk><name>A</name><trkseg><trkpt lat=\"1\" lon=\"2\"><time>2020-01-01T00:00:00Z</time></trkpt></trkseg></trk>"
                      "<trk><name>&x;</name><trkseg><trkpt lat=\"3\" lon=\"4\"/></trkseg></trk></gpx>") << false << trackA << QStringList() << 0;
    QTest::newRow("billion laughs") << QByteArray("<?xml version=\"1.0\"?><!DOCTYPE gpx [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;\">"
                      "<!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;\"><!ENTITY d \"&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;\">]>"
                      "<gpx><wpt lat=\"1\" lon=\"2\"><name>&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;</name></wpt></gpx>") << false << QStringList() << QStringList() << 0;
    QTest::newRow("an external entity is not fetched") << QByteArray("<?xml version=\"1.0\"?><!DOCTYPE gpx [<!ENTITY secret SYSTEM \"file:///etc/passwd\">]><gpx>"
                      "<wpt lat=\"1\" lon=\"2\"><name>a&secret;b</name></wpt></gpx>") << true << QStringList() << QStringList{"ab|1|2|0.0|"} << 0;
    QTest::newRow("an external DTD is not fetched")
        << QByteArray("<?xml version=\"1.0\"?><!DOCTYPE gpx SYSTEM \"http://127.0.0.1:9/gpx.dtd\"><gpx><wpt lat=\"1\" lon=\"2\"><name>a&x;b</name></wpt></gpx>")
        << true << QStringList() << QStringList{"ab|1|2|0.0|"} << 0;
    QTest::newRow("tracks without times keep their own points")
        << Gpx("<trk><name>A</name><trkseg><trkpt lat=\"1\" lon=\"1\"/></trkseg></trk><trk><name>B</name><trkseg><trkpt lat=\"2\" lon=\"2\"/></trkseg></trk>")
        << true << QStringList{"A|||(1,1)-(1,1)", ",1,1,0.0", "B|||(2,2)-(2,2)", ",2,2,0.0"} << QStringList() << 0;
    QTest::newRow("tracks with equal times share one file, the later save wins")
        << ("<gpx>" + twoTracks + "</trkseg></trk><trk><name>C</name><trkseg><trkpt lat=\"5\" lon=\"6\"><time>2020-01-01T00:00:00Z</time></trkpt></trkseg></trk></gpx>")
        << true << QStringList{trackA[0], "2020-01-01T00:00:00Z,5,6,0.0", "B|2020-01-02 00:00:00|2020-01-02 00:00:00|(3,4)-(3,4)", "2020-01-02T00:00:00Z,3,4,0.0",
                                        "C|2020-01-01 00:00:00|2020-01-01 00:00:00|(5,6)-(5,6)", "2020-01-01T00:00:00Z,5,6,0.0"} << QStringList() << 0;
    QTest::newRow("impossible positions are skipped and counted")
        << Gpx("<trk><trkseg><trkpt lat=\"nan\" lon=\"1\"/><trkpt lat=\"1\" lon=\"inf\"/><trkpt lat=\"90.5\" lon=\"1\"/><trkpt lat=\"1\" lon=\"-180.01\"/>"
               "<trkpt lon=\"1\"/><trkpt lat=\"-90\" lon=\"180\"/></trkseg></trk><wpt lat=\"-91\" lon=\"0\"/><wpt lat=\"0\" lon=\"0\"/>")
        << true << QStringList{"|||(-90,180)-(-90,180)", ",-90,180,0.0"} << QStringList{"|0|0|0.0|"} << 6;
}

void GpxTest::readingRules()
{
    QFETCH(QByteArray, gpx);
    QFETCH(bool, ok);
    QFETCH(QStringList, tracks);
    QFETCH(QStringList, waypoints);
    QFETCH(int, skipped);

    const GpxImportReport report = Import(gpx);
    QCOMPARE(report.ok, ok);
    QCOMPARE(report.skipped, skipped);
    QCOMPARE(report.error.isEmpty(), ok);
    QCOMPARE(DescribeTracks(*store), tracks);
    QCOMPARE(DescribeWaypoints(*store), waypoints);
    // Nothing half-written is left in the store folder.
    const QStringList left = QDir(GpsStore::Folder()).entryList({QStringLiteral("~*")}, QDir::Files);
    QVERIFY2(left.isEmpty(), qPrintable(left.join(u' ')));
}

void GpxTest::cancelKeepsCompletedTracks()
{
    const QString path = WriteTemporary(environment->Root(), QStringLiteral("long.gpx"),
                                        Gpx("<trk><name>Short</name><trkseg>" + Point.repeated(10) + "</trkseg></trk><trk><name>Long</name><trkseg>"
                                            + QByteArray(Point).replace("T10", "T11").repeated(5000) + "</trkseg></trk>"));
    CancelAtFirstReport cancel;
    const GpxImportReport report = ImportGPXFile(*store, path, &cancel);
    QVERIFY(report.cancelled && !report.ok);
    QCOMPARE(store->GetTrackCount(), 1);
    QCOMPARE(store->TrackAt(0).name, QStringLiteral("Short"));
    QCOMPARE(QDir(GpsStore::Folder()).entryList({QStringLiteral("~*")}, QDir::Files), QStringList());
}

void GpxTest::exportText()
{
    QVERIFY(Import(Gpx("<trk><name>Lake &amp; hills</name><trkseg><trkpt lat=\"45.7441\" lon=\"14.3043\"><ele>556.46</ele>"
                       "<time>2010-08-05T14:23:59Z</time></trkpt><trkpt lat=\"45.7442\" lon=\"14.3044\"/></trkseg></trk>"
                       "<wpt lat=\"45.7\" lon=\"14.2\"><ele>600</ele><name>Hut</name><desc>Beds &lt;20&gt;</desc></wpt>"
                       "<wpt lat=\"45.9\" lon=\"14.1\"><name>Peak</name></wpt>")).ok);
    const QString tracksOut = environment->Root() + QStringLiteral("/t.gpx");
    const QString waypointsOut = environment->Root() + QStringLiteral("/w.gpx");
    QVERIFY(ExportTracksToGpx({store->TrackAt(0), store->TrackAt(0)}, tracksOut, QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5), Qt::UTC), nullptr));
    QVERIFY(ExportWaypointsToGpx({store->WaypointAt(0), store->WaypointAt(1)}, waypointsOut));
    QCOMPARE(ReadAll(tracksOut), ReadAll(QStringLiteral(ORVANA_SOURCE_DIR "/tests/gps/data/export-tracks.gpx")));
    QCOMPARE(ReadAll(waypointsOut), ReadAll(QStringLiteral(ORVANA_SOURCE_DIR "/tests/gps/data/export-waypoints.gpx")));
}

QTEST_GUILESS_MAIN(GpxTest)
#include "tst_Gpx.moc"
