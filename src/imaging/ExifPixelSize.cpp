#include "ExifPixelSize.h"

#include <cstdint>

namespace {

void SetIfPresent(Exiv2::ExifData &exif, const char *key, int value)
{
    if (exif.findKey(Exiv2::ExifKey(key)) != exif.end())
        exif[key] = static_cast<std::uint32_t>(value);
}

} // namespace

void SetExifPixelSize(Exiv2::ExifData &exif, int width, int height)
{
    SetIfPresent(exif, "Exif.Photo.PixelXDimension", width);
    SetIfPresent(exif, "Exif.Photo.PixelYDimension", height);
}
