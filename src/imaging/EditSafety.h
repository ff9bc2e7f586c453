#pragma once

#include "imaging/ImageFormat.h"
#include "imaging/Picture.h"
#include "app/Result.h"

#include <QByteArray>

// An edit writes a file back only when the new file keeps what the old one had: every page or
// frame, the depth of its samples and (for a TIFF) its compression. These checks say why not.

// Refuses a file the edit could only write back in part: a multi-page TIFF or animated GIF,
// whose other pages the program does not edit.
Result CheckEditable(const QByteArray &original, ImageFormat format);

// The edited picture encoded as the original was: JPEG at the edit quality, a TIFF with the
// original's compression and predictor, PNG and GIF as their formats always are. Fails when the
// original's compression is one the encoder does not write, or when the result would hold
// shallower samples than the original (an effect on a 16-bit photo).
Result EncodeLikeOriginal(const QByteArray &original, ImageFormat format, const Picture &edited, int jpegQuality,
                          QByteArray &encoded);
