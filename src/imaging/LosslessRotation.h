#pragma once

#include "imaging/Picture.h"
#include "app/Result.h"

#include <QByteArray>
#include <QSize>

// Turns a JPEG by moving its compressed blocks: no pixel is decoded or encoded again, and every
// marker of the file is kept. The size tags of the EXIF block follow the turn, and so does the
// preview embedded in it. Fails, leaving the bytes alone, when a partial block at the picture's
// right or bottom edge would have to move: only a re-encoding can turn such a picture exactly.
Result TurnJpegLosslessly(QByteArray &jpeg, Turn turn, QSize &turnedSize);

// Turns a JPEG by its EXIF orientation tag alone: not a byte of the picture data changes, and
// every viewer that honours the tag (the program's thumbnails do) shows it turned. The tag is
// composed with the one the photo had, mirrored ones included. turnedSize is the size as shown.
Result TurnJpegByOrientation(QByteArray &jpeg, Turn turn, int orientation, QSize &turnedSize);
