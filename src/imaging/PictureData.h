#pragma once

// Inside the image library only: the libvips picture behind a Picture.
#include "imaging/Picture.h"

#include <vips/vips8>

// The most memory a decoded picture may take before its file is refused: room for a
// 300-megapixel panorama, and a bound on what a damaged header can make the program ask for.
constexpr double MaxDecodedBytes = 1e9;

struct PictureData {
    vips::VImage image;

    static Picture Wrap(vips::VImage image);
    static const vips::VImage *ImageOf(const Picture &picture);
};

// A copy of encoded bytes for libvips to decode from. Pictures decoded from it hold their own
// reference, so it may go before they do.
class VipsBytes {
public:
    explicit VipsBytes(const QByteArray &bytes);
    ~VipsBytes();
    VipsBytes(const VipsBytes &) = delete;
    VipsBytes &operator=(const VipsBytes &) = delete;
    VipsBlob *get() const { return blob; }

private:
    VipsBlob *blob;
};

// The picture as 8-bit sRGB (three bands, plus alpha when it has one): the form every effect
// works on.
vips::VImage AsEightBitRgb(vips::VImage image);
// The picture as 8-bit sRGB, or 8-bit grey when it is grey: what an 8-bit encoder takes.
vips::VImage AsEightBit(vips::VImage image);
bool HasAlpha(const vips::VImage &image);
// The picture on white where it was transparent.
vips::VImage WithoutAlpha(const vips::VImage &image);

// libvips would read many more formats than the program's (PDF, SVG, HEIF, text matrices ...)
// from a misnamed file; only the decoders of the program's formats are let near a photo, and
// ImageMagick only for the formats it stands in for. Throws VError for any other file.
void RefuseOtherDecoders(const QString &photoPath);

// What of a picture file's structure an edit must keep: its pages (TIFF) or frames (GIF), and
// whether its samples are deeper than 8 bits.
struct PictureLayout {
    int pages = 1;
    bool deep = false;
};

// The layout from the file's header, decoding no pixels; throws VError when it cannot be read.
PictureLayout LayoutOf(const QByteArray &bytes, ImageFormat format);

// A TIFF with the compression and predictor given, carrying the picture's tags when asked.
QByteArray EncodeTiff(const Picture &picture, VipsForeignTiffCompression compression, VipsForeignTiffPredictor predictor,
                      EmbeddedTags tags);
