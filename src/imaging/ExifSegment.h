#pragma once

#include <QByteArray>
#include <QSize>

// A JPEG's EXIF segment handled as bytes. Cameras write maker notes whose offsets point into the
// segment as it was laid out; rewriting the block moves what they point at and leaves the camera
// data unreadable. So an edit carries the segment over whole and only changes values in place.

// The whole APP1 segment holding EXIF, marker included; empty when the JPEG has none.
QByteArray ExifSegmentOf(const QByteArray &jpeg);

// The JPEG with its EXIF segment replaced by the given one (or the segment put after the JFIF
// segment, when it had none).
QByteArray WithExifSegment(const QByteArray &jpeg, const QByteArray &segment);

// The encoded JPEG's picture with every marker segment the original carried: its application
// segments (exifSegment standing for its EXIF one) and comments byte for byte, in their order,
// and whatever trailed its end marker. Only the Adobe segment, which tells how the new picture
// data is coded, comes from the encoder.
QByteArray WithSegmentsOf(const QByteArray &original, const QByteArray &encoded, const QByteArray &exifSegment);

// In-place changes; each is false when the segment lacks the entry or it cannot hold the value.
bool SetExifPixelSize(QByteArray &segment, QSize size);
bool SetExifOrientation(QByteArray &segment, int orientation);
// The orientation tag's value, 1 to 8; 1 when the segment has none or holds another value.
int ExifOrientationOf(const QByteArray &segment);
// The embedded preview; a new one is only put in when it fits where the old one was.
QByteArray ExifPreviewOf(const QByteArray &segment);
bool SetExifPreview(QByteArray &segment, const QByteArray &preview);
