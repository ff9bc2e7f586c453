#include "LosslessRotation.h"

#include "Exiv2Support.h"
#include "ImagingLibrary.h"

#include <turbojpeg.h>

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
bool TurnPreview(Exiv2::ExifData &exif, Turn turn)
{
    const Exiv2::DataBuf preview = Exiv2::ExifThumbC(exif).copy();
    if (preview.size_ == 0)
        return false;
    QString error;
    const QByteArray turned = Transform(QByteArray(reinterpret_cast<const char *>(preview.pData_), preview.size_), turn,
                                        TJXOPT_TRIM, error);
    if (turned.isEmpty())
        return false;
    Exiv2::ExifThumb(exif).setJpegThumbnail(reinterpret_cast<const Exiv2::byte *>(turned.constData()),
                                            static_cast<long>(turned.size()));
    return true;
}

// Brings the EXIF block in line with the turned pixels. Files whose EXIF needs no change are
// left byte for byte as the transform made them.
void UpdateTags(QByteArray &jpeg, Turn turn, QSize turnedSize)
{
    try {
        const auto image = OpenExiv2Image(jpeg);
        image->readMetadata();
        Exiv2::ExifData exif = image->exifData();
        if (exif.empty())
            return;
        const bool previewTurned = TurnPreview(exif, turn);
        if (!previewTurned && turn == Turn::HalfTurn)
            return;
        SetExifPixelSize(exif, turnedSize.width(), turnedSize.height());
        image->setExifData(exif);
        image->writeXmpFromPacket(true);
        image->writeMetadata();
        jpeg = WrittenBytes(*image);
    } catch (const std::exception &) {
        // The pixels are turned either way; stale size tags are the lesser harm than no turn.
    }
}

} // namespace

Result TurnJpegLosslessly(QByteArray &jpeg, Turn turn, QSize &turnedSize)
{
    InitialiseTagLibrary();
    QString error;
    QByteArray turned = Transform(jpeg, turn, TJXOPT_PERFECT, error);
    if (turned.isEmpty())
        return Result::Failure(error);
    turnedSize = JpegSize(turned);
    UpdateTags(turned, turn, turnedSize);
    jpeg = turned;
    return Result::Success();
}
