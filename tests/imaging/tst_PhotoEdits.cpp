#include "ImagingTestSupport.h"
#include "PhotoEdits.h"
#include "TestEnvironment.h"
#include "Thumbnail.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <functional>

// Edits of real photo files keep their tags; lossless turns keep every pixel and marker; the
// colour effects and the watermark do what they say on the pixels; thumbnails fit the box.
class PhotoEdits : public QObject {
    Q_OBJECT
private slots:
    void editsKeepTags_data();
    void editsKeepTags();
    void fourRightTurnsGiveBackThePhoto();
    void thumbnails_data();
    void thumbnails();
    void effectsOnPixels();
    void watermarkPlaces();
};

namespace {

using FileEdit = std::function<EditOutcome(const QString &photo, const QString &thumbnail)>;

const QStringList KeptTags = {QStringLiteral("IPTC:all"), QStringLiteral("GPS:all"), QStringLiteral("XMP:all"),
                              QStringLiteral("IFD0:Make"), QStringLiteral("IFD0:Model"),
                              QStringLiteral("ExifIFD:DateTimeOriginal"), QStringLiteral("ExifIFD:FNumber")};

QJsonObject KeptTagsOf(const QString &path)
{
    QJsonObject tags = ReadWithExifTool(path, KeptTags);
    tags.remove(QStringLiteral("SourceFile"));
    return tags;
}

// The application and comment segments, less the EXIF block that follows the turn.
QList<QByteArray> MarkersOutsideExif(const QByteArray &jpeg)
{
    QList<QByteArray> segments;
    for (qsizetype at = 2; at + 4 <= jpeg.size() && uchar(jpeg[at]) == 0xFF && uchar(jpeg[at + 1]) != 0xDA;) {
        const uchar marker = uchar(jpeg[at + 1]);
        const qsizetype length = (uchar(jpeg[at + 2]) << 8 | uchar(jpeg[at + 3])) + 2;
        const bool exif = marker == 0xE1 && jpeg.mid(at + 4, 4) == "Exif";
        if (((marker >= 0xE0 && marker <= 0xEF) || marker == 0xFE) && !exif)
            segments << jpeg.mid(at, length);
        at += length;
    }
    return segments;
}

// The first entry of the first quantisation table: 8 for the IJG tables at quality 75.
int FirstQuantiser(const QByteArray &jpeg)
{
    const qsizetype table = jpeg.indexOf("\xFF\xDB");
    return table < 0 ? -1 : uchar(jpeg[table + 5]);
}

Picture Loaded(const QString &corpusName)
{
    return Picture::Load(CorpusPath(QStringLiteral("photos/") + corpusName));
}

} // namespace

void PhotoEdits::editsKeepTags_data()
{
    QTest::addColumn<QString>("photo");
    QTest::addColumn<FileEdit>("edit");
    QTest::addColumn<QSize>("size");

    const QString tagged = QStringLiteral("drewnoakes-FujiFilm_FinePixS1Pro_2.jpg");  // EXIF, GPS, IPTC, XMP; 600x400
    QTest::newRow("rotate right, lossless") << "exif-samples-DSCN0010.jpg"
        << FileEdit([](const QString &p, const QString &t) { return RotatePhotoFile(p, Turn::Right, t); }) << QSize(480, 640);
    QTest::newRow("rotate left, re-encoded") << tagged
        << FileEdit([](const QString &p, const QString &t) { return RotatePhotoFile(p, Turn::Left, t); }) << QSize(400, 600);
    QTest::newRow("black and white") << tagged
        << FileEdit([](const QString &p, const QString &t) { return ApplyEffectToPhotoFile(p, PhotoEffect::BlackAndWhite, t); }) << QSize(600, 400);
    QTest::newRow("sepia") << tagged
        << FileEdit([](const QString &p, const QString &t) { return ApplyEffectToPhotoFile(p, PhotoEffect::Sepia, t); }) << QSize(600, 400);
    QTest::newRow("enhance") << tagged
        << FileEdit([](const QString &p, const QString &t) { return ApplyEffectToPhotoFile(p, PhotoEffect::Enhance, t); }) << QSize(600, 400);
    QTest::newRow("adjust") << tagged
        << FileEdit([](const QString &p, const QString &t) { return AdjustPhotoFile(p, BuildColourTables({130, 160, 150, 140}), t); }) << QSize(600, 400);
    QTest::newRow("crop") << tagged
        << FileEdit([](const QString &p, const QString &t) { return CropPhotoFile(p, {10, 20, 310, 220}, t); }) << QSize(300, 200);
    QTest::newRow("TIFF, sepia") << "exiv2-Reagan.tiff"
        << FileEdit([](const QString &p, const QString &t) { return ApplyEffectToPhotoFile(p, PhotoEffect::Sepia, t); }) << QSize(200, 130);
    QTest::newRow("PNG, rotate right") << "exiv2-ReaganSmallPng.png"
        << FileEdit([](const QString &p, const QString &t) { return RotatePhotoFile(p, Turn::Right, t); }) << QSize(130, 200);
}

