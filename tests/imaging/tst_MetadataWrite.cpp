#include "ImagingTestSupport.h"
#include "imaging/MetadataWriter.h"
#include "imaging/ShellAndWait.h"
#include "TestEnvironment.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QJsonArray>
#include <QTemporaryDir>
#include <QTest>

// Captions, keywords and positions written by the real ExifTool and read back by it: one run per
// photo and one kept-open process for a batch must leave the same tags.
class MetadataWrite : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void writesWhatWasTyped_data();
    void writesWhatWasTyped();
    void existingLatinIptcSurvivesUtf8();
    void nothingToWriteRunsNothing();
    void batchStopsWhenCancelled();
    void shellAndWaitMessages();

private:
    ScopedTestEnvironment environment;
};

namespace {

const QStringList WrittenTags = {
    QStringLiteral("IPTC:Caption-Abstract"), QStringLiteral("IFD0:ImageDescription"), QStringLiteral("IPTC:Keywords"),
    QStringLiteral("XMP-dc:Description"), QStringLiteral("XMP-dc:Subject"),
    QStringLiteral("GPS:GPSLatitudeRef"), QStringLiteral("GPS:GPSLatitude"), QStringLiteral("GPS:GPSLongitudeRef"),
    QStringLiteral("GPS:GPSLongitude"), QStringLiteral("GPS:GPSAltitudeRef"), QStringLiteral("GPS:GPSAltitude"),
    QStringLiteral("GPS:GPSMapDatum"), QStringLiteral("GPS:GPSMeasureMode")};

// Every tag of the groups a write touches.
const QStringList TagGroups = {QStringLiteral("IPTC:all"), QStringLiteral("IFD0:all"), QStringLiteral("ExifIFD:all"),
                               QStringLiteral("GPS:all"), QStringLiteral("XMP:all")};

} // namespace

void MetadataWrite::initTestCase()
{
    QVERIFY2(!QStandardPaths::findExecutable(QStringLiteral("exiftool")).isEmpty(), "exiftool is needed");
}

void MetadataWrite::writesWhatWasTyped_data()
{
    QTest::addColumn<QString>("photo");
    QTest::addColumn<PhotoMetadata>("values");
    QTest::addColumn<QJsonObject>("expected");  // ExifTool's reading with -n

    const QString quote = QStringLiteral("Lake \"Blue\"");
    // ExifTool warns about this photo, naming its path, which holds the word "Errors".
    QTest::newRow("quotes, keywords and a position west and below sea level, with a warning")
        << "exiv2-issue_1918_poc2.jpg" << PhotoMetadata{quote, "lake;;summer;", -122.5, 37.75, -3.26}
        << QJsonObject{{"IPTC:Caption-Abstract", quote}, {"IFD0:ImageDescription", quote}, {"XMP-dc:Description", quote},
                       {"IPTC:Keywords", QJsonArray{"lake", "summer"}}, {"XMP-dc:Subject", QJsonArray{"lake", "summer"}},
                       {"GPS:GPSLatitudeRef", "N"},
                       {"GPS:GPSLatitude", 37.75}, {"GPS:GPSLongitudeRef", "W"}, {"GPS:GPSLongitude", 122.5},
                       {"GPS:GPSAltitudeRef", 1}, {"GPS:GPSAltitude", 3.3}, {"GPS:GPSMapDatum", "WGS-84"},
                       {"GPS:GPSMeasureMode", 2}};
    const QString lines = QStringLiteral("  two lines,\n mail me@home for $5 \\o/  ");
    // 0, 0 is no position: its elevation is not written either.
    QTest::newRow("line breaks, blanks, backslash, $ and @ exactly; no position")
        << "exiv2-empty.jpg" << PhotoMetadata{lines, "", 0, 0, 5}
        << QJsonObject{{"IPTC:Caption-Abstract", lines}, {"IFD0:ImageDescription", lines}, {"XMP-dc:Description", lines}};
    const QString chinese = QString::fromUtf8("\xE8\xA5\xBF\xE6\xB9\x96 caf\xC3\xA9");
    QTest::newRow("Chinese caption and keywords replace the old ones")
        << "exiv2-smiley1.jpg" << PhotoMetadata{chinese, QString::fromUtf8("\xE6\xB9\x96;"), 0, 0, 0}
        << QJsonObject{{"IPTC:Caption-Abstract", chinese}, {"IFD0:ImageDescription", chinese}, {"XMP-dc:Description", chinese},
                       {"IPTC:Keywords", QString::fromUtf8("\xE6\xB9\x96")}, {"XMP-dc:Subject", QString::fromUtf8("\xE6\xB9\x96")}};
    QTest::newRow("position only, on the meridian, over an old position")
        << "exiftool-GPS.jpg" << PhotoMetadata{"", "", 0, 5, 12.25}
        << QJsonObject{{"IPTC:Caption-Abstract", "Communications"}, {"IFD0:ImageDescription", "Communications"},
                       {"IPTC:Keywords", "Communications"},
                       {"GPS:GPSLatitudeRef", "N"}, {"GPS:GPSLatitude", 5}, {"GPS:GPSLongitudeRef", "E"},
                       {"GPS:GPSLongitude", 0}, {"GPS:GPSAltitudeRef", 0}, {"GPS:GPSAltitude", 12.3},
                       {"GPS:GPSMapDatum", "WGS-84"}, {"GPS:GPSMeasureMode", 2}};
}

