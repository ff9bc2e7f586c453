#include "GpsTestSupport.h"
#include "app/Settings.h"
#include "TestEnvironment.h"
#include "gps/TimeText.h"
#include "gps/TimeZones.h"

#include <QTest>

// Time texts, the zone offset and the saved zone; shifting capture times runs end to end in tst_CliGps.
class TimeRulesTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void timeTexts_data();
    void timeTexts();
    void zoneConversion_data();
    void zoneConversion();
    void savedZone_data();
    void savedZone();

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

QTEST_GUILESS_MAIN(TimeRulesTest)
#include "tst_TimeRules.moc"
