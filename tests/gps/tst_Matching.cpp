#include "GpsTestSupport.h"
#include "gps/GpxImport.h"
#include "app/Language.h"
#include "gps/PhotoMatching.h"
#include "library/PhotoRecord.h"
#include "TestEnvironment.h"

#include <QTest>

// Geotagging by time: the documented cases on real albums and stores and the period of the
// window; the report, the running total and a corpus pair are run end to end in tst_CliGps.
class MatchingTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void matchingRules_data();
    void matchingRules();
    void periodOfTheWindow();

private:
    std::unique_ptr<ScopedTestEnvironment> environment;
};

namespace {

// Tracks written as "TIME LAT" points, one list per track.
QByteArray TracksGpx(const QList<QStringList> &tracks)
{
    QByteArray body;
    for (const QStringList &track : tracks) {
        body += "<trk><trkseg>";
        for (const QString &point : track) {
            const QStringList parts = point.split(u' ');
            body += "<trkpt lat=\"" + parts[1].toUtf8() + "\" lon=\"7\"><ele>1</ele>"
                + (parts[0] == u"-" ? QByteArray() : "<time>" + parts[0].toUtf8() + "</time>") + "</trkpt>";
        }
        body += "</trkseg></trk>";
    }
    return Gpx(body);
}

} // namespace

void MatchingTest::init()
{
    RenewEnvironment(environment);
}

void MatchingTest::matchingRules_data()
{
    QTest::addColumn<double>("zone");
    QTest::addColumn<QList<QStringList>>("tracks");
    QTest::addColumn<QStringList>("photos");    // CaptureDate, a former latitude after a blank if any
    QTest::addColumn<QStringList>("latitudes"); // per photo, after matching

    using Tracks = QList<QStringList>;
    QTest::newRow("300 s is in reach") << 2.0 << Tracks{{"2008-06-01T09:00:00Z 0.5", "2008-06-01T10:05:00Z 1.0"}} << QStringList{"2008-06-01 12:00:00"} << QStringList{"1.0"};
    QTest::newRow("301 s is not") << 2.0 << Tracks{{"2008-06-01T09:00:00Z 0.5", "2008-06-01T10:05:01Z 1.0"}} << QStringList{"2008-06-01 12:00:00"} << QStringList{""};
    QTest::newRow("the window is strict: a track beginning 300 s after the photo is not walked")
        << 2.0 << Tracks{{"2008-06-01T10:05:00Z 1.0"}} << QStringList{"2008-06-01 12:00:00"} << QStringList{""};
    QTest::newRow("an exact match gives way to the next point in reach")
        << 0.0 << Tracks{{"2008-06-01T12:00:00Z 1.0", "2008-06-01T12:00:04Z 2.0", "2008-06-01T12:00:08Z 3.0"}} << QStringList{"2008-06-01 12:00:00"} << QStringList{"2.0"};
    QTest::newRow("an exact match stays when the next point is out of reach")
        << 0.0 << Tracks{{"2008-06-01T12:00:00Z 1.0", "2008-06-01T12:06:00Z 2.0"}} << QStringList{"2008-06-01 12:00:00"} << QStringList{"1.0"};
    QTest::newRow("the closer of two tracks") << 0.0 << Tracks{{"2008-06-01T12:01:00Z 1.0"}, {"2008-06-01T11:59:30Z 2.0"}} << QStringList{"2008-06-01 12:00:00"} << QStringList{"2.0"};
    QTest::newRow("a tie goes to the earlier track") << 0.0 << Tracks{{"2008-06-01T12:00:30Z 1.0"}, {"2008-06-01T11:59:30Z 2.0"}} << QStringList{"2008-06-01 12:00:00"} << QStringList{"1.0"};
    QTest::newRow("a tie within a track goes to the earlier point")
        << 0.0 << Tracks{{"2008-06-01T11:59:50Z 1.0", "2008-06-01T12:00:10Z 2.0"}} << QStringList{"2008-06-01 12:00:00"} << QStringList{"1.0"};
    QTest::newRow("200 s before the track: its first point") << 0.0 << Tracks{{"2008-06-01T12:03:20Z 1.0", "2008-06-01T12:04:00Z 2.0"}} << QStringList{"2008-06-01 12:00:00"} << QStringList{"1.0"};
    QTest::newRow("400 s before the track: nothing") << 0.0 << Tracks{{"2008-06-01T12:06:40Z 1.0", "2008-06-01T12:07:00Z 2.0"}} << QStringList{"2008-06-01 12:00:00"} << QStringList{""};
    QTest::newRow("points without time are passed over")
        << 0.0 << Tracks{{"2008-06-01T11:50:00Z 1.0", "- 2.0", "2008-06-01T12:00:20Z 3.0"}} << QStringList{"2008-06-01 12:00:00"} << QStringList{"3.0"};
    QTest::newRow("the walk stops at the first point farther than the best")
        << 0.0 << Tracks{{"2008-06-01T11:59:50Z 1.0", "2008-06-01T12:04:00Z 2.0", "2008-06-01T11:59:58Z 3.0"}} << QStringList{"2008-06-01 12:00:00"} << QStringList{"1.0"};
    QTest::newRow("the best carries over: a later track starting farther is not walked")
        << 0.0 << Tracks{{"2008-06-01T12:01:40Z 1.0"}, {"2008-06-01T11:56:00Z 2.0", "2008-06-01T11:59:59Z 3.0"}} << QStringList{"2008-06-01 12:00:00"} << QStringList{"1.0"};
    QTest::newRow("a former position is never cleared") << 0.0 << Tracks{{"2008-06-01T14:00:00Z 1.0"}} << QStringList{"2008-06-01 12:00:00 46.500000"} << QStringList{"46.500000"};
    QTest::newRow("photos before 1990 are left alone")
        << 0.0 << Tracks{{"1989-12-31T23:59:00Z 1.0", "1990-01-01T00:05:00Z 2.0"}} << QStringList{"1989-12-31 23:59:59", "1990-01-01 00:04:00", "garbled"} << QStringList{"", "2.0", ""};
    QTest::newRow("a point more than 268435455 s away stops the walk before any match")
        << 0.0 << Tracks{{"1999-01-01T00:00:00Z 1.0", "2008-06-01T12:00:00Z 2.0"}} << QStringList{"2008-06-01 12:00:00"} << QStringList{""};
    QTest::newRow("the window's extra day: a track ending the day before is still walked")
        << 0.0 << Tracks{{"2008-06-01T11:00:00Z 1.0", "2008-06-02T11:59:00Z 2.0"}} << QStringList{"2008-06-02 12:00:00"} << QStringList{"2.0"};
    QTest::newRow("out of time order, walked in stored order") << 0.0 << Tracks{{"2008-06-01T11:58:00Z 1.0", "2008-06-01T12:01:00Z 2.0", "2008-06-01T11:59:30Z 3.0", "2008-06-01T12:00:10Z 4.0"}}
        << QStringList{"2008-06-01 12:00:00"} << QStringList{"4.0"};
    QTest::newRow("a track in reverse order is placed by its first and last points")
        << 0.0 << Tracks{{"2008-06-01T12:10:00Z 1.0", "2008-06-01T12:00:30Z 2.0", "2008-06-01T12:00:10Z 3.0"}} << QStringList{"2008-06-01 12:00:00"} << QStringList{""};
}

