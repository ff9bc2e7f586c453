#include "GpsTestSupport.h"
#include "PhotoRecord.h"
#include "Settings.h"
#include "TestEnvironment.h"
#include "TimeCorrection.h"
#include "TimeText.h"
#include "TimeZones.h"

#include <QDir>
#include <QTest>

// Time texts, the zone offset and its list, and the two ways of shifting capture times.
class TimeRulesTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void timeTexts_data();
    void timeTexts();
    void zoneConversion_data();
    void zoneConversion();
    void zoneList();
    void savedZone_data();
    void savedZone();
    void differenceList();
    void shifts_data();
    void shifts();

private:
    std::unique_ptr<ScopedTestEnvironment> environment;
};

void TimeRulesTest::init()
{
    RenewEnvironment(environment);
}

void TimeRulesTest::timeTexts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("normalized"); // "" when unreadable
    QTest::addColumn<QString>("fileStamp");

    QTest::newRow("GPX time") << "2008-05-01T10:20:30Z" << "2008-05-01 10:20:30" << "20080501_102030";
    QTest::newRow("fraction and offset ignored") << "2008-05-01T10:20:30.5+02:00" << "2008-05-01 10:20:30" << "20080501_102030";
    QTest::newRow("no zone") << "2013-01-01T12:00:04" << "2013-01-01 12:00:04" << "20130101_120004";
    QTest::newRow("capture date") << "1999-12-31 23:59:59" << "1999-12-31 23:59:59" << "19991231_235959";
    QTest::newRow("separators are not looked at") << "2008/05/01x10.20.30" << "2008-05-01 10:20:30" << "20080501_102030";
    QTest::newRow("leap day") << "2024-02-29T00:00:00Z" << "2024-02-29 00:00:00" << "20240229_000000";
    QTest::newRow("no leap day in 2100") << "2100-02-29T00:00:00Z" << "" << "";
    QTest::newRow("before 1970") << "1901-12-13T20:45:52.2073437Z" << "1901-12-13 20:45:52" << "19011213_204552";
    QTest::newRow("hour 24") << "2008-05-01T24:00:00Z" << "" << "";
    QTest::newRow("too short") << "2008-05-01T10:20" << "" << "";
    QTest::newRow("empty") << "" << "" << "";
    QTest::newRow("letters") << "2008-O5-01T10:20:30Z" << "" << "";
}

void TimeRulesTest::timeTexts()
{
    QFETCH(QString, text);
    QFETCH(QString, normalized);
    QFETCH(QString, fileStamp);
    QCOMPARE(TimeText::Normalized(text), normalized);
    QCOMPARE(TimeText::FileStamp(text), fileStamp);
    QCOMPARE(TimeText::Seconds(text.toUtf8()).has_value(), !normalized.isEmpty());
}

void TimeRulesTest::zoneConversion_data()
{
    QTest::addColumn<double>("hours");
    QTest::addColumn<QString>("utc");
    QTest::addColumn<QString>("local");

    QTest::newRow("+2") << 2.0 << "2008-05-01T10:05:00Z" << "2008-05-01 12:05:00";
    QTest::newRow("+5.5") << 5.5 << "2008-05-01T06:30:00Z" << "2008-05-01 12:00:00";
    QTest::newRow("-3.5 into the year before") << -3.5 << "2008-01-01 02:00:00" << "2007-12-31 22:30:00";
    QTest::newRow("+5.75") << 5.75 << "2008-12-31T18:30:00Z" << "2009-01-01 00:15:00";
    QTest::newRow("-9.5") << -9.5 << "2008-03-01T09:00:00Z" << "2008-02-29 23:30:00";
    QTest::newRow("+13") << 13.0 << "2008-05-31T11:00:00Z" << "2008-06-01 00:00:00";
    QTest::newRow("minutes rounded") << 1.01 << "2008-05-01T00:00:00Z" << "2008-05-01 01:01:00";
    QTest::newRow("unreadable") << 2.0 << "yesterday" << "";
}

void TimeRulesTest::zoneConversion()
{
    QFETCH(double, hours);
    QFETCH(QString, utc);
    QFETCH(QString, local);
    QCOMPARE(GetDateWithSelectedTimeZone(utc, hours), local);
}

void TimeRulesTest::zoneList()
{
    const QList<TimeZoneEntry> entries = TimeZoneEntries();
    QCOMPARE(entries.size(), 68);
    QCOMPARE(entries[0].label, QStringLiteral("(GMT-12:00) Baker Island, Howland Island"));
    QCOMPARE(entries[0].hours, -12.0);
    QCOMPARE(entries[1].label, QStringLiteral("(GMT-12:00) Baker Island, Howland Island (Daylight Saving Time)"));
    QCOMPARE(entries[1].hours, -11.0);
    // The daylight entry of a zone one hour east of GMT is two hours east.
    QCOMPARE(entries[31].hours, 2.0);
    QCOMPARE(entries[46].hours, 5.75);
    QCOMPARE(entries[67].hours, 14.0);
}

void TimeRulesTest::savedZone_data()
{
    QTest::addColumn<QString>("zone");        // [GPS] TimeZone; "-" to leave it out
    QTest::addColumn<QString>("daylight");
    QTest::addColumn<int>("computerSeconds");
    QTest::addColumn<int>("entry");

    QTest::newRow("saved zone") << "15" << "0" << 0 << 30;
    QTest::newRow("saved daylight entry") << "15" << "1" << 0 << 31;
    QTest::newRow("no choice: the computer's zone") << "-" << "" << 19800 << 44;
    QTest::newRow("empty choice: the computer's zone") << "" << "1" << -12600 << 20;
    QTest::newRow("no zone has the computer's offset: the nearest") << "-" << "" << 3 * 3600 + 60 << 34;
    QTest::newRow("a choice past the list: the computer's zone") << "99" << "0" << 0 << 28;
}

