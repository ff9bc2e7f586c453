#pragma once

#include "app/Result.h"

#include <QByteArray>
#include <QString>
#include <memory>
#include <optional>

// The tag families of a photo: camera data, the IPTC record, GPS position and XMP properties.
enum class TagFamily { Exif = 0, Iptc = 1, Gps = 2, Xmp = 3 };

// The tags of one photo file, read without decoding its pixels. A file that cannot be read, or
// holds no tags, gives empty texts; Status says why a file could not be read.
// The XMP packet of a JPEG is parsed only where the IPTC record lacks the caption or the
// keywords, unless every XMP value is wanted.
enum class XmpParsing { WhenIptcLacks, Always };

class TagReader {
public:
    static TagReader FromFile(const QString &path, XmpParsing xmp = XmpParsing::WhenIptcLacks);
    static TagReader FromMemory(const QByteArray &bytes);

    // The tag's value in the library's readable rendering ("1/60 s", "F2.8", "35.0 mm"), cut at
    // its first NUL; "" when the tag is missing. Names are those of the tag tables: "Make",
    // "FNumber", "Caption/Abstract", "GPSLatitude" ... GPS coordinates read as
    // "degrees:minutes:seconds", the flash in the words of the EXIF standard, and several IPTC
    // keyword entries (or XMP "subject" items) as one text separated by ",". The names are those
    // of TagTable.
    QString Text(TagFamily family, const QString &name) const;

    // Failure with the reason when the file could not be opened or its tags are damaged beyond
    // reading; a file that simply holds no tags is a success.
    const Result &Status() const;

    // The picture's size in pixels as its file states it; 0 when unknown.
    int PixelWidth() const;
    int PixelHeight() const;

    // Metres above sea level (negative below); nothing when the photo holds no altitude.
    std::optional<double> GpsAltitude() const;

    // The small JPEG preview a camera embeds in the EXIF block, and how the photo's orientation
    // tag says to turn it (1 to 8); empty when there is none.
    QByteArray EmbeddedPreview() const;
    int Orientation() const;

    struct Tags;

private:
    // The tags of a whole file in memory, or of a JPEG's header.
    static TagReader FromExiv2(const QByteArray &bytes, const QByteArray &xmpPacket, XmpParsing xmp);
    std::shared_ptr<const Tags> tags;
    Result status;
};
