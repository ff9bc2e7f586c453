#include "imaging/EditSafety.h"
#include "imaging/ErrorText.h"

#include "imaging/Exiv2Support.h"
#include "imaging/ImagingLibrary.h"
#include "imaging/PictureData.h"

using vips::VError;

namespace {

struct TiffCoding {
    VipsForeignTiffCompression compression = VIPS_FOREIGN_TIFF_COMPRESSION_NONE;
    VipsForeignTiffPredictor predictor = VIPS_FOREIGN_TIFF_PREDICTOR_NONE;
};

long TiffTag(const Exiv2::ExifData &exif, const char *key, long absent)
{
    const auto datum = exif.findKey(Exiv2::ExifKey(key));
    return datum == exif.end() || datum->count() == 0 ? absent : datum->toLong(0);
}

// The coding of the TIFF's first page, in the terms of the encoder.
Result TiffCodingOf(const QByteArray &original, TiffCoding &coding)
{
    InitialiseTagLibrary();
    try {
        const auto image = OpenExiv2Image(original);
        image->readMetadata();
        const long compression = TiffTag(image->exifData(), "Exif.Image.Compression", 1);
        switch (compression) {
        case 1:
            coding.compression = VIPS_FOREIGN_TIFF_COMPRESSION_NONE;
            break;
        case 5:
            coding.compression = VIPS_FOREIGN_TIFF_COMPRESSION_LZW;
            break;
        case 8:
        case 32946:
            coding.compression = VIPS_FOREIGN_TIFF_COMPRESSION_DEFLATE;
            break;
        case 32773:
            coding.compression = VIPS_FOREIGN_TIFF_COMPRESSION_PACKBITS;
            break;
        default:
            return Result::Failure(QStringLiteral("the photo's TIFF compression (%1) cannot be written again").arg(compression));
        }
        const long predictor = TiffTag(image->exifData(), "Exif.Image.Predictor", 1);
        coding.predictor = predictor == 2   ? VIPS_FOREIGN_TIFF_PREDICTOR_HORIZONTAL
                           : predictor == 3 ? VIPS_FOREIGN_TIFF_PREDICTOR_FLOAT
                                            : VIPS_FOREIGN_TIFF_PREDICTOR_NONE;
        return Result::Success();
    } catch (const std::exception &error) {
        return Result::Failure(QStringLiteral("the photo's TIFF coding cannot be read: %1").arg(ErrorText(error)));
    }
}

Result Layout(const QByteArray &bytes, ImageFormat format, PictureLayout &layout)
{
    try {
        layout = LayoutOf(bytes, format);
        return Result::Success();
    } catch (const VError &error) {
        vips_error_clear();
        return Result::Failure(QStringLiteral("the photo cannot be decoded: %1").arg(ErrorText(error)));
    }
}

} // namespace

Result CheckEditable(const QByteArray &original, ImageFormat format)
{
    PictureLayout layout;
    if (Result read = Layout(original, format, layout); !read)
        return read;
    if (layout.pages > 1)
        return Result::Failure(QStringLiteral("the photo holds %1 pages or frames, and an edit would keep only the first")
                                   .arg(layout.pages));
    return Result::Success();
}

Result EncodeLikeOriginal(const QByteArray &original, ImageFormat format, const Picture &edited, int jpegQuality,
                          QByteArray &encoded)
{
    // The encoder carries the colour profile and the Photoshop resources; the tags are then put
    // back exactly by CopyTags. PNG text chunks are the exception: the encoder would mangle
    // their older encoding, so a PNG gets its tags from CopyTags alone.
    const EmbeddedTags carried = format == ImageFormat::Png ? EmbeddedTags::Dropped : EmbeddedTags::Kept;
    if (format == ImageFormat::Tiff) {
        TiffCoding coding;
        if (Result known = TiffCodingOf(original, coding); !known)
            return known;
        encoded = EncodeTiff(edited, coding.compression, coding.predictor, carried);
    } else {
        encoded = edited.Encode(format, jpegQuality, carried);
    }
    if (encoded.isEmpty())
        return Result::Failure(QStringLiteral("the edited photo cannot be encoded"));
    PictureLayout before;
    PictureLayout after;
    if (Result read = Layout(original, format, before); !read)
        return read;
    if (Result read = Layout(encoded, format, after); !read)
        return read;
    if (before.deep && !after.deep)
        return Result::Failure(QStringLiteral("the photo has more than 8 bits a sample, which this edit would not keep"));
    return Result::Success();
}
