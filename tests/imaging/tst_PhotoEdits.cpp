#include "ImagingTestSupport.h"
#include "imaging/PhotoEdits.h"
#include "TestEnvironment.h"
#include "imaging/Thumbnail.h"

#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <functional>

// Edits of real photo files keep their tags; lossless turns keep every pixel and marker; the
// colour effects, the adjust command's tables and the watermark do what they say on the pixels;
// thumbnails fit the box.
class PhotoEdits : public QObject {
    Q_OBJECT
private slots:
    void editsKeepTags_data();
    void editsKeepTags();
    void turnsNeverReEncode_data();
    void turnsNeverReEncode();
    void editsThatWouldLoseRefuse_data();
    void editsThatWouldLoseRefuse();
    void thumbnails_data();
    void thumbnails();
    void effectsOnPixels();
    void watermarkPlaces();
    void colourTables_data();
    void colourTables();
};

namespace {

using FileEdit = std::function<EditOutcome(const QString &photo, const QString &thumbnail)>;

FileEdit Effect(PhotoEffect effect)
{
    return [effect](const QString &p, const QString &t) { return ApplyEffectToPhotoFile(p, effect, t); };
}

const FileEdit TurnRight = [](const QString &p, const QString &t) { return RotatePhotoFile(p, Turn::Right, t); };

const QStringList KeptTags = {QStringLiteral("IPTC:all"), QStringLiteral("GPS:all"), QStringLiteral("XMP:all"), QStringLiteral("MakerNotes:all"),
                              QStringLiteral("IFD0:Make"), QStringLiteral("IFD0:Model"),
                              QStringLiteral("ExifIFD:DateTimeOriginal"), QStringLiteral("ExifIFD:FNumber")};

QJsonObject KeptTagsOf(const QString &path)
{
    return ReadWithExifTool(path, KeptTags);
}

// A picture made by the real libvips tool, from a corpus photo.
QString MadeWithVips(const QString &folder, const QString &name, const QString &how)
{
    const QString joined = folder + QStringLiteral("/joined.v");
    const QString photo = CorpusPath(QStringLiteral("photos/exiv2-ReaganSmallPng.png"));
    QProcess::execute(QStringLiteral("vips"), {"arrayjoin", photo + u' ' + photo, joined, "--across", "1"});
    QProcess::execute(QStringLiteral("vips"), {"copy", joined, folder + u'/' + name + how});
    return folder + u'/' + name;
}

// The first entry of the first quantisation table: 8 for the IJG tables at quality 75.
int FirstQuantiser(const QByteArray &jpeg)
{
    const qsizetype table = jpeg.indexOf("\xFF\xDB");
    return table < 0 ? -1 : uchar(jpeg[table + 5]);
}

} // namespace

void PhotoEdits::editsKeepTags_data()
{
    QTest::addColumn<QString>("photo");
    QTest::addColumn<FileEdit>("edit");
    QTest::addColumn<QSize>("size");

    const QString tagged = QStringLiteral("drewnoakes-FujiFilm_FinePixS1Pro_2.jpg");  // EXIF, GPS, IPTC, XMP; 600x400
    QTest::newRow("rotate right, lossless") << "exif-samples-DSCN0010.jpg" << TurnRight << QSize(480, 640);
    QTest::newRow("maker notes with offsets of their own, sepia") << "drewnoakes-Sony_DSC-HX5V_2.jpg" << Effect(PhotoEffect::Sepia) << QSize(730, 547);
    QTest::newRow("black and white") << tagged << Effect(PhotoEffect::BlackAndWhite) << QSize(600, 400);
    QTest::newRow("sepia") << tagged << Effect(PhotoEffect::Sepia) << QSize(600, 400);
    QTest::newRow("enhance") << tagged << Effect(PhotoEffect::Enhance) << QSize(600, 400);
    QTest::newRow("adjust") << tagged
        << FileEdit([](const QString &p, const QString &t) { return AdjustPhotoFile(p, BuildColourTables({130, 160, 150, 140}), t); }) << QSize(600, 400);
    QTest::newRow("crop") << tagged << FileEdit([](const QString &p, const QString &t) { return CropPhotoFile(p, {10, 20, 310, 220}, t); }) << QSize(300, 200);
    QTest::newRow("16-bit grey TIFF, rotate right") << "drewnoakes-Issue_555_1.tif" << TurnRight << QSize(1300, 1600);
    QTest::newRow("TIFF, sepia") << "exiv2-Reagan.tiff" << Effect(PhotoEffect::Sepia) << QSize(200, 130);
    QTest::newRow("PNG, rotate right") << "exiv2-ReaganSmallPng.png" << TurnRight << QSize(130, 200);
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
    const QStringList coding = {QStringLiteral("File:BitsPerSample"), QStringLiteral("IFD0:BitsPerSample"), QStringLiteral("IFD0:Compression")};
    const QJsonObject codingBefore = ReadWithExifTool(path, coding);
    const QByteArray pixelsBefore = Picture::Load(path).RgbPixels();

    const EditOutcome outcome = edit(path, thumbnail);
    QVERIFY2(outcome.result.ok, qPrintable(outcome.result.message));
    QVERIFY2(outcome.thumbnail.ok, qPrintable(outcome.thumbnail.message));
    QCOMPARE(KeptTagsOf(path), before);
    QCOMPARE(ReadWithExifTool(path, coding), codingBefore);
    const Picture edited = Picture::Load(path);
    QCOMPARE(QSize(edited.Width(), edited.Height()), size);
    QVERIFY(edited.RgbPixels() != pixelsBefore);
    QCOMPARE(QSize(outcome.facts.width, outcome.facts.height), size);
    QCOMPARE(outcome.facts.size, QFileInfo(path).size());
    const Picture remade = Picture::Load(thumbnail);
    QCOMPARE(std::max(remade.Width(), remade.Height()), std::min(ThumbnailBox, std::max(size.width(), size.height())));
}

