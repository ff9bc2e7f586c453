#pragma once

#include <QByteArray>
#include <QIODevice>

// A JPEG's marker segments up to its picture data, less its XMP packets, closed by an end
// marker: everything the tag reader needs, read in a fraction of the time the whole file and
// its XMP would take. Empty when the device does not hold a JPEG; a damaged segment ends the
// header where it starts. The XMP packet left out goes to xmpPacket when one is asked for, so a
// caller that finds the other tags lacking can still parse it.
QByteArray ReadJpegHeaderWithoutXmp(QIODevice &device, QByteArray *xmpPacket = nullptr);
