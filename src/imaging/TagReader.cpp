#include "imaging/TagReader.h"
#include "imaging/ErrorText.h"

#include "imaging/Exiv2Support.h"
#include "imaging/FlashText.h"
#include "imaging/ImagingLibrary.h"
#include "imaging/JpegHeader.h"
#include "imaging/TagTable.h"
#include "imaging/Windows1252.h"

#include <QBuffer>
#include <QFile>
#include <QStringList>
#include <algorithm>
#include <array>

struct TagReader::Tags {
    Exiv2::ExifData exif;
    Exiv2::IptcData iptc;
    Exiv2::XmpData xmp;
    int width = 0;
    int height = 0;
};

namespace {

// Exiv2's own lookup builds the full key text of every entry it passes; comparing the tag
// number and directory instead keeps reading a photo's tags free of that cost.
Exiv2::ExifData::const_iterator FindExif(const Exiv2::ExifData &exif, const char *keyText)
{
    const Exiv2::ExifKey key(keyText);
    return std::find_if(exif.begin(), exif.end(), [&key](const Exiv2::Exifdatum &datum) {
        return datum.tag() == key.tag() && datum.ifdId() == key.ifdId();
    });
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

QString ExifText(const Exiv2::ExifData &exif, const TagRow &tag)
{
    const auto datum = FindExif(exif, tag.exiv2Key);
    if (datum == exif.end() || datum->count() == 0)
        return {};
    switch (tag.rendering) {
    case TagRendering::Readable:
        return ExifString(datum->print(&exif));
    case TagRendering::Stored:
        return ExifString(datum->toString());
    case TagRendering::FlashWords:
        return FlashWording(datum->toLong(0));
    case TagRendering::Sexagesimal:
        return SexagesimalText(*datum);
    case TagRendering::Rational:
        return datum->toRational(0).second == 0 ? QString() : NumberText(datum->toRational(0));
    case TagRendering::TextList:
        break;
    }
    return {};
}

QString IptcText(const Exiv2::IptcData &iptc, const TagRow &tag)
{
    const Exiv2::IptcKey key(tag.exiv2Key);
    QStringList entries;
    for (const Exiv2::Iptcdatum &datum : iptc) {
        if (datum.tag() == key.tag() && datum.record() == key.record())
            entries << TextUpToNul(datum.toString());
    }
    if (tag.rendering != TagRendering::TextList && !entries.isEmpty())
        return entries.first();
    return entries.join(u',');
}

// A language alternative gives its default language, else its first; a list gives its items.
QString XmpText(const Exiv2::XmpData &xmp, const TagRow &tag)
{
    const auto datum = xmp.findKey(Exiv2::XmpKey(tag.exiv2Key));
    if (datum == xmp.end() || datum->count() == 0)
        return {};
    if (const auto *alternatives = dynamic_cast<const Exiv2::LangAltValue *>(&datum->value())) {
        const auto preferred = alternatives->value_.find("x-default");
        const auto chosen = preferred != alternatives->value_.end() ? preferred : alternatives->value_.begin();
        return chosen == alternatives->value_.end() ? QString() : QString::fromStdString(chosen->second);
    }
    QStringList items;
    for (long i = 0; i < datum->count(); ++i)
        items << QString::fromStdString(datum->toString(i));
    return tag.rendering == TagRendering::TextList ? items.join(u',') : items.value(0);
}

bool HasIptc(const Exiv2::IptcData &iptc, const char *keyText)
{
    const Exiv2::IptcKey key(keyText);
    return std::any_of(iptc.begin(), iptc.end(), [&key](const Exiv2::Iptcdatum &datum) {
        return datum.tag() == key.tag() && datum.record() == key.record() && !datum.toString().empty();
    });
}

// The XMP packet is only parsed when the IPTC record lacks a value XMP may hold: parsing it
// costs more than reading all other tags of a photo.
bool XmpNeeded(const Exiv2::IptcData &iptc)
{
    return !HasIptc(iptc, "Iptc.Application2.Caption") || !HasIptc(iptc, "Iptc.Application2.Keywords");
}

QString Reason(const std::exception &error)
{
    const QString why = ErrorText(error);
    return why.isEmpty() ? QStringLiteral("the tags cannot be read") : why;
}

std::shared_ptr<const TagReader::Tags> ReadTags(Exiv2::Image *image, const QByteArray &xmpPacket, XmpParsing xmp)
{
    auto tags = std::make_shared<TagReader::Tags>();
    if (image == nullptr)
        throw Exiv2::Error(Exiv2::kerFileContainsUnknownImageType);
    image->readMetadata();
    tags->exif = std::move(image->exifData());
    tags->iptc = std::move(image->iptcData());
    tags->xmp = std::move(image->xmpData());
    if (tags->xmp.empty() && !xmpPacket.isEmpty() && (xmp == XmpParsing::Always || XmpNeeded(tags->iptc))) {
        // A damaged packet leaves the photo without XMP values, not without its other tags.
        if (Exiv2::XmpParser::decode(tags->xmp, xmpPacket.toStdString()) != 0)
            tags->xmp.clear();
    }
    // The frame header is read with the tags, so the size costs no decoding.
    tags->width = image->pixelWidth();
    tags->height = image->pixelHeight();
    return tags;
}

} // namespace

TagReader TagReader::FromFile(const QString &path, XmpParsing xmp)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        TagReader unread;
        unread.status = Result::Failure(QStringLiteral("%1: %2").arg(path, file.errorString()));
        return unread;
    }
    QByteArray xmpPacket;
    const QByteArray jpegHeader = ReadJpegHeaderWithoutXmp(file, &xmpPacket);
    if (!jpegHeader.isEmpty())
        return FromExiv2(jpegHeader, xmpPacket, xmp);
    InitialiseTagLibrary();
    TagReader reader;
    try {
        reader.tags = ReadTags(Exiv2::ImageFactory::open(QFile::encodeName(path).toStdString(), false).get(), {}, xmp);
    } catch (const std::exception &error) {
        // Exiv2 reports a damaged or unknown file by throwing: the photo has no tags, and the
        // caller learns why.
        reader.tags.reset();
        reader.status = Result::Failure(Reason(error));
    }
    return reader;
}

TagReader TagReader::FromMemory(const QByteArray &bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QByteArray xmpPacket;
    const QByteArray jpegHeader = ReadJpegHeaderWithoutXmp(buffer, &xmpPacket);
    return FromExiv2(jpegHeader.isEmpty() ? bytes : jpegHeader, xmpPacket, XmpParsing::WhenIptcLacks);
}

TagReader TagReader::FromExiv2(const QByteArray &bytes, const QByteArray &xmpPacket, XmpParsing xmp)
{
    InitialiseTagLibrary();
    TagReader reader;
    try {
        reader.tags = ReadTags(OpenExiv2Image(bytes).get(), xmpPacket, xmp);
    } catch (const std::exception &error) {
        reader.tags.reset();
        reader.status = Result::Failure(Reason(error));
    }
    return reader;
}

const Result &TagReader::Status() const
{
    return status;
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
    const TagRow *tag = FindTagRow(family, name);
    if (!tags || !tag)
        return {};
    try {
        switch (family) {
        case TagFamily::Iptc:
            return IptcText(tags->iptc, *tag);
        case TagFamily::Xmp:
            return XmpText(tags->xmp, *tag);
        case TagFamily::Exif:
        case TagFamily::Gps:
            break;
        }
        return ExifText(tags->exif, *tag);
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
