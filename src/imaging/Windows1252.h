#pragma once

#include <QByteArray>
#include <QString>

// Text in tags predates Unicode: IPTC values are Windows-1252 (what ExifTool calls "Latin")
// unless the record declares UTF-8, and EXIF strings are plain bytes in whatever the camera or
// the last tool used.

// UTF-8 when the bytes are valid UTF-8, else Windows-1252.
QString DecodeTagText(const QByteArray &bytes);

// True when every character of the text has a Windows-1252 byte.
bool FitsWindows1252(const QString &text);
