#include "TagReader.h"

#include "Exiv2Support.h"
#include "FlashText.h"
#include "ImagingLibrary.h"
#include "JpegHeader.h"
#include "Windows1252.h"

#include <QBuffer>
#include <QFile>
#include <QStringList>
#include <algorithm>
#include <array>

struct TagReader::Tags {
    Exiv2::ExifData exif;
    Exiv2::IptcData iptc;
    int width = 0;
    int height = 0;
};

namespace {

// How a tag's value becomes text.
enum class Rendering {
    Readable,     // the library's own print form
    Stored,       // the value as stored, such as a reference letter "N"
    FlashWords,   // the flash value in the EXIF standard's words
    Sexagesimal,  // three rationals as "degrees:minutes:seconds"
    TextList,     // every entry of a repeatable IPTC tag, joined with ","
};

struct TagName {
    TagFamily family;
    const char *name;
    const char *key;
    Rendering rendering;
};

constexpr std::array<TagName, 19> TagNames = {{
    {TagFamily::Exif, "Make", "Exif.Image.Make", Rendering::Readable},
    {TagFamily::Exif, "Model", "Exif.Image.Model", Rendering::Readable},
    {TagFamily::Exif, "ImageDescription", "Exif.Image.ImageDescription", Rendering::Stored},
    {TagFamily::Exif, "DateTimeOriginal", "Exif.Photo.DateTimeOriginal", Rendering::Readable},
    {TagFamily::Exif, "ApertureValue", "Exif.Photo.ApertureValue", Rendering::Readable},
    {TagFamily::Exif, "FNumber", "Exif.Photo.FNumber", Rendering::Readable},
    {TagFamily::Exif, "FocalLength", "Exif.Photo.FocalLength", Rendering::Readable},
    {TagFamily::Exif, "SubjectDistance", "Exif.Photo.SubjectDistance", Rendering::Readable},
    {TagFamily::Exif, "ShutterSpeedValue", "Exif.Photo.ShutterSpeedValue", Rendering::Readable},
    {TagFamily::Exif, "ExposureTime", "Exif.Photo.ExposureTime", Rendering::Readable},
    {TagFamily::Exif, "Flash", "Exif.Photo.Flash", Rendering::FlashWords},
    {TagFamily::Exif, "ISOSpeedRatings", "Exif.Photo.ISOSpeedRatings", Rendering::Readable},
    {TagFamily::Exif, "CompressedBitsPerPixel", "Exif.Photo.CompressedBitsPerPixel", Rendering::Readable},
    {TagFamily::Iptc, "Caption/Abstract", "Iptc.Application2.Caption", Rendering::Stored},
    {TagFamily::Iptc, "Keywords", "Iptc.Application2.Keywords", Rendering::TextList},
    {TagFamily::Gps, "GPSLatitudeRef", "Exif.GPSInfo.GPSLatitudeRef", Rendering::Stored},
    {TagFamily::Gps, "GPSLatitude", "Exif.GPSInfo.GPSLatitude", Rendering::Sexagesimal},
    {TagFamily::Gps, "GPSLongitudeRef", "Exif.GPSInfo.GPSLongitudeRef", Rendering::Stored},
    {TagFamily::Gps, "GPSLongitude", "Exif.GPSInfo.GPSLongitude", Rendering::Sexagesimal},
}};

// Exiv2's own lookup builds the full key text of every entry it passes; comparing the tag
// number and directory instead keeps reading a photo's tags free of that cost.
Exiv2::ExifData::const_iterator FindExif(const Exiv2::ExifData &exif, const char *keyText)
{
    const Exiv2::ExifKey key(keyText);
    return std::find_if(exif.begin(), exif.end(), [&key](const Exiv2::Exifdatum &datum) {
        return datum.tag() == key.tag() && datum.ifdId() == key.ifdId();
    });
}

const TagName *FindTagName(TagFamily family, const QString &name)
{
    for (const TagName &tag : TagNames) {
        if (tag.family == family && name == QLatin1String(tag.name))
            return &tag;
    }
    return nullptr;
}

QString TextUpToNul(const std::string &bytes)
{
    return DecodeTagText(QByteArray::fromStdString(bytes.substr(0, bytes.find('\0'))));
}

// Cameras pad their strings with blanks to a fixed length.
QString ExifString(const std::string &bytes)
{
    QString text = TextUpToNul(bytes);
    while (!text.isEmpty() && text.back().isSpace())
        text.chop(1);
    return text;
}

QString NumberText(const Exiv2::Rational &value)
{
    return QString::number(static_cast<double>(value.first) / value.second, 'g', 12);
}

QString SexagesimalText(const Exiv2::Exifdatum &datum)
{
    if (datum.count() != 3)
        return {};
    QStringList parts;
    for (long i = 0; i < 3; ++i) {
        const Exiv2::Rational part = datum.toRational(i);
        if (part.second == 0)
            return {};
        parts << NumberText(part);
    }
    return parts.join(u':');
}

QString ExifText(const Exiv2::ExifData &exif, const TagName &tag)
{
    const auto datum = FindExif(exif, tag.key);
    if (datum == exif.end() || datum->count() == 0)
        return {};
    switch (tag.rendering) {
    case Rendering::Readable:
        return ExifString(datum->print(&exif));
    case Rendering::Stored:
        return ExifString(datum->toString());
    case Rendering::FlashWords:
        return FlashWording(datum->toLong(0));
    case Rendering::Sexagesimal:
        return SexagesimalText(*datum);
    case Rendering::TextList:
        break;
    }
    return {};
}

QString IptcText(const Exiv2::IptcData &iptc, const TagName &tag)
{
    const Exiv2::IptcKey key(tag.key);
    QStringList entries;
    for (const Exiv2::Iptcdatum &datum : iptc) {
        if (datum.tag() == key.tag() && datum.record() == key.record())
            entries << TextUpToNul(datum.toString());
    }
    if (tag.rendering != Rendering::TextList && !entries.isEmpty())
        return entries.first();
    return entries.join(u',');
}

std::shared_ptr<const TagReader::Tags> ReadTags(Exiv2::Image *image)
{
    auto tags = std::make_shared<TagReader::Tags>();
    if (image == nullptr)
        return tags;
    image->readMetadata();
    tags->exif = std::move(image->exifData());
    tags->iptc = std::move(image->iptcData());
    // The frame header is read with the tags, so the size costs no decoding.
    tags->width = image->pixelWidth();
    tags->height = image->pixelHeight();
    return tags;
}

} // namespace