void MetadataWrite::writesWhatWasTyped()
{
    QFETCH(QString, photo);
    QFETCH(PhotoMetadata, values);
    QFETCH(QJsonObject, expected);
    QTemporaryDir single(QDir::tempPath() + QStringLiteral("/Errors 2024-XXXXXX"));
    QTemporaryDir batch(QDir::tempPath() + QStringLiteral("/Errors 2024-XXXXXX"));
    const QString alone = CopyOfCorpusPhoto(photo, single.path());
    const QString inBatch = CopyOfCorpusPhoto(photo, batch.path());
    const QString neighbour = CopyOfCorpusPhoto(QStringLiteral("exiv2-bug528.jpg"), batch.path());

    const MetadataWriteReport report = WriteMetadata(alone, values);
    QVERIFY(report.attempted);
    QVERIFY2(report.result.ok, qPrintable(report.result.message));
    QCOMPARE(report.facts.size, QFileInfo(alone).size());
    QCOMPARE(report.facts.modified, QFileInfo(alone).lastModified().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")));
    QCOMPARE(ReadWithExifTool(alone, WrittenTags, true), expected);

    const QList<MetadataWriteReport> reports =
        WriteMetadataBatch({{inBatch, values}, {neighbour, {QStringLiteral("next"), QStringLiteral("k;"), 1.5, 47.6, 86}}});
    QCOMPARE(reports.size(), 2);
    for (const MetadataWriteReport &each : reports)
        QVERIFY2(each.result.ok, qPrintable(each.result.message));
    QCOMPARE(ReadWithExifTool(inBatch, TagGroups), ReadWithExifTool(alone, TagGroups));
}

// A file whose IPTC is Windows-1252 keeps its other values readable when the record turns UTF-8.
void MetadataWrite::existingLatinIptcSurvivesUtf8()
{
    QTemporaryDir folder;
    const QString photo = CopyOfCorpusPhoto(QStringLiteral("exiv2-Reagan.jpg"), folder.path());
    const QJsonObject before = ReadWithExifTool(photo, {QStringLiteral("IPTC:By-line")});
    QVERIFY(before.value(QStringLiteral("IPTC:By-line")).toString().contains(QChar(0xED)));
    const MetadataWriteReport report = WriteMetadata(photo, {QString::fromUtf8("\xE8\xA5\xBF"), QString(), 0, 0, 0});
    QVERIFY2(report.result.ok, qPrintable(report.result.message));
    QCOMPARE(ReadWithExifTool(photo, {QStringLiteral("IPTC:By-line")}), before);
}

void MetadataWrite::nothingToWriteRunsNothing()
{
    QTemporaryDir folder;
    const QString photo = CopyOfCorpusPhoto(QStringLiteral("exiftool-GPS.jpg"), folder.path());
    const QByteArray before = ReadAll(photo);
    // A program that leaves a trace when it runs.
    const QString install = environment.Env().install;
    environment.Env().install = folder.path();
    QDir(folder.path()).mkpath(QStringLiteral("Resources"));
    WriteAll(folder.filePath(QStringLiteral("Resources/exiftool")), "#!/bin/sh\necho ran >> \"$0.log\"\n");
    QFile::setPermissions(folder.filePath(QStringLiteral("Resources/exiftool")), QFileDevice::ReadOwner | QFileDevice::ExeOwner);

    QVERIFY(!WriteMetadataWithExifTool(photo, QString(), QString(), 0, 0, 25));
    QCOMPARE(WriteMetadataBatch({{photo, {}}, {photo, {}}}).size(), 2);
    QCOMPARE(ReadAll(photo), before);
    QVERIFY(!QFile::exists(folder.filePath(QStringLiteral("Resources/exiftool.log"))));

    // With something to write, the program in Resources is the one that runs.
    QVERIFY(WriteMetadataWithExifTool(photo, QStringLiteral("x"), QString(), 0, 0, 0));
    QCOMPARE(ReadAll(folder.filePath(QStringLiteral("Resources/exiftool.log"))), QByteArray("ran\n"));
    environment.Env().install = install;
}

void MetadataWrite::batchStopsWhenCancelled()
{
    QTemporaryDir folder;
    const QString first = CopyOfCorpusPhoto(QStringLiteral("exiv2-empty.jpg"), folder.path());
    const QString second = CopyOfCorpusPhoto(QStringLiteral("exiftool-GPS.jpg"), folder.path());
    const QByteArray secondBefore = ReadAll(second);
    const PhotoMetadata values{QStringLiteral("x"), QString(), 0, 0, 0};
    QList<qsizetype> told;
    const QList<MetadataWriteReport> reports = WriteMetadataBatch({{first, values}, {second, values}}, [&told](qsizetype done, const QString &) {
        told << done;
        return done < 1;
    });
    QCOMPARE(told, (QList<qsizetype>{0, 1}));
    QCOMPARE(reports.size(), 1);
    QVERIFY(reports[0].result.ok);
    QCOMPARE(ReadAll(second), secondBefore);
}

void MetadataWrite::shellAndWaitMessages()
{
    QString message;
    QVERIFY(ShellAndWait(QStringLiteral("true"), {}, message, 10000));
    QCOMPARE(message, QString());
    QVERIFY(!ShellAndWait(QStringLiteral("sleep"), {QStringLiteral("5")}, message, 300));
    QCOMPARE(message, QStringLiteral("The process has timed out."));
    QVERIFY(!ShellAndWait(QStringLiteral("/no/such/program"), {}, message, 10000));
    QCOMPARE(message, QStringLiteral("This program could not determine whether the process started.  "
                                     "Please watch the program and check it completes."));
}

QTEST_GUILESS_MAIN(MetadataWrite)
#include "tst_MetadataWrite.moc"