void PhotoEdits::editsKeepTags()
{
    QFETCH(QString, photo);
    QFETCH(FileEdit, edit);
    QFETCH(QSize, size);
    QTemporaryDir folder;
    const QString path = CopyOfCorpusPhoto(photo, folder.path());
    const QString thumbnail = folder.filePath(QStringLiteral("thumbnail.jpg"));
    const QJsonObject before = KeptTagsOf(path);
    const QByteArray pixelsBefore = Picture::Load(path).RgbPixels();

    const EditOutcome outcome = edit(path, thumbnail);
    QVERIFY2(outcome.result.ok, qPrintable(outcome.result.message));
    QCOMPARE(KeptTagsOf(path), before);
    const Picture edited = Picture::Load(path);
    QCOMPARE(QSize(edited.Width(), edited.Height()), size);
    QVERIFY(edited.RgbPixels() != pixelsBefore);
    QCOMPARE(QSize(outcome.facts.width, outcome.facts.height), size);
    QCOMPARE(outcome.facts.size, QFileInfo(path).size());
    const Picture remade = Picture::Load(thumbnail);
    QCOMPARE(std::max(remade.Width(), remade.Height()), std::min(ThumbnailBox, std::max(size.width(), size.height())));
}

void PhotoEdits::fourRightTurnsGiveBackThePhoto()
{
    QTemporaryDir folder;
    const QString path = CopyOfCorpusPhoto(QStringLiteral("exif-samples-DSCN0010.jpg"), folder.path());
    const QByteArray original = ReadAll(path);
    const int exifWidth = ReadWithExifTool(path, {QStringLiteral("ExifIFD:ExifImageWidth")}).value(QStringLiteral("ExifIFD:ExifImageWidth")).toInt();

    QVERIFY(RotatePhotoFile(path, Turn::Right).result.ok);
    QCOMPARE(ReadWithExifTool(path, {QStringLiteral("ExifIFD:ExifImageHeight")}).value(QStringLiteral("ExifIFD:ExifImageHeight")).toInt(), exifWidth);
    for (int turn = 2; turn <= 4; ++turn)
        QVERIFY(RotatePhotoFile(path, Turn::Right).result.ok);

    const QByteArray turned = ReadAll(path);
    QCOMPARE(Picture::LoadFromMemory(turned, ImageFormat::Jpeg).RgbPixels(), Picture::LoadFromMemory(original, ImageFormat::Jpeg).RgbPixels());
    QCOMPARE(MarkersOutsideExif(turned), MarkersOutsideExif(original));
    QCOMPARE(KeptTagsOf(path).value(QStringLiteral("GPS:GPSLatitude")), ReadWithExifTool(CorpusPath(QStringLiteral("photos/exif-samples-DSCN0010.jpg")), KeptTags).value(QStringLiteral("GPS:GPSLatitude")));
}

void PhotoEdits::thumbnails_data()
{
    QTest::addColumn<QString>("photo");
    QTest::addColumn<ThumbnailSource>("source");
    QTest::addColumn<QSize>("size");
    QTest::newRow("landscape") << "exif-samples-DSCN0010.jpg" << ThumbnailSource::Photo << QSize(128, 96);
    QTest::newRow("9 megapixels, wide") << "exif-samples-HMD_Nokia_8.3_5G.jpg" << ThumbnailSource::Photo << QSize(128, 55);
    QTest::newRow("turned by its orientation tag") << "exif-samples-portrait_6.jpg" << ThumbnailSource::Photo << QSize(96, 128);
    QTest::newRow("small photo is not enlarged") << "exiftool-Apple.jpg" << ThumbnailSource::Photo << QSize(8, 8);
    QTest::newRow("PNG") << "exiv2-ReaganSmallPng.png" << ThumbnailSource::Photo << QSize(128, 83);
    QTest::newRow("16-bit grey TIFF") << "drewnoakes-Issue_555_1.tif" << ThumbnailSource::Photo << QSize(128, 104);
    QTest::newRow("embedded preview larger than the photo") << "exiv2-pr_1994_poc2.jpg" << ThumbnailSource::EmbeddedPreviewFirst << QSize(128, 96);
    QTest::newRow("no preview: the photo") << "exif-samples-portrait_6.jpg" << ThumbnailSource::EmbeddedPreviewFirst << QSize(96, 128);
    QTest::newRow("damaged preview: the photo") << "exiftool-Nikon.jpg" << ThumbnailSource::EmbeddedPreviewFirst << QSize(8, 8);
}