TagReader TagReader::FromFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray jpegHeader = ReadJpegHeaderWithoutXmp(file);
    if (!jpegHeader.isEmpty())
        return FromExiv2(jpegHeader);
    InitialiseTagLibrary();
    TagReader reader;
    try {
        reader.tags = ReadTags(Exiv2::ImageFactory::open(QFile::encodeName(path).toStdString(), false).get());
    } catch (...) {
        // Exiv2 reports a damaged or unknown file by throwing; such a file simply has no tags.
        reader.tags.reset();
    }
    return reader;
}

TagReader TagReader::FromMemory(const QByteArray &bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    const QByteArray jpegHeader = ReadJpegHeaderWithoutXmp(buffer);
    return FromExiv2(jpegHeader.isEmpty() ? bytes : jpegHeader);
}

TagReader TagReader::FromExiv2(const QByteArray &bytes)
{
    InitialiseTagLibrary();
    TagReader reader;
    try {
        reader.tags = ReadTags(OpenExiv2Image(bytes).get());
    } catch (...) {
        reader.tags.reset();
    }
    return reader;
}

int TagReader::PixelWidth() const
{
    return tags ? tags->width : 0;
}

int TagReader::PixelHeight() const
{
    return tags ? tags->height : 0;
}

QString TagReader::Text(TagFamily family, const QString &name) const
{
    const TagName *tag = FindTagName(family, name);
    if (!tags || !tag)
        return {};
    try {
        return family == TagFamily::Iptc ? IptcText(tags->iptc, *tag) : ExifText(tags->exif, *tag);
    } catch (...) {
        return {};
    }
}

std::optional<double> TagReader::GpsAltitude() const
{
    if (!tags)
        return std::nullopt;
    try {
        const auto altitude = FindExif(tags->exif, "Exif.GPSInfo.GPSAltitude");
        if (altitude == tags->exif.end() || altitude->count() == 0 || altitude->toRational(0).second == 0)
            return std::nullopt;
        const Exiv2::Rational metres = altitude->toRational(0);
        const double value = static_cast<double>(metres.first) / metres.second;
        const auto reference = FindExif(tags->exif, "Exif.GPSInfo.GPSAltitudeRef");
        const bool below = reference != tags->exif.end() && reference->count() > 0 && reference->toLong(0) == 1;
        return below ? -value : value;
    } catch (...) {
        return std::nullopt;
    }
}

QByteArray TagReader::EmbeddedPreview() const
{
    if (!tags)
        return {};
    try {
        const Exiv2::ExifThumbC thumbnail(tags->exif);
        if (std::string(thumbnail.mimeType()) != "image/jpeg")
            return {};
        const Exiv2::DataBuf bytes = thumbnail.copy();
        return QByteArray(reinterpret_cast<const char *>(bytes.pData_), bytes.size_);
    } catch (...) {
        return {};
    }
}

int TagReader::Orientation() const
{
    if (!tags)
        return 1;
    try {
        const auto orientation = FindExif(tags->exif, "Exif.Image.Orientation");
        if (orientation == tags->exif.end() || orientation->count() == 0)
            return 1;
        const long value = orientation->toLong(0);
        return value >= 1 && value <= 8 ? static_cast<int>(value) : 1;
    } catch (...) {
        return 1;
    }
}
