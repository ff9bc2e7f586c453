#include "ColourTables.h"
#include "ExifToolCommand.h"

#include <QTest>

// The ExifTool arguments a record's values become, and the colour tables of the adjust command.
// (How tags become record values is checked on the whole corpus against ExifTool.)
class TagRules : public QObject {
    Q_OBJECT
private slots:
    void exifToolArguments_data();
    void exifToolArguments();
    void colourTables_data();
    void colourTables();
};

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
    // Positions on the meridian, below sea level and texts beyond Windows-1252 are written for real in tst_MetadataWrite.
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
