#include "ColourTables.h"
#include "ExifToolCommand.h"
#include "FlashText.h"
#include "TagRules.h"

#include <QTest>

// The conversions between a photo's tags and its record, and the colour tables of the adjust
// command, on the values the program's users meet.
class TagRules : public QObject {
    Q_OBJECT
private slots:
    void dateTaken_data();
    void dateTaken();
    void flash_data();
    void flash();
    void keywords_data();
    void keywords();
    void gpsDegrees_data();
    void gpsDegrees();
    void exifToolArguments_data();
    void exifToolArguments();
    void colourTables_data();
    void colourTables();
};

void TagRules::dateTaken_data()
{
    QTest::addColumn<QString>("tag");
    QTest::addColumn<QString>("stored");
    QTest::newRow("camera form") << "2008:07:14 09:30:00" << "2008-07-14 09:30:00";
    QTest::newRow("trailing blank") << "2008:07:14 09:30:00 " << "2008-07-14 09:30:00";
    QTest::newRow("date only") << "2008:07:14" << "";
    QTest::newRow("all zero") << "0000:00:00 00:00:00" << "";
    QTest::newRow("blank clock") << "    :  :     :  :  " << "";
    QTest::newRow("no such day") << "2008:02:30 10:00:00" << "";
    QTest::newRow("zone suffix") << "2021:08:19 18:48:53Z" << "";
    QTest::newRow("missing") << "" << "";
}

void TagRules::dateTaken()
{
    QFETCH(QString, tag);
    QFETCH(QString, stored);
    QCOMPARE(DateTakenText(tag), stored);
}

void TagRules::flash_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("state");
    QTest::newRow("did not fire") << "Flash did not fire" << "OFF";
    QTest::newRow("fired, auto") << "Flash fired, auto mode" << "ON";
    QTest::newRow("absent") << "" << "";
    QTest::newRow("value 0") << FlashWording(0) << "OFF";
    QTest::newRow("value 1") << FlashWording(1) << "ON";
    QTest::newRow("value 5, return not detected") << FlashWording(5) << "ON";
    QTest::newRow("value 16, suppressed") << FlashWording(16) << "OFF";
    QTest::newRow("value 24, auto, no fire") << FlashWording(24) << "OFF";
    QTest::newRow("value 25, auto, fired") << FlashWording(25) << "ON";
    QTest::newRow("value 32, no flash function") << FlashWording(32) << "OFF";
    QTest::newRow("value 80, red-eye, no fire") << FlashWording(80) << "OFF";
    QTest::newRow("value 9969, nonsense with bit 0") << FlashWording(9969) << "ON";
}

void TagRules::flash()
{
    QFETCH(QString, text);
    QFETCH(QString, state);
    QCOMPARE(FlashState(text), state);
}

void TagRules::keywords_data()
{
    QTest::addColumn<QString>("tag");
    QTest::addColumn<QString>("stored");
    QTest::newRow("two") << "a,b" << "a;b;";
    QTest::newRow("one") << "jambalaya" << "jambalaya;";
    QTest::newRow("with blanks") << "ronald reagan,cvn 76" << "ronald reagan;cvn 76;";
    QTest::newRow("none") << "" << "";
}

void TagRules::keywords()
{
    QFETCH(QString, tag);
    QFETCH(QString, stored);
    QCOMPARE(KeywordsText(tag), stored);
}

void TagRules::gpsDegrees_data()
{
    QTest::addColumn<QString>("reference");
    QTest::addColumn<QString>("sexagesimal");
    QTest::addColumn<GpsAxis>("axis");
    QTest::addColumn<QString>("stored");
    QTest::newRow("north") << "N" << "41:51:10.8" << GpsAxis::Latitude << "41.853000";
    QTest::newRow("south") << "S" << "0:22:16.68" << GpsAxis::Latitude << "-0.371300";
    QTest::newRow("west") << "W" << "116:51:18" << GpsAxis::Longitude << "-116.855000";
    QTest::newRow("east, decimal minutes") << "E" << "12:29.33:0" << GpsAxis::Longitude << "12.488833";
    QTest::newRow("N on a longitude is not east") << "N" << "12:0:0" << GpsAxis::Longitude << "-12.000000";
    QTest::newRow("zero south is zero") << "S" << "0:0:0" << GpsAxis::Latitude << "0.000000";
    QTest::newRow("two parts") << "N" << "41:51" << GpsAxis::Latitude << "";
    QTest::newRow("empty") << "N" << "" << GpsAxis::Latitude << "";
}

void TagRules::gpsDegrees()
{
    QFETCH(QString, reference);
    QFETCH(QString, sexagesimal);
    QFETCH(GpsAxis, axis);
    QFETCH(QString, stored);
    QCOMPARE(SignedDegreesText({reference, sexagesimal}, axis), stored);
}

