#pragma once

#include "imaging/Picture.h"

#include <QByteArray>

// A JPEG decoded by libjpeg-turbo at the smallest of its DCT scales (1/8, 1/4, 1/2, 1) that still
// covers the box, then reduced to fit and turned the way its orientation tag says: the picture
// LoadPictureToFit gives, in about half the time libvips' own loader takes, since nothing of its
// pipeline runs between the decoder and the reduction. Never enlarged.
// Null for what it leaves to the general decoder: bytes that are not a baseline or progressive
// JPEG in grey or colour (CMYK and YCCK need a colour transform), a picture over the memory
// bound, or data the decoder gives up on. A file that ends early decodes as far as it goes, as
// it does with libvips.
Picture DecodeJpegToFit(const QByteArray &jpeg, int maxWidth, int maxHeight);
