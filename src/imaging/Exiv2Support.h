#pragma once

// Inside the image library only: Exiv2 over the bytes the program holds.
#include <QByteArray>
#include <exiv2/exiv2.hpp>

// An Exiv2 image over bytes that must outlive it; throws as Exiv2 does. Exiv2's pointer type is
// deprecated by name, so it is only ever deduced.
inline auto OpenExiv2Image(const QByteArray &bytes)
{
    return Exiv2::ImageFactory::open(reinterpret_cast<const Exiv2::byte *>(bytes.constData()),
                                     static_cast<long>(bytes.size()));
}

// The whole file an image was written to.
QByteArray WrittenBytes(Exiv2::Image &image);

// Sets the EXIF pixel dimensions to the picture's size where the block holds them; a block
// without them is left so.
void SetExifPixelSize(Exiv2::ExifData &exif, int width, int height);