void TagRules::exifToolArguments_data()
{
    QTest::addColumn<QString>("description");
    QTest::addColumn<QString>("keywords");
    QTest::addColumn<double>("longitude");
    QTest::addColumn<double>("latitude");
    QTest::addColumn<double>("elevation");
    QTest::addColumn<QStringList>("arguments");

    const QString file = QStringLiteral("/photos/a.jpg");
    const QStringList position = {"-GPSMapDatum=WGS-84", "-gps:GPSMeasureMode=2"};
    QTest::newRow("the documented example")
        << "Lake \"Blue\"" << "lake;summer;" << -122.5 << 37.75 << 12.0
        << (QStringList{"-overwrite_original", "-Caption-Abstract=Lake \"Blue\"", "-ImageDescription=Lake \"Blue\"",
                        "-XMP-dc:Description=Lake \"Blue\"", "-keywords=lake", "-keywords=summer", "-XMP-dc:Subject=lake",
                        "-XMP-dc:Subject=summer"}
            << position
            << QStringList{"-gps:GPSLongitudeRef=W", "-gps:GPSLongitude=122.5", "-gps:GPSLatitudeRef=N",
                           "-gps:GPSLatitude=37.75", "-gps:GPSAltitudeRef=Above Sea Level", "-gps:GPSAltitude=12.0", file});
    QTest::newRow("empty keyword pieces skipped")
        << "" << "a;;b;" << 0.0 << 0.0 << 0.0 << QStringList{"-overwrite_original", "-keywords=a", "-keywords=b", "-XMP-dc:Subject=a", "-XMP-dc:Subject=b", file};
    QTest::newRow("0, 0 is no position") << "x" << "" << 0.0 << 0.0 << 5.0
                                         << QStringList{"-overwrite_original", "-Caption-Abstract=x", "-ImageDescription=x", "-XMP-dc:Description=x", file};
    QTest::newRow("latitude 5 on the meridian")
        << "" << "" << 0.0 << 5.0 << 0.0
        << (QStringList{"-overwrite_original"} << position
                                               << QStringList{"-gps:GPSLongitudeRef=E", "-gps:GPSLongitude=0.0", "-gps:GPSLatitudeRef=N",
                                                              "-gps:GPSLatitude=5.0", "-gps:GPSAltitudeRef=Above Sea Level",
                                                              "-gps:GPSAltitude=0.0", file});
    QTest::newRow("below sea level, six decimals at most")
        << "" << "" << 151.2093456789 << -33.8688 << -3.26
        << (QStringList{"-overwrite_original"} << position
                                               << QStringList{"-gps:GPSLongitudeRef=E", "-gps:GPSLongitude=151.209346",
                                                              "-gps:GPSLatitudeRef=S", "-gps:GPSLatitude=33.8688",
                                                              "-gps:GPSAltitudeRef=Below Sea Level", "-gps:GPSAltitude=3.3", file});
    QTest::newRow("text beyond Windows-1252 switches IPTC to UTF-8")
        << QString::fromUtf8("\xE6\xB9\x96") << "k;" << 0.0 << 0.0 << 0.0
        << QStringList{"-overwrite_original", "-tagsFromFile", "@", "-IPTC:all", "--IPTC:Keywords",
                       "-IPTC:CodedCharacterSet=UTF8", QString::fromUtf8("-Caption-Abstract=\xE6\xB9\x96"),
                       QString::fromUtf8("-ImageDescription=\xE6\xB9\x96"), QString::fromUtf8("-XMP-dc:Description=\xE6\xB9\x96"),
                       "-keywords=k", "-XMP-dc:Subject=k", file};
    QTest::newRow("nothing to write") << "" << "" << 0.0 << 0.0 << 100.0 << QStringList{};
}

void TagRules::exifToolArguments()
{
    QFETCH(QString, description);
    QFETCH(QString, keywords);
    QFETCH(double, longitude);
    QFETCH(double, latitude);
    QFETCH(double, elevation);
    QFETCH(QStringList, arguments);
    QCOMPARE(ExifToolArguments({description, keywords, longitude, latitude, elevation}, QStringLiteral("/photos/a.jpg")), arguments);
}

void TagRules::colourTables_data()
{
    QTest::addColumn<int>("contrast");
    QTest::addColumn<int>("red");
    QTest::addColumn<QList<int>>("entries");      // indices checked in the red table
    QTest::addColumn<QList<int>>("values");
    QTest::newRow("neutral is identity") << 100 << 150 << QList<int>{0, 1, 127, 128, 254, 255} << QList<int>{0, 1, 127, 128, 254, 255};
    QTest::newRow("contrast 200") << 200 << 150 << QList<int>{0, 63, 64, 128, 192, 255} << QList<int>{0, 0, 0, 128, 255, 255};
    QTest::newRow("red 160") << 100 << 160 << QList<int>{0, 100, 245, 246, 255} << QList<int>{10, 110, 255, 255, 255};
    // Factor 1.5: 1.5 x 1 = 1.5 rounds to 2, 1.5 x 3 = 4.5 rounds to 4 (halves to even).
    QTest::newRow("contrast 150, halves to even") << 150 << 150 << QList<int>{127, 129, 131, 125} << QList<int>{126, 130, 132, 124};
    QTest::newRow("contrast 50") << 50 << 150 << QList<int>{0, 128, 255} << QList<int>{64, 128, 192};
}

void TagRules::colourTables()
{
    QFETCH(int, contrast);
    QFETCH(int, red);
    QFETCH(QList<int>, entries);
    QFETCH(QList<int>, values);
    const ColourTables tables = BuildColourTables({contrast, red, 150, 150});
    for (qsizetype i = 0; i < entries.size(); ++i)
        QCOMPARE(int(tables.red[static_cast<std::size_t>(entries[i])]), values[i]);
    QCOMPARE(tables.green, BuildColourTables({contrast, 150, 150, 150}).blue);
}

QTEST_GUILESS_MAIN(TagRules)
#include "tst_TagRules.moc"