void PhotoEdits::thumbnails()
{
    QFETCH(QString, photo);
    QFETCH(ThumbnailSource, source);
    QFETCH(QSize, size);
    QTemporaryDir folder;
    const QString thumbnail = folder.filePath(QStringLiteral("t.jpg"));
    const Result made = MakeThumbnail(CorpusPath(QStringLiteral("photos/") + photo), thumbnail, source);
    QVERIFY2(made.ok, qPrintable(made.message));
    const Picture picture = Picture::Load(thumbnail);
    QCOMPARE(QSize(picture.Width(), picture.Height()), size);
    QCOMPARE(FirstQuantiser(ReadAll(thumbnail)), 8);
}

void PhotoEdits::effectsOnPixels()
{
    const Picture photo = Loaded(QStringLiteral("exif-samples-DSCN0010.jpg"));
    const QByteArray original = photo.RgbPixels();
    QCOMPARE(original.size(), qsizetype(640) * 480 * 3);

    const ColourTables tables = BuildColourTables({170, 120, 150, 190});
    const QByteArray adjusted = photo.Adjusted(tables).RgbPixels();
    const QByteArray grey = photo.BlackAndWhite().RgbPixels();
    const QByteArray sepia = photo.Sepia().RgbPixels();
    for (qsizetype i = 0; i + 2 < original.size(); i += qsizetype(3) * 97) {
        QCOMPARE(uchar(adjusted[i]), tables.red[uchar(original[i])]);
        QCOMPARE(uchar(adjusted[i + 1]), tables.green[uchar(original[i + 1])]);
        QCOMPARE(uchar(adjusted[i + 2]), tables.blue[uchar(original[i + 2])]);
        QVERIFY(grey[i] == grey[i + 1] && grey[i + 1] == grey[i + 2]);
        QVERIFY(uchar(sepia[i]) >= uchar(sepia[i + 1]) && uchar(sepia[i + 1]) >= uchar(sepia[i + 2]));
    }

    // A flat picture gets its full range back.
    const auto range = [](const QByteArray &pixels) {
        const auto [low, high] = std::minmax_element(pixels.begin(), pixels.end(), [](char a, char b) { return uchar(a) < uchar(b); });
        return std::pair{int(uchar(*low)), int(uchar(*high))};
    };
    const Picture flat = photo.Adjusted(BuildColourTables({40, 150, 150, 150}));
    QVERIFY(range(flat.RgbPixels()).first > 50);
    QCOMPARE(range(flat.AutoContrasted().RgbPixels()), std::pair(0, 255));
}

void PhotoEdits::watermarkPlaces()
{
    const Picture photo = Loaded(QStringLiteral("exif-samples-DSCN0010.jpg"));
    const Picture mark = Loaded(QStringLiteral("exiv2-ReaganSmallPng.png"));
    const Picture stamped = photo.WithWatermark(mark, WatermarkPlace::LeftTop | WatermarkPlace::RightBottom);
    QCOMPARE(stamped.Width(), photo.Width());
    const QByteArray pixels = stamped.RgbPixels();
    const QByteArray markPixels = mark.RgbPixels();
    const QByteArray photoPixels = photo.RgbPixels();
    const int margin = 480 / 50;
    const auto at = [](const QByteArray &rgb, int width, int x, int y) { return rgb.mid((qsizetype(y) * width + x) * 3, 3); };
    for (const auto &[x, y] : {std::pair{0, 0}, std::pair{199, 129}, std::pair{57, 101}}) {
        QCOMPARE(at(pixels, 640, margin + x, margin + y), at(markPixels, 200, x, y));
        QCOMPARE(at(pixels, 640, 640 - 200 - margin + x, 480 - 130 - margin + y), at(markPixels, 200, x, y));
    }
    QCOMPARE(at(pixels, 640, 639, 0), at(photoPixels, 640, 639, 0));
    QCOMPARE(at(pixels, 640, 320, 240), at(photoPixels, 640, 320, 240));
}

QTEST_GUILESS_MAIN(PhotoEdits)
#include "tst_PhotoEdits.moc"
