// The colour effects and the watermark of Picture: each works on the 8-bit sRGB form of the
// picture and leaves its transparency as it was.
#include "imaging/Picture.h"

#include "imaging/PictureData.h"

#include <algorithm>
#include <array>
#include <functional>

using vips::VError;
using vips::VImage;

namespace {

// Share of the darkest and of the brightest pixels that automatic contrast lets go to pure
// black and white, so that a few specks do not hold the stretch back.
constexpr double ClippedShare = 0.005;

// Runs an effect on the colour bands and puts the alpha band, if any, back on the result.
Picture ApplyToColour(const Picture &picture, const std::function<VImage(const VImage &)> &effect)
{
    const VImage *source = PictureData::ImageOf(picture);
    if (!source)
        return {};
    try {
        const VImage rgba = AsEightBitRgb(*source);
        const VImage colour = rgba.extract_band(0, VImage::option()->set("n", 3));
        VImage result = effect(colour);
        if (rgba.bands() == 4)
            result = result.bandjoin(rgba.extract_band(3));
        return PictureData::Wrap(result.copy(VImage::option()->set("interpretation", VIPS_INTERPRETATION_sRGB)));
    } catch (const VError &) {
        vips_error_clear(); // a later failure must not report this one too
        vips_error_clear();
        return {};
    }
}

// A 256-entry lookup image with one band per table.
VImage LookupImage(const std::vector<const ColourTables::Table *> &tables)
{
    const auto bands = static_cast<int>(tables.size());
    std::vector<std::uint8_t> entries(256 * tables.size());
    for (std::size_t i = 0; i < 256; ++i) {
        for (std::size_t band = 0; band < tables.size(); ++band)
            entries[i * tables.size() + band] = (*tables[band])[i];
    }
    VipsImage *lookup = vips_image_new_from_memory_copy(entries.data(), entries.size(), 256, 1, bands, VIPS_FORMAT_UCHAR);
    if (!lookup)
        throw VError();
    return VImage(lookup);
}

// The linear stretch that takes low to 0 and high to 255.
ColourTables::Table StretchTable(int low, int high)
{
    ColourTables::Table table{};
    for (int i = 0; i < 256; ++i) {
        const int value = high > low ? (i - low) * 255 / (high - low) : i;
        table[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(std::clamp(value, 0, 255));
    }
    return table;
}

// The levels below which, and above which, the clipped share of all colour values lies.
std::pair<int, int> ContrastLimits(const VImage &colour)
{
    const VImage histogram = colour.hist_find().cast(VIPS_FORMAT_DOUBLE).copy_memory();
    std::array<double, 256> counts{};
    double total = 0;
    for (int level = 0; level < 256; ++level) {
        for (int band = 0; band < histogram.bands(); ++band)
            counts[static_cast<std::size_t>(level)] += histogram.getpoint(level, 0)[static_cast<std::size_t>(band)];
        total += counts[static_cast<std::size_t>(level)];
    }
    const double clipped = total * ClippedShare;
    std::size_t low = 0;
    for (double darker = counts[0]; low < 255 && darker <= clipped;)
        darker += counts[++low];
    std::size_t high = 255;
    for (double brighter = counts[255]; high > 0 && brighter <= clipped;)
        brighter += counts[--high];
    return {static_cast<int>(low), static_cast<int>(high)};
}

VImage Greyed(const VImage &colour)
{
    return colour.colourspace(VIPS_INTERPRETATION_B_W).colourspace(VIPS_INTERPRETATION_sRGB);
}

} // namespace

Picture Picture::Adjusted(const ColourTables &tables) const
{
    return ApplyToColour(*this, [&tables](const VImage &colour) {
        return colour.maplut(LookupImage({&tables.red, &tables.green, &tables.blue}));
    });
}

Picture Picture::AutoContrasted() const
{
    return ApplyToColour(*this, [](const VImage &colour) {
        const auto [low, high] = ContrastLimits(colour);
        const ColourTables::Table stretch = StretchTable(low, high);
        return colour.maplut(LookupImage({&stretch}));
    });
}

Picture Picture::BlackAndWhite() const
{
    return ApplyToColour(*this, Greyed);
}

Picture Picture::Sepia() const
{
    return ApplyToColour(*this, [](const VImage &colour) {
        // The classic sepia toning of a grey picture: warm highlights, brown shadows.
        std::vector<double> toning = {0.393, 0.769, 0.189,
                                      0.349, 0.686, 0.168,
                                      0.272, 0.534, 0.131};
        const VImage matrix = VImage::new_matrix(3, 3, toning.data(), static_cast<int>(toning.size()));
        return Greyed(colour).recomb(matrix).cast(VIPS_FORMAT_UCHAR);
    });
}

Picture Picture::WithWatermark(const Picture &mark, WatermarkPlaces places) const
{
    const VImage *base = PictureData::ImageOf(*this);
    const VImage *stamp = PictureData::ImageOf(mark.ResizedToFit(Width(), Height()));
    if (!base || !stamp)
        return {};
    try {
        const VImage picture = AsEightBitRgb(*base);
        VImage overlay = AsEightBitRgb(*stamp);
        if (!overlay.has_alpha())
            overlay = overlay.bandjoin(255.0);
        const int margin = std::min(picture.width(), picture.height()) / 50;
        const int right = std::max(picture.width() - overlay.width() - margin, 0);
        const int bottom = std::max(picture.height() - overlay.height() - margin, 0);
        const std::array<std::tuple<WatermarkPlace, int, int>, 5> positions = {{
            {WatermarkPlace::LeftTop, margin, margin},
            {WatermarkPlace::LeftBottom, margin, bottom},
            {WatermarkPlace::RightTop, right, margin},
            {WatermarkPlace::RightBottom, right, bottom},
            {WatermarkPlace::Centre, (picture.width() - overlay.width()) / 2, (picture.height() - overlay.height()) / 2},
        }};
        VImage result = picture.has_alpha() ? picture : picture.bandjoin(255.0);
        for (const auto &[place, x, y] : positions) {
            if (places.testFlag(place))
                result = result.composite2(overlay, VIPS_BLEND_MODE_OVER, VImage::option()->set("x", x)->set("y", y));
        }
        result = result.cast(VIPS_FORMAT_UCHAR);
        if (!picture.has_alpha())
            result = result.extract_band(0, VImage::option()->set("n", 3));
        return PictureData::Wrap(result.copy(VImage::option()->set("interpretation", VIPS_INTERPRETATION_sRGB)));
    } catch (const VError &) {
        vips_error_clear(); // a later failure must not report this one too
        vips_error_clear();
        return {};
    }
}
