#include "imaging/TagTable.h"

#include "imaging/ImageTags.h"

#include <array>
#include <cstring>

namespace {

using F = TagFamily;
using R = TagRendering;
using U = RecordRule;
constexpr Presence Always = Presence::Always;
constexpr Presence Present = Presence::WhenPresent;

const std::array<TagRow, 23> Rows = {{
    {"CameraMaker", &ImageTags::cameraMaker, F::Exif, "Make", "Exif.Image.Make", R::Readable, U::AsRead, Always, nullptr},
    {"CameraModel", &ImageTags::cameraModel, F::Exif, "Model", "Exif.Image.Model", R::Readable, U::AsRead, Always, nullptr},
    {"CaptureDate", &ImageTags::dateTaken, F::Exif, "DateTimeOriginal", "Exif.Photo.DateTimeOriginal", R::Readable, U::DateTaken, Always, nullptr},
    {"Aperture", &ImageTags::aperture, F::Exif, "ApertureValue", "Exif.Photo.ApertureValue", R::Readable, U::AsRead, Always, nullptr},
    {"Aperture", &ImageTags::aperture, F::Exif, "FNumber", "Exif.Photo.FNumber", R::Readable, U::AsRead, Always, nullptr},
    {"FocalLength", &ImageTags::focalLength, F::Exif, "FocalLength", "Exif.Photo.FocalLength", R::Readable, U::AsRead, Always, nullptr},
    {"FocusDistance", &ImageTags::subjectDistance, F::Exif, "SubjectDistance", "Exif.Photo.SubjectDistance", R::Readable, U::AsRead, Always, nullptr},
    {"ShutterSpeed", &ImageTags::shutterSpeed, F::Exif, "ShutterSpeedValue", "Exif.Photo.ShutterSpeedValue", R::Readable, U::AsRead, Always, nullptr},
    {"Flash", &ImageTags::flash, F::Exif, "Flash", "Exif.Photo.Flash", R::FlashWords, U::FlashState, Always, nullptr},
    {"ISOSpeed", &ImageTags::isoSpeed, F::Exif, "ISOSpeedRatings", "Exif.Photo.ISOSpeedRatings", R::Readable, U::AsRead, Always, nullptr},
    {"CPU", &ImageTags::compressedBitsPerPixel, F::Exif, "CompressedBitsPerPixel", "Exif.Photo.CompressedBitsPerPixel", R::Readable, U::AsRead, Always, nullptr},
    {"Longitude", &ImageTags::longitude, F::Gps, "GPSLongitude", "Exif.GPSInfo.GPSLongitude", R::Sexagesimal, U::Degrees, Present, "gps:GPSLongitude"},
    {"Longitude", nullptr, F::Gps, "GPSLongitudeRef", "Exif.GPSInfo.GPSLongitudeRef", R::Stored, U::Reference, Present, "gps:GPSLongitudeRef"},
    {"Latitude", &ImageTags::latitude, F::Gps, "GPSLatitude", "Exif.GPSInfo.GPSLatitude", R::Sexagesimal, U::Degrees, Present, "gps:GPSLatitude"},
    {"Latitude", nullptr, F::Gps, "GPSLatitudeRef", "Exif.GPSInfo.GPSLatitudeRef", R::Stored, U::Reference, Present, "gps:GPSLatitudeRef"},
    {"Elevation", nullptr, F::Gps, "GPSAltitude", "Exif.GPSInfo.GPSAltitude", R::Rational, U::Altitude, Present, "gps:GPSAltitude"},
    {"Elevation", nullptr, F::Gps, "GPSAltitudeRef", "Exif.GPSInfo.GPSAltitudeRef", R::Stored, U::Reference, Present, "gps:GPSAltitudeRef"},
    // Other programs show the caption and keywords from XMP where a file has them there, so the
    // writer keeps both in step; the reader takes XMP where the IPTC record has none.
    {"Description", &ImageTags::caption, F::Iptc, "Caption/Abstract", "Iptc.Application2.Caption", R::Stored, U::AsRead, Present, "Caption-Abstract"},
    {"Description", nullptr, F::Exif, "ImageDescription", "Exif.Image.ImageDescription", R::Stored, U::WrittenOnly, Present, "ImageDescription"},
    {"Description", &ImageTags::caption, F::Xmp, "description", "Xmp.dc.description", R::Stored, U::AsRead, Present, "XMP-dc:Description"},
    {"Keywords", &ImageTags::keywords, F::Iptc, "Keywords", "Iptc.Application2.Keywords", R::TextList, U::Keywords, Present, "keywords"},
    {"Keywords", &ImageTags::keywords, F::Xmp, "subject", "Xmp.dc.subject", R::TextList, U::Keywords, Present, "XMP-dc:Subject"},
    {"", nullptr, F::Exif, "ExposureTime", "Exif.Photo.ExposureTime", R::Readable, U::AsRead, Present, nullptr},
}};

} // namespace

std::span<const TagRow> TagTable()
{
    return Rows;
}

const TagRow *FindTagRow(TagFamily family, QStringView name)
{
    for (const TagRow &row : Rows) {
        if (row.family == family && name == QLatin1String(row.name))
            return &row;
    }
    return nullptr;
}

const TagRow *FindTagRow(const char *recordKey, RecordRule rule)
{
    for (const TagRow &row : Rows) {
        if (row.rule == rule && std::strcmp(recordKey, row.recordKey) == 0)
            return &row;
    }
    return nullptr;
}
