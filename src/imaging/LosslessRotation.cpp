#include "imaging/LosslessRotation.h"
#include "imaging/ErrorText.h"

#include "imaging/ExifSegment.h"
#include "imaging/Exiv2Support.h"
#include "imaging/ImagingLibrary.h"

#include <turbojpeg.h>

#include <cstdint>
#include <memory>

namespace {

using Transformer = std::unique_ptr<void, decltype(&tjDestroy)>;

int Operation(Turn turn)
{
    switch (turn) {
    case Turn::Right:
        return TJXOP_ROT90;
    case Turn::HalfTurn:
        return TJXOP_ROT180;
    case Turn::Left:
        return TJXOP_ROT270;
    }
    return TJXOP_NONE;
}

// The transformed JPEG, or an empty array with the reason in error.
QByteArray Transform(const QByteArray &jpeg, Turn turn, int options, QString &error)
{
    const Transformer transformer(tjInitTransform(), &tjDestroy);
    if (!transformer) {
        error = QStringLiteral("the JPEG transformer could not start");
        return {};
    }
    tjtransform transform{};
    transform.op = Operation(turn);
    transform.options = options;
    unsigned char *output = nullptr;
    unsigned long outputSize = 0;
    const int status = tjTransform(transformer.get(), reinterpret_cast<const unsigned char *>(jpeg.constData()),
                                   static_cast<unsigned long>(jpeg.size()), 1, &output, &outputSize, &transform, 0);
    QByteArray turned;
    if (status == 0)
        turned = QByteArray(reinterpret_cast<const char *>(output), static_cast<qsizetype>(outputSize));
    else
        error = QString::fromUtf8(tjGetErrorStr2(transformer.get()));
    tjFree(output);
    return turned;
}

QSize JpegSize(const QByteArray &jpeg)
{
    const Transformer decompressor(tjInitDecompress(), &tjDestroy);
    int width = 0;
    int height = 0;
    int subsampling = 0;
    int colourspace = 0;
    if (!decompressor
        || tjDecompressHeader3(decompressor.get(), reinterpret_cast<const unsigned char *>(jpeg.constData()),
                               static_cast<unsigned long>(jpeg.size()), &width, &height, &subsampling, &colourspace) != 0)
        return {};
    return {width, height};
}

// The preview turns with the photo; a partial block of the small preview is simply dropped.
void TurnPreview(QByteArray &segment, Turn turn)
{
    const QByteArray preview = ExifPreviewOf(segment);
    if (preview.isEmpty())
        return;
    QString error;
    const QByteArray turned = Transform(preview, turn, TJXOPT_TRIM, error);
    if (!turned.isEmpty())
        SetExifPreview(segment, turned);
}

// The orientation that shows the stored pixels turned once more, for each of the eight
// (mirrored ones included) that the EXIF standard defines.
int TurnedOrientation(int orientation, Turn turn)
{
    static constexpr int right[9] = {0, 6, 7, 8, 5, 2, 3, 4, 1};
    static constexpr int left[9] = {0, 8, 5, 6, 7, 4, 1, 2, 3};
    const int start = orientation >= 1 && orientation <= 8 ? orientation : 1;
    switch (turn) {
    case Turn::Right:
        return right[start];
    case Turn::Left:
        return left[start];
    case Turn::HalfTurn:
        return right[right[start]];
    }
    return start;
}

} // namespace

Result TurnJpegLosslessly(QByteArray &jpeg, Turn turn, QSize &turnedSize)
{
    InitialiseTagLibrary();
    QString error;
    const QByteArray turned = Transform(jpeg, turn, TJXOPT_PERFECT, error);
    if (turned.isEmpty())
        return Result::Failure(error);
    turnedSize = JpegSize(turned);
    // The transform copies every marker as it was; only the values that follow the turn change.
    QByteArray segment = ExifSegmentOf(turned);
    if (segment.isEmpty()) {
        jpeg = turned;
        return Result::Success();
    }
    SetExifPixelSize(segment, turnedSize);
    TurnPreview(segment, turn);
    jpeg = WithExifSegment(turned, segment);
    return Result::Success();
}

Result TurnJpegByOrientation(QByteArray &jpeg, Turn turn, int orientation, QSize &turnedSize)
{
    const QSize stored = JpegSize(jpeg);
    if (stored.isEmpty())
        return Result::Failure(QStringLiteral("the photo is not a JPEG that can be read"));
    const int turned = TurnedOrientation(orientation, turn);
    const bool sideways = turned >= 5;
    turnedSize = sideways ? stored.transposed() : stored;
    QByteArray segment = ExifSegmentOf(jpeg);
    if (!segment.isEmpty() && SetExifOrientation(segment, turned)) {
        jpeg = WithExifSegment(jpeg, segment);
        return Result::Success();
    }
    // No orientation entry to change in place: the tag library adds one.
    InitialiseTagLibrary();
    try {
        const auto image = OpenExiv2Image(jpeg);
        image->readMetadata();
        image->exifData()["Exif.Image.Orientation"] = static_cast<std::uint16_t>(turned);
        image->writeXmpFromPacket(true);
        image->writeMetadata();
        jpeg = WrittenBytes(*image);
        return Result::Success();
    } catch (const std::exception &failure) {
        return Result::Failure(QStringLiteral("the orientation tag cannot be written: %1").arg(ErrorText(failure)));
    }
}
