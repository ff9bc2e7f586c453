#include "imaging/Exiv2Support.h"

#include <cstdint>

namespace {

void SetIfPresent(Exiv2::ExifData &exif, const char *key, int value)
{
    if (exif.findKey(Exiv2::ExifKey(key)) != exif.end())
        exif[key] = static_cast<std::uint32_t>(value);
}

} // namespace

QByteArray WrittenBytes(Exiv2::Image &image)
{
    Exiv2::BasicIo &io = image.io();
    if (io.open() != 0)
        throw Exiv2::Error(Exiv2::kerDataSourceOpenFailed, io.path(), "");
    io.seek(0, Exiv2::BasicIo::beg);
    const Exiv2::DataBuf bytes = io.read(static_cast<long>(io.size()));
    io.close();
    return {reinterpret_cast<const char *>(bytes.pData_), bytes.size_};
}

void SetExifPixelSize(Exiv2::ExifData &exif, int width, int height)
{
    SetIfPresent(exif, "Exif.Photo.PixelXDimension", width);
    SetIfPresent(exif, "Exif.Photo.PixelYDimension", height);
}
