#include "imaging/ImageFormat.h"

#include <QFileInfo>
#include <array>

namespace {

struct Extension {
    const char *name;
    ImageFormat format;
};

constexpr std::array<Extension, 9> Extensions = {{
    {"JPG", ImageFormat::Jpeg}, {"JPEG", ImageFormat::Jpeg}, {"PNG", ImageFormat::Png},
    {"TIF", ImageFormat::Tiff}, {"TIFF", ImageFormat::Tiff}, {"BMP", ImageFormat::Bmp},
    {"GIF", ImageFormat::Gif}, {"PSD", ImageFormat::Psd}, {"ICO", ImageFormat::Ico},
}};

} // namespace

ImageFormat FormatOfFile(const QString &path)
{
    const QString extension = QFileInfo(path).suffix().toUpper();
    for (const Extension &known : Extensions) {
        if (extension == QLatin1String(known.name))
            return known.format;
    }
    return ImageFormat::Unknown;
}

bool CanSaveInPlace(ImageFormat format)
{
    // Layers of a PSD and frames of an ICO would not survive a round trip through one picture.
    return format == ImageFormat::Jpeg || format == ImageFormat::Png || format == ImageFormat::Tiff
        || format == ImageFormat::Bmp || format == ImageFormat::Gif;
}