void TimeRulesTest::savedZone()
{
    QFETCH(QString, zone);
    QFETCH(QString, daylight);
    QFETCH(int, computerSeconds);
    QFETCH(int, entry);
    if (zone != u"-") {
        WriteSetting(QStringLiteral("GPS"), QStringLiteral("TimeZone"), zone);
        WriteSetting(QStringLiteral("GPS"), QStringLiteral("TimeZoneDaylight"), daylight);
    }
    const QList<TimeZoneEntry> entries = TimeZoneEntries();
    QCOMPARE(SavedTimeZoneEntry(entries, computerSeconds), entry);
    SaveTimeZoneEntry(45);
    QCOMPARE(ReadSetting(QStringLiteral("GPS"), QStringLiteral("TimeZone")), QStringLiteral("22"));
    QCOMPARE(ReadSetting(QStringLiteral("GPS"), QStringLiteral("TimeZoneDaylight")), QStringLiteral("1"));
    QCOMPARE(SelectedTimeZoneHours(), 6.5);
}

void TimeRulesTest::differenceList()
{
    const QList<TimeDifferenceEntry> entries = TimeDifferenceEntries();
    QCOMPARE(entries.size(), 101);
    QStringList labels;
    for (const TimeDifferenceEntry &entry : entries)
        labels << entry.label;
    QCOMPARE(labels.mid(0, 2), (QStringList{"+25:00 Hours", "+24:30 Hours"}));
    QCOMPARE(labels.mid(47, 7), (QStringList{"+1:30 Hours", "+1:00 Hour", "+0:30 Hours", "No Change", "-0:30 Hours", "-1:00 Hour", "-1:30 Hours"}));
    QCOMPARE(labels.last(), QStringLiteral("-25:00 Hours"));
    QCOMPARE(entries[39].hours, 5.5);
    QCOMPARE(entries[50].hours, 0.0);
}

void TimeRulesTest::shifts_data()
{
    QTest::addColumn<QString>("how"); // "difference HOURS" or "corrector DAYS HOURS MINUTES SECONDS SIGN"
    QTest::addColumn<QStringList>("before");
    QTest::addColumn<QStringList>("after");

    QTest::newRow("-0:30 into the year before") << "difference -0.5" << QStringList{"2008-01-01 00:10:00"} << QStringList{"2007-12-31 23:40:00"};
    QTest::newRow("+5:30") << "difference 5.5" << QStringList{"2008-02-28 20:00:00"} << QStringList{"2008-02-29 01:30:00"};
    QTest::newRow("-5:30") << "difference -5.5" << QStringList{"2008-03-01 01:00:00"} << QStringList{"2008-02-29 19:30:00"};
    QTest::newRow("-25:00") << "difference -25" << QStringList{"2009-03-01 00:30:00"} << QStringList{"2009-02-27 23:30:00"};
    QTest::newRow("no change") << "difference 0" << QStringList{"2008-01-01 00:10:00"} << QStringList{"2008-01-01 00:10:00"};
    QTest::newRow("1 day 25 hours forward is 49 hours") << "corrector 1 25 0 0 1" << QStringList{"2008-12-30 23:00:00"} << QStringList{"2009-01-02 00:00:00"};
    QTest::newRow("backward, fractions and negatives")
        << "corrector 0 1.5 -30 30 -1" << QStringList{"2008-06-01 00:00:00"} << QStringList{"2008-05-31 22:59:30"};
    QTest::newRow("seconds across a month") << "corrector 0 0 0 61 1" << QStringList{"2008-04-30 23:59:59"} << QStringList{"2008-05-01 00:01:00"};
    QTest::newRow("unreadable dates are left alone")
        << "corrector 0 1 0 0 1" << QStringList{"", "2008-13-01 00:00:00", "2008-01-01 00:00:00"} << QStringList{"", "2008-13-01 00:00:00", "2008-01-01 01:00:00"};
}

void TimeRulesTest::shifts()
{
    QFETCH(QString, how);
    QFETCH(QStringList, before);
    QFETCH(QStringList, after);
    QList<QStringList> records;
    QList<int> selected;
    for (const QString &date : before) {
        records << QStringList{QStringLiteral("File=%1.jpg").arg(records.size()), QStringLiteral("CaptureDate=") + date};
        selected << static_cast<int>(records.size());
    }
    // One photo more that is not selected, and must not move.
    records << QStringList{"File=other.jpg", "CaptureDate=2008-01-01 00:10:00"};
    auto album = MakeAlbum(environment->Root() + QStringLiteral("/Album"), records);
    const QStringList parts = how.split(u' ');
    if (parts[0] == u"difference") {
        ApplyTimeDifference(*album, selected, parts[1].toDouble());
    } else {
        ApplyTimeCorrection(*album, selected,
                            CorrectorOffsetDays(parts[1].toDouble(), parts[2].toDouble(), parts[3].toDouble(), parts[4].toDouble(), parts[5].toInt()));
    }
    QStringList dates;
    for (const int index : selected)
        dates << album->Record(PhotoRecord::CaptureDate, index);
    QCOMPARE(dates, after);
    QCOMPARE(album->Record(PhotoRecord::CaptureDate, album->RecordCount()), QStringLiteral("2008-01-01 00:10:00"));
    QCOMPARE(album->IsModified(), before != after);
}

QTEST_GUILESS_MAIN(TimeRulesTest)
#include "tst_TimeRules.moc"
