#include "imaging/Picture.h"
#include "imaging/ErrorText.h"

#include "imaging/ImagingLibrary.h"
#include "imaging/PictureData.h"

#include <QFile>
#include <QSaveFile>
#include <algorithm>
#include <cmath>

using vips::VError;
using vips::VImage;

namespace {

// The loaders of the program's formats; formats libvips has no own decoder for go through
// ImageMagick.
VImage LoadBlob(VipsBlob *blob, ImageFormat format)
{
    switch (format) {
    case ImageFormat::Jpeg:
        return VImage::jpegload_buffer(blob);
    case ImageFormat::Png:
        return VImage::pngload_buffer(blob);
    case ImageFormat::Tiff:
        return VImage::tiffload_buffer(blob);
    case ImageFormat::Gif:
        return VImage::gifload_buffer(blob);
    case ImageFormat::Bmp:
    case ImageFormat::Psd:
    case ImageFormat::Ico:
        return VImage::magickload_buffer(blob);
    case ImageFormat::Unknown:
        break;
    }
    throw VError("not a picture format the program reads");
}

VipsBlob *EncodeBlob(const VImage &image, ImageFormat format, int jpegQuality, EmbeddedTags tags)
{
    const bool strip = tags == EmbeddedTags::Dropped;
    switch (format) {
    case ImageFormat::Jpeg:
        return WithoutAlpha(image).jpegsave_buffer(VImage::option()->set("Q", jpegQuality)->set("strip", strip));
    case ImageFormat::Png:
        return image.pngsave_buffer(VImage::option()->set("strip", strip));
    case ImageFormat::Tiff:
        return image.tiffsave_buffer(VImage::option()->set("strip", strip));
    case ImageFormat::Gif:
        return image.gifsave_buffer(VImage::option()->set("strip", strip));
    case ImageFormat::Bmp:
        return image.magicksave_buffer(VImage::option()->set("format", "bmp")->set("strip", strip));
    case ImageFormat::Psd:
    case ImageFormat::Ico:
    case ImageFormat::Unknown:
        break;
    }
    throw VError("not a picture format the program writes");
}

QByteArray TakeBlob(VipsBlob *blob)
{
    size_t size = 0;
    const void *bytes = vips_blob_get(blob, &size);
    QByteArray copy(static_cast<const char *>(bytes), static_cast<qsizetype>(size));
    vips_area_unref(VIPS_AREA(blob));
    return copy;
}

} // namespace

VipsBytes::VipsBytes(const QByteArray &bytes)
    : blob(vips_blob_copy(bytes.constData(), static_cast<size_t>(bytes.size())))
{
}

VipsBytes::~VipsBytes()
{
    vips_area_unref(VIPS_AREA(blob));
}

Picture PictureData::Wrap(VImage image)
{
    return Picture(std::make_shared<const PictureData>(PictureData{std::move(image)}));
}

const VImage *PictureData::ImageOf(const Picture &picture)
{
    return picture.data ? &picture.data->image : nullptr;
}

bool HasAlpha(const VImage &image)
{
    return image.has_alpha();
}

VImage AsEightBit(VImage image)
{
    const bool grey = image.bands() < 3;
    const VipsInterpretation wanted = grey ? VIPS_INTERPRETATION_B_W : VIPS_INTERPRETATION_sRGB;
    if (image.interpretation() != wanted && vips_colourspace_issupported(image.get_image()))
        image = image.colourspace(wanted);
    if (image.format() != VIPS_FORMAT_UCHAR)
        image = image.cast(VIPS_FORMAT_UCHAR);
    const int bands = grey ? 2 : 4;
    if (image.bands() > bands)
        image = image.extract_band(0, VImage::option()->set("n", bands));
    return image.copy(VImage::option()->set("interpretation", wanted));
}

VImage AsEightBitRgb(VImage image)
{
    image = AsEightBit(image);
    if (image.bands() >= 3)
        return image;
    const VImage grey = image.extract_band(0);
    image = image.bands() == 2 ? VImage::bandjoin({grey, grey, grey, image.extract_band(1)}) : VImage::bandjoin({grey, grey, grey});
    return image.copy(VImage::option()->set("interpretation", VIPS_INTERPRETATION_sRGB));
}

VImage WithoutAlpha(const VImage &image)
{
    if (!image.has_alpha())
        return image;
    return image.flatten(VImage::option()->set("background", std::vector<double>{255.0})).cast(image.format());
}

Picture::Picture() = default;

Picture::Picture(std::shared_ptr<const PictureData> data)
    : data(std::move(data))
{
}

Picture Picture::Load(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return LoadFromMemory(file.readAll(), FormatOfFile(path));
}

Picture Picture::LoadFromMemory(const QByteArray &bytes, ImageFormat format)
{
    InitialisePixelLibrary();
    if (bytes.isEmpty() || format == ImageFormat::Unknown)
        return {};
    try {
        const VipsBytes source(bytes);
        const VImage image = LoadBlob(source.get(), format);
        if (static_cast<double>(VIPS_IMAGE_SIZEOF_LINE(image.get_image())) * image.height() > MaxDecodedBytes)
            return {};
        // Decoding now makes a damaged file fail here, once, rather than in every later step.
        return PictureData::Wrap(image.copy_memory());
    } catch (const VError &) {
        vips_error_clear(); // a later failure must not report this one too
        vips_error_clear();
        return {};
    }
}

bool Picture::IsNull() const
{
    return !data;
}

