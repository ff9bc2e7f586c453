#pragma once

#include "Picture.h"
#include "Result.h"

#include <QByteArray>
#include <QSize>

// Turns a JPEG by moving its compressed blocks: no pixel is decoded or encoded again, and every
// marker of the file is kept. The size tags of the EXIF block follow the turn, and so does the
// preview embedded in it. Fails, leaving the bytes alone, when a partial block at the picture's
// right or bottom edge would have to move: only a re-encoding can turn such a picture exactly.
Result TurnJpegLosslessly(QByteArray &jpeg, Turn turn, QSize &turnedSize);
