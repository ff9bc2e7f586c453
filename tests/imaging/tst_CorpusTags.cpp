#include "imaging/ImageTags.h"
#include "ImagingTestSupport.h"
#include "imaging/Picture.h"
#include "TestEnvironment.h"
#include "imaging/Thumbnail.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

// The tags of every corpus photo as the program reads them, against what ExifTool reads from the
// same files; and damaged files, which must fail cleanly.
class CorpusTags : public QObject {
    Q_OBJECT
private slots:
    void readsAsExifTool_data();
    void readsAsExifTool();
    void damagedFilesFailCleanly_data();
    void damagedFilesFailCleanly();
};

namespace {

// ExifTool drops the IPTC record of this file as damaged; Exiv2 recovers its caption.
const QStringList ReadBetterThanExifTool = {QStringLiteral("photos/exiv2-bug444.jpg")};

QString Text(const QJsonValue &value)
{
    return value.isDouble() ? QString::number(value.toDouble()) : value.toString();
}

QString ExpectedDate(const QJsonObject &reference)
{
    QString date = reference.value(QStringLiteral("ExifIFD:DateTimeOriginal")).toString().trimmed();
    if (date.size() != 19)
        return {};
    date[4] = u'-';
    date[7] = u'-';
    return QDateTime::fromString(date, QStringLiteral("yyyy-MM-dd HH:mm:ss")).isValid() ? date : QString();
}

QString ExpectedKeywords(const QJsonValue &keywords)
{
    QStringList list;
    if (keywords.isArray()) {
        for (const auto &keyword : keywords.toArray())
            list << Text(keyword);
    } else if (!keywords.isUndefined()) {
        list << Text(keywords);
    }
    const QString joined = list.join(u';');
    return joined.isEmpty() ? QString() : joined + u';';
}

void CompareDegrees(const QString &ours, const QJsonValue &reference)
{
    if (!reference.isDouble()) {
        QCOMPARE(ours, QString());
        return;
    }
    QVERIFY2(!ours.isEmpty(), "a position ExifTool reads is missing");
    QVERIFY2(std::abs(ours.toDouble() - reference.toDouble()) < 1e-6, qPrintable(ours));
}

} // namespace

// The stored reference lacks XMP: the caption and keywords there come from the real ExifTool.
QJsonObject XmpTextsByFile()
{
    QProcess exiftool;
    exiftool.setWorkingDirectory(CorpusPath(QString()));
    exiftool.start(QStringLiteral("exiftool"), {"-j", "-G1", "-XMP-dc:Description", "-XMP-dc:Subject", "photos"});
    exiftool.waitForFinished(120000);
    QJsonObject byFile;
    for (const auto &photo : QJsonDocument::fromJson(exiftool.readAllStandardOutput()).array())
        byFile.insert(photo.toObject().value(QStringLiteral("SourceFile")).toString(), photo);
    return byFile;
}

void CorpusTags::readsAsExifTool_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QJsonObject>("reference");
    const QJsonArray photos = QJsonDocument::fromJson(ReadAll(CorpusPath(QStringLiteral("photos-exiftool.json")))).array();
    const QJsonObject xmp = XmpTextsByFile();
    QVERIFY(photos.size() > 100 && xmp.size() == photos.size());
    for (const auto &photo : photos) {
        const QString file = photo.toObject().value(QStringLiteral("SourceFile")).toString();
        QJsonObject reference = photo.toObject();
        for (const QString &tag : {QStringLiteral("XMP-dc:Description"), QStringLiteral("XMP-dc:Subject")})
            reference.insert(tag, xmp.value(file).toObject().value(tag));
        if (!ReadBetterThanExifTool.contains(file))
            QTest::newRow(qPrintable(file)) << file << reference;
    }
}

void CorpusTags::readsAsExifTool()
{
    QFETCH(QString, file);
    QFETCH(QJsonObject, reference);
    ImageTags tags;
    tags.LoadExifTags(CorpusPath(file));
    QCOMPARE(tags.cameraMaker, Text(reference.value(QStringLiteral("IFD0:Make"))));
    QCOMPARE(tags.cameraModel, Text(reference.value(QStringLiteral("IFD0:Model"))));
    QCOMPARE(tags.dateTaken, ExpectedDate(reference));
    // XMP where the IPTC record has no caption or keywords.
    const QString caption = Text(reference.value(QStringLiteral("IPTC:Caption-Abstract")));
    QCOMPARE(tags.caption, caption.isEmpty() ? Text(reference.value(QStringLiteral("XMP-dc:Description"))) : caption);
    const QString keywords = ExpectedKeywords(reference.value(QStringLiteral("IPTC:Keywords")));
    QCOMPARE(tags.keywords, keywords.isEmpty() ? ExpectedKeywords(reference.value(QStringLiteral("XMP-dc:Subject"))) : keywords);
    CompareDegrees(tags.latitude, reference.value(QStringLiteral("Composite:GPSLatitude")));
    CompareDegrees(tags.longitude, reference.value(QStringLiteral("Composite:GPSLongitude")));
    const bool hasFlash = reference.contains(QStringLiteral("ExifIFD:Flash"));
    QCOMPARE(tags.flash.isEmpty(), !hasFlash);
    if (hasFlash)
        QCOMPARE(tags.flash, reference.value(QStringLiteral("ExifIFD:Flash")).toInt() & 1 ? QStringLiteral("ON") : QStringLiteral("OFF"));
}

void CorpusTags::damagedFilesFailCleanly_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("decodes");  // false: the damage is such that no picture may come out

    const QDir malformed(CorpusPath(QStringLiteral("photos-malformed")));
    for (const QString &name : malformed.entryList(QDir::Files))
        QTest::newRow(qPrintable(name)) << name << ReadAll(malformed.filePath(name)) << false;

    // A real photo cut short or with bits flipped may still show what it holds, or fail.
    const QByteArray photo = ReadAll(CorpusPath(QStringLiteral("photos/exif-samples-DSCN0010.jpg")));
    for (const qsizetype length : {2, 100, 2000, 9000, 60000, 150000})
        QTest::newRow(qPrintable(QStringLiteral("cut at %1").arg(length))) << "cut.jpg" << photo.left(length) << true;
    for (const qsizetype step : {97, 1021, 4099}) {
        QByteArray flipped = photo;
        for (qsizetype i = step; i < flipped.size(); i += step * 7)
            flipped[i] = static_cast<char>(flipped[i] ^ (1 << (i % 8)));
        QTest::newRow(qPrintable(QStringLiteral("bits flipped every %1").arg(step * 7))) << "flipped.jpg" << flipped << true;
    }
}

void CorpusTags::damagedFilesFailCleanly()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    QFETCH(bool, decodes);
    QTemporaryDir folder;
    const QString path = folder.filePath(name);
    WriteAll(path, bytes);
    const QString thumbnailPath = folder.filePath(QStringLiteral("thumbnail.jpg"));

    ImageTags tags;
    tags.LoadExifTags(path);
    const Result thumbnail = MakeThumbnail(path, thumbnailPath);
    const Picture picture = Picture::Load(path);
    QCOMPARE(QFile::exists(thumbnailPath), thumbnail.ok);
    if (!decodes) {
        QVERIFY(!thumbnail.ok);
        QVERIFY(!thumbnail.message.isEmpty());
        QVERIFY(picture.IsNull());
    }
}

QTEST_GUILESS_MAIN(CorpusTags)
#include "tst_CorpusTags.moc"