void MatchingTest::matchingRules()
{
    QFETCH(double, zone);
    QFETCH(QList<QStringList>, tracks);
    QFETCH(QStringList, photos);
    QFETCH(QStringList, latitudes);

    GpsStore store;
    QVERIFY(ImportGPXFile(store, WriteTemporary(environment->Root(), QStringLiteral("t.gpx"), TracksGpx(tracks))).ok);
    QList<QStringList> records;
    for (const QString &photo : photos) {
        records << QStringList{QStringLiteral("File=p%1.jpg").arg(records.size()), QStringLiteral("CaptureDate=") + photo.left(19)};
        if (photo.size() > 20)
            records.back() << QStringLiteral("Latitude=") + photo.mid(20);
    }
    auto album = MakeAlbum(environment->Root() + QStringLiteral("/Album"), records);
    QList<int> all;
    for (int i = 1; i <= album->RecordCount(); ++i)
        all << i;
    RecordingPrompter prompter;
    const MatchReport report = MatchPhotosWithTracks(*album, MatchScope::AllPhotos, all, store, DefaultMatchWindow(zone), prompter, nullptr);
    QVERIFY(report.ran);
    QStringList got;
    for (int i = 1; i <= album->RecordCount(); ++i) {
        got << album->Record(PhotoRecord::Latitude, i);
        if (!got.back().isEmpty() && got.back() != u"46.500000") {
            QCOMPARE(album->Record(PhotoRecord::Longitude, i), QStringLiteral("7"));
            QCOMPARE(album->Record(PhotoRecord::Elevation, i), QStringLiteral("1.0"));
        }
    }
    QCOMPARE(got, latitudes);
}

void MatchingTest::periodOfTheWindow()
{
    GpsStore store;
    QVERIFY(ImportGPXFile(store, WriteTemporary(environment->Root(), QStringLiteral("t.gpx"),
                                                TracksGpx({{"2020-05-04T22:00:00Z 1", "2020-05-04T23:30:00Z 2"}, {"2020-05-06T00:30:00Z 3"},
                                                           {"- 4"}}))).ok);
    // In zone +2 the first track ends on 5 May and the second begins on 6 May; the third has no time.
    QCOMPARE(ListedTracks(store, {QDate(2020, 5, 5), QDate(2020, 5, 5), 2}), QList<int>{0});
    QCOMPARE(ListedTracks(store, {QDate(2020, 5, 5), QDate(2020, 5, 6), 2}), (QList<int>{0, 1}));
    QCOMPARE(ListedTracks(store, {QDate(2020, 5, 4), QDate(2020, 5, 4), 0}), QList<int>{0});
    RecordingPrompter prompter;
    QVERIFY(CheckMatchWindow({QDate(2020, 5, 5), QDate(2020, 5, 5), 0}, prompter));
    QVERIFY(!CheckMatchWindow({QDate(2020, 5, 6), QDate(2020, 5, 5), 0}, prompter));
    QCOMPARE(prompter.errors, QStringList{GetLocalizedString(QStringLiteral("MessageWrongDateGPS"), QStringLiteral("GPS"))});
}

QTEST_GUILESS_MAIN(MatchingTest)
#include "tst_Matching.moc"
