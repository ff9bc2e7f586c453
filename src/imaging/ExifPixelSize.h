#pragma once

// Inside the image library only: keeping the EXIF block's idea of the picture's size true.
#include <exiv2/exiv2.hpp>

// Sets the EXIF pixel dimensions to the picture's size where the block holds them; a block
// without them is left so.
void SetExifPixelSize(Exiv2::ExifData &exif, int width, int height);
