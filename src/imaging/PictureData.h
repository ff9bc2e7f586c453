#pragma once

// Inside the image library only: the libvips picture behind a Picture.
#include "Picture.h"

#include <vips/vips8>

// The most pixels a file may claim before it is refused: a 500-megapixel panorama decodes in
// about 1.5 GB, and a damaged header must not make the program try for more.
constexpr double MaxPicturePixels = 500e6;

struct PictureData {
    vips::VImage image;

    static Picture Wrap(vips::VImage image);
    static const vips::VImage *ImageOf(const Picture &picture);
};

// The picture as 8-bit sRGB (three bands, plus alpha when it has one): the form every effect
// and every encoder of the program works on.
vips::VImage AsEightBitRgb(vips::VImage image);
bool HasAlpha(const vips::VImage &image);
// The picture on white where it was transparent.
vips::VImage WithoutAlpha(const vips::VImage &image);