void PhotoEdits::turnsNeverReEncode_data()
{
    QTest::addColumn<QString>("photo");
    QTest::addColumn<QString>("afterOneTurn");  // ExifTool's reading that shows the turn
    QTest::addColumn<QString>("turned");
    QTest::newRow("whole blocks: the blocks move") << "exif-samples-DSCN0010.jpg" << "ExifIFD:ExifImageHeight" << "640";
    QTest::newRow("partial blocks: the orientation tag turns") << "drewnoakes-FujiFilm_FinePixS1Pro_2.jpg" << "IFD0:Orientation" << "8";
}

void PhotoEdits::turnsNeverReEncode()
{
    QFETCH(QString, photo);
    QFETCH(QString, afterOneTurn);
    QFETCH(QString, turned);
    QTemporaryDir folder;
    const QString path = CopyOfCorpusPhoto(photo, folder.path());
    const QByteArray original = ReadAll(path);
    const QJsonObject tagsBefore = KeptTagsOf(path);

    // A thumbnail that cannot be written does not undo the turn the file took.
    const EditOutcome first = RotatePhotoFile(path, Turn::Left, folder.filePath(QStringLiteral("missing/t.jpg")));
    QVERIFY2(first.result.ok, qPrintable(first.result.message));
    QVERIFY(!first.thumbnail.ok && !first.thumbnail.message.isEmpty());
    QCOMPARE(ReadWithExifTool(path, {afterOneTurn}, true).value(afterOneTurn).toVariant().toString(), turned);
    const Picture before = Picture::LoadFromMemory(original, ImageFormat::Jpeg);
    QCOMPARE(QSize(first.facts.width, first.facts.height), QSize(before.Height(), before.Width()));
    for (int turn = 2; turn <= 4; ++turn)
        QVERIFY(RotatePhotoFile(path, Turn::Left).result.ok);
    // Four re-encodings could never give back every pixel.
    QCOMPARE(Picture::Load(path).RgbPixels(), before.RgbPixels());
    QCOMPARE(KeptTagsOf(path), tagsBefore);
}

// The file stays byte for byte as it was, and the reason is given.
void PhotoEdits::editsThatWouldLoseRefuse_data()
{
    QTest::addColumn<QString>("made");      // a corpus photo's name, or how the vips tool makes one
    QTest::addColumn<FileEdit>("edit");
    QTest::addColumn<QString>("reason");
    const FileEdit sepia = Effect(PhotoEffect::Sepia);
    QTest::newRow("16-bit grey TIFF, sepia") << "drewnoakes-Issue_555_1.tif" << sepia << "more than 8 bits";
    QTest::newRow("two-page TIFF, rotate") << "pages.tif[page-height=130,compression=lzw]" << TurnRight << "2 pages";
    QTest::newRow("two-frame GIF, sepia") << "frames.gif[page-height=130]" << sepia << "2 pages or frames";
}

void PhotoEdits::editsThatWouldLoseRefuse()
{
    QFETCH(QString, made);
    QFETCH(FileEdit, edit);
    QFETCH(QString, reason);
    QTemporaryDir folder;
    const qsizetype options = made.indexOf(u'[');
    const QString path = options < 0 ? CopyOfCorpusPhoto(made, folder.path())
                                     : MadeWithVips(folder.path(), made.left(options), made.mid(options));
    const QByteArray before = ReadAll(path);
    QVERIFY(!before.isEmpty());
    const EditOutcome outcome = edit(path, folder.filePath(QStringLiteral("t.jpg")));
    QVERIFY(!outcome.result.ok);
    QVERIFY2(outcome.result.message.contains(reason), qPrintable(outcome.result.message));
    QCOMPARE(ReadAll(path), before);
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
    const Picture photo = Picture::Load(CorpusPath(QStringLiteral("photos/exif-samples-DSCN0010.jpg")));
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
    const Picture photo = Picture::Load(CorpusPath(QStringLiteral("photos/exif-samples-DSCN0010.jpg")));
    const Picture mark = Picture::Load(CorpusPath(QStringLiteral("photos/exiv2-ReaganSmallPng.png")));
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

void PhotoEdits::colourTables_data()
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

void PhotoEdits::colourTables()
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

QTEST_GUILESS_MAIN(PhotoEdits)
#include "tst_PhotoEdits.moc"
