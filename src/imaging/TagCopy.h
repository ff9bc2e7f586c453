#pragma once

#include "app/Result.h"

#include <QByteArray>

class Picture;

// Puts the EXIF, IPTC and XMP blocks, the comment and the colour profile of the original file
// into a newly encoded file of the same format, so that an edit keeps the photo's camera data,
// caption, keywords and position. The size tags follow the edited picture, and a preview the
// camera embedded is made again from it. Formats that hold no tags come back unchanged; a
// failure leaves encoded as it was and says why.
Result CopyTags(const QByteArray &original, QByteArray &encoded, const Picture &edited);
