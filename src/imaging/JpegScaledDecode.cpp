#include "imaging/JpegScaledDecode.h"

#include "imaging/ExifSegment.h"
#include "imaging/PictureData.h"

#include <turbojpeg.h>

#include <algorithm>
#include <cmath>
#include <memory>

using vips::VImage;

namespace {

using Decompressor = std::unique_ptr<void, decltype(&tjDestroy)>;

struct Header {
    int width = 0;
    int height = 0;
    int colourspace = 0;
};

// The size the whole picture takes in the box, as libvips' thumbnail computes it, so that both
// decoders give the same pixel size: one shrink for both axes, each side rounded.
struct Fit {
    int width;
    int height;
};

Fit FitInBox(int width, int height, int maxWidth, int maxHeight)
{
    const double shrink = std::max({1.0, double(width) / maxWidth, double(height) / maxHeight});
    return {std::max(1, int(std::lround(width / shrink))), std::max(1, int(std::lround(height / shrink)))};
}

// The smallest DCT scale whose output still holds every pixel of the fitted picture.
tjscalingfactor ScaleFor(int width, int height, Fit fit)
{
    tjscalingfactor chosen{1, 1};
    int count = 0;
    const tjscalingfactor *factors = tjGetScalingFactors(&count);
    for (int i = 0; factors && i < count; ++i) {
        const tjscalingfactor factor = factors[i];
        // Only the whole divisions: the others run a slower inverse transform for little gain.
        if (factor.num != 1)
            continue;
        if (TJSCALED(width, factor) >= fit.width && TJSCALED(height, factor) >= fit.height && factor.denom > chosen.denom)
            chosen = factor;
    }
    return chosen;
}

bool Swaps(int orientation)
{
    return orientation >= 5;
}

// The decoder's output buffer. Each worker keeps one of a size that fits the views' and the
// exporter's boxes, so photo after photo neither zeroes fresh memory nor faults its pages in
// again; a larger decode gets a buffer of its own.
class DecodeBuffer {
public:
    explicit DecodeBuffer(size_t size)
    {
        constexpr size_t Kept = size_t(16) << 20;
        thread_local std::unique_ptr<unsigned char[]> kept;
        thread_local size_t keptSize = 0;
        if (size > Kept) {
            own = std::make_unique_for_overwrite<unsigned char[]>(size);
            data = own.get();
            return;
        }
        if (size > keptSize) {
            kept = std::make_unique_for_overwrite<unsigned char[]>(size);
            keptSize = size;
        }
        data = kept.get();
    }
    unsigned char *data;

private:
    std::unique_ptr<unsigned char[]> own;
};

} // namespace

Picture DecodeJpegToFit(const QByteArray &jpeg, int maxWidth, int maxHeight)
{
    if (maxWidth < 1 || maxHeight < 1 || jpeg.size() < 4 || uchar(jpeg[0]) != 0xFF || uchar(jpeg[1]) != 0xD8)
        return {};
    const Decompressor decompressor(tjInitDecompress(), &tjDestroy);
    if (!decompressor)
        return {};
    const auto *bytes = reinterpret_cast<const unsigned char *>(jpeg.constData());
    const auto size = static_cast<unsigned long>(jpeg.size());
    Header header;
    int subsampling = 0;
    if (tjDecompressHeader3(decompressor.get(), bytes, size, &header.width, &header.height, &subsampling, &header.colourspace) != 0
        || header.width < 1 || header.height < 1)
        return {};
    if (header.colourspace == TJCS_CMYK || header.colourspace == TJCS_YCCK)
        return {};

    // The box holds the turned picture; the decoder works on the stored one.
    const int orientation = ExifOrientationOf(ExifSegmentOf(jpeg));
    const int boxWidth = Swaps(orientation) ? maxHeight : maxWidth;
    const int boxHeight = Swaps(orientation) ? maxWidth : maxHeight;
    const Fit fit = FitInBox(header.width, header.height, boxWidth, boxHeight);
    const tjscalingfactor scale = ScaleFor(header.width, header.height, fit);
    const int decodedWidth = TJSCALED(header.width, scale);
    const int decodedHeight = TJSCALED(header.height, scale);
    const bool grey = header.colourspace == TJCS_GRAY;
    const int bands = grey ? 1 : 3;
    if (double(decodedWidth) * decodedHeight * bands > MaxDecodedBytes)
        return {};

    const size_t pixelBytes = size_t(decodedWidth) * size_t(decodedHeight) * size_t(bands);
    const DecodeBuffer pixels(pixelBytes);
    if (tjDecompress2(decompressor.get(), bytes, size, pixels.data, decodedWidth, 0, decodedHeight,
                      grey ? TJPF_GRAY : TJPF_RGB, 0) != 0
        && tjGetErrorCode(decompressor.get()) != TJERR_WARNING)
        return {};

    try {
        VImage image = VImage::new_from_memory(pixels.data, pixelBytes, decodedWidth, decodedHeight, bands,
                                               VIPS_FORMAT_UCHAR);
        image = image.copy(VImage::option()->set("interpretation", grey ? VIPS_INTERPRETATION_B_W : VIPS_INTERPRETATION_sRGB));
        if (decodedWidth != fit.width || decodedHeight != fit.height)
            image = image.resize(double(fit.width) / decodedWidth,
                                 VImage::option()->set("vscale", double(fit.height) / decodedHeight));
        // Copied before the decoded pixels go; the copy then carries the orientation to turn by.
        image = image.copy_memory();
        image.set(VIPS_META_ORIENTATION, orientation);
        return PictureData::Wrap(orientation == 1 ? image : image.autorot().copy_memory());
    } catch (const vips::VError &) {
        vips_error_clear();
        return {};
    }
}