int Picture::Width() const
{
    return data ? data->image.width() : 0;
}

int Picture::Height() const
{
    return data ? data->image.height() : 0;
}

int Picture::BitsPerPixel() const
{
    if (!data)
        return 0;
    return data->image.bands() * static_cast<int>(vips_format_sizeof(data->image.format())) * 8;
}

QByteArray Picture::RgbPixels() const
{
    if (!data)
        return {};
    try {
        const VImage rgb = WithoutAlpha(AsEightBitRgb(data->image));
        size_t size = 0;
        void *pixels = rgb.write_to_memory(&size);
        QByteArray copy(static_cast<const char *>(pixels), static_cast<qsizetype>(size));
        g_free(pixels);
        return copy;
    } catch (const VError &) {
        vips_error_clear(); // a later failure must not report this one too
        vips_error_clear();
        return {};
    }
}

Picture Picture::ResizedToFit(int maxWidth, int maxHeight) const
{
    if (!data || maxWidth <= 0 || maxHeight <= 0)
        return {};
    if (Width() <= maxWidth && Height() <= maxHeight)
        return *this;
    try {
        return PictureData::Wrap(data->image.thumbnail_image(
            maxWidth, VImage::option()->set("height", maxHeight)->set("no_rotate", true)->set("size", VIPS_SIZE_DOWN)));
    } catch (const VError &) {
        vips_error_clear(); // a later failure must not report this one too
        vips_error_clear();
        return {};
    }
}

Picture Picture::Rotated(Turn turn) const
{
    if (!data)
        return {};
    const VipsAngle angle = turn == Turn::Right ? VIPS_ANGLE_D90 : turn == Turn::Left ? VIPS_ANGLE_D270 : VIPS_ANGLE_D180;
    try {
        return PictureData::Wrap(data->image.rot(angle));
    } catch (const VError &) {
        vips_error_clear(); // a later failure must not report this one too
        vips_error_clear();
        return {};
    }
}

Picture Picture::Copied(const CropRectangle &rectangle) const
{
    if (!data)
        return {};
    const int left = std::max(rectangle.left, 0);
    const int top = std::max(rectangle.top, 0);
    const int right = std::min(rectangle.right, Width());
    const int bottom = std::min(rectangle.bottom, Height());
    if (right <= left || bottom <= top)
        return {};
    try {
        return PictureData::Wrap(data->image.extract_area(left, top, right - left, bottom - top));
    } catch (const VError &) {
        vips_error_clear(); // a later failure must not report this one too
        vips_error_clear();
        return {};
    }
}

QByteArray Picture::Encode(ImageFormat format, int jpegQuality, EmbeddedTags tags) const
{
    if (!data)
        return {};
    try {
        VImage image = data->image;
        if (format == ImageFormat::Jpeg || format == ImageFormat::Bmp)
            image = AsEightBit(image);
        return TakeBlob(EncodeBlob(image, format, jpegQuality, tags));
    } catch (const VError &) {
        vips_error_clear(); // a later failure must not report this one too
        vips_error_clear();
        return {};
    }
}

Result Picture::SaveJpeg(const QString &path, int quality) const
{
    const QByteArray jpeg = Encode(ImageFormat::Jpeg, quality);
    if (jpeg.isEmpty())
        return Result::Failure(QStringLiteral("the picture could not be encoded as JPEG"));
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(jpeg) != jpeg.size() || !file.commit())
        return Result::Failure(QStringLiteral("%1: %2").arg(path, file.errorString()));
    return Result::Success();
}

Result ReadPictureSize(const QString &path, QSize &size)
{
    InitialisePixelLibrary();
    size = {};
    try {
        RefuseOtherDecoders(path);
        // Opening reads the header alone; the pixels would only be decoded when asked for.
        const VImage header = VImage::new_from_file(QFile::encodeName(path).constData(),
                                                    VImage::option()->set("access", VIPS_ACCESS_SEQUENTIAL));
        size = {header.width(), header.height()};
        return Result::Success();
    } catch (const VError &error) {
        const QString reason = ErrorText(error);
        vips_error_clear();
        return Result::Failure(QStringLiteral("%1: %2").arg(path, reason.isEmpty() ? QStringLiteral("the picture's size cannot be read") : reason));
    }
}

PictureLayout LayoutOf(const QByteArray &bytes, ImageFormat format)
{
    InitialisePixelLibrary();
    const VipsBytes source(bytes);
    const VImage header = LoadBlob(source.get(), format);
    PictureLayout layout;
    if (vips_image_get_typeof(header.get_image(), VIPS_META_N_PAGES) != 0)
        layout.pages = std::max(header.get_int(VIPS_META_N_PAGES), 1);
    layout.deep = header.format() != VIPS_FORMAT_UCHAR && header.format() != VIPS_FORMAT_CHAR;
    return layout;
}

QByteArray EncodeTiff(const Picture &picture, VipsForeignTiffCompression compression, VipsForeignTiffPredictor predictor,
                      EmbeddedTags tags)
{
    const VImage *image = PictureData::ImageOf(picture);
    if (!image)
        return {};
    try {
        return TakeBlob(image->tiffsave_buffer(VImage::option()
                                                   ->set("compression", compression)
                                                   ->set("predictor", predictor)
                                                   ->set("strip", tags == EmbeddedTags::Dropped)));
    } catch (const VError &) {
        vips_error_clear(); // a later failure must not report this one too
        vips_error_clear();
        return {};
    }
}
