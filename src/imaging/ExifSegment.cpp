#include "imaging/ExifSegment.h"

#include <optional>

namespace {

constexpr qsizetype TiffStart = 10;  // marker, length, "Exif\0\0"

class TiffBlock {
public:
    explicit TiffBlock(QByteArray &segment)
        : bytes(segment), little(segment.mid(TiffStart, 2) == "II")
    {
    }

    std::optional<quint32> Read(qsizetype offset, int size) const
    {
        const qsizetype at = TiffStart + offset;
        if (offset < 0 || at + size > bytes.size())
            return std::nullopt;
        quint32 value = 0;
        for (int i = 0; i < size; ++i) {
            const quint32 byte = uchar(bytes[at + (little ? size - 1 - i : i)]);
            value = value << 8 | byte;
        }
        return value;
    }

    bool Write(qsizetype offset, int size, quint32 value)
    {
        const qsizetype at = TiffStart + offset;
        if (offset < 0 || at + size > bytes.size())
            return false;
        for (int i = 0; i < size; ++i)
            bytes[at + (little ? i : size - 1 - i)] = char((value >> (8 * i)) & 0xFF);
        return true;
    }

    // The offset of the directory entry with the tag, in the directory at the offset.
    std::optional<qsizetype> Entry(std::optional<quint32> directory, quint16 tag) const
    {
        const std::optional<quint32> count = directory ? Read(*directory, 2) : std::nullopt;
        if (!count)
            return std::nullopt;
        for (quint32 i = 0; i < *count; ++i) {
            const qsizetype entry = *directory + 2 + 12 * qsizetype(i);
            if (Read(entry, 2) == tag)
                return entry;
        }
        return std::nullopt;
    }

    std::optional<quint32> Value(std::optional<qsizetype> entry) const
    {
        const std::optional<quint32> type = entry ? Read(*entry + 2, 2) : std::nullopt;
        if (!type || Read(*entry + 4, 4) != 1u || (*type != 3 && *type != 4))
            return std::nullopt;
        return Read(*entry + 8, *type == 3 ? 2 : 4);
    }

    bool SetValue(std::optional<qsizetype> entry, quint32 value)
    {
        const std::optional<quint32> type = entry ? Read(*entry + 2, 2) : std::nullopt;
        if (!type || Read(*entry + 4, 4) != 1u || (*type != 3 && *type != 4) || (*type == 3 && value > 0xFFFF))
            return false;
        return Write(*entry + 8, *type == 3 ? 2 : 4, value);
    }

    std::optional<quint32> FirstDirectory() const { return Read(4, 4); }

    std::optional<quint32> NextDirectory(std::optional<quint32> directory) const
    {
        const std::optional<quint32> count = directory ? Read(*directory, 2) : std::nullopt;
        return count ? Read(*directory + 2 + 12 * qsizetype(*count), 4) : std::nullopt;
    }

private:
    QByteArray &bytes;
    bool little;
};

// Where the preview lies: its directory entries for offset and length.
struct PreviewPlace {
    std::optional<qsizetype> offsetEntry;
    std::optional<qsizetype> lengthEntry;
};

PreviewPlace PreviewOf(const TiffBlock &tiff)
{
    const std::optional<quint32> second = tiff.NextDirectory(tiff.FirstDirectory());
    if (!second || *second == 0)
        return {};
    return {tiff.Entry(second, 0x0201), tiff.Entry(second, 0x0202)};
}

// Segments before the picture data: (start, length with marker) of each.
template<typename Visit>
void ForEachSegment(const QByteArray &jpeg, Visit visit)
{
    for (qsizetype at = 2; at + 4 <= jpeg.size() && uchar(jpeg[at]) == 0xFF;) {
        const uchar marker = uchar(jpeg[at + 1]);
        if (marker == 0xDA || marker == 0xD9)
            return;
        const qsizetype length = (uchar(jpeg[at + 2]) << 8 | uchar(jpeg[at + 3])) + 2;
        if (!visit(at, length, marker))
            return;
        at += length;
    }
}

bool IsExif(const QByteArray &jpeg, qsizetype at, uchar marker)
{
    return marker == 0xE1 && jpeg.mid(at + 4, 6) == QByteArray("Exif\0\0", 6);
}

} // namespace

QByteArray ExifSegmentOf(const QByteArray &jpeg)
{
    QByteArray segment;
    ForEachSegment(jpeg, [&](qsizetype at, qsizetype length, uchar marker) {
        if (IsExif(jpeg, at, marker))
            segment = jpeg.mid(at, length);
        return segment.isEmpty();
    });
    return segment;
}

QByteArray WithExifSegment(const QByteArray &jpeg, const QByteArray &segment)
{
    QByteArray result = jpeg.left(2);
    qsizetype exifAt = -1;
    qsizetype afterJfif = 2;
    qsizetype end = 2;
    ForEachSegment(jpeg, [&](qsizetype at, qsizetype length, uchar marker) {
        if (IsExif(jpeg, at, marker)) {
            if (exifAt < 0)
                exifAt = result.size();
        } else {
            result += jpeg.mid(at, length);
            if (marker == 0xE0 && at == 2)
                afterJfif = result.size();
        }
        end = at + length;
        return true;
    });
    result.insert(exifAt >= 0 ? exifAt : afterJfif, segment);
    return result + jpeg.mid(end);
}

QByteArray WithSegmentsOf(const QByteArray &original, const QByteArray &encoded, const QByteArray &exifSegment)
{
    constexpr uchar Adobe = 0xEE;
    const auto carried = [](uchar marker) { return (marker >= 0xE0 && marker <= 0xEF && marker != Adobe) || marker == 0xFE; };
    QByteArray result = original.left(2);
    qsizetype originalEnd = 2;
    ForEachSegment(original, [&](qsizetype at, qsizetype length, uchar marker) {
        if (carried(marker))
            result += IsExif(original, at, marker) ? exifSegment : original.mid(at, length);
        originalEnd = at + length;
        return true;
    });
    qsizetype encodedEnd = 2;
    ForEachSegment(encoded, [&](qsizetype at, qsizetype length, uchar marker) {
        if (!carried(marker))
            result += encoded.mid(at, length);
        encodedEnd = at + length;
        return true;
    });
    result += encoded.mid(encodedEnd);
    // Picture data never holds FF D9 (an FF in it is always followed by 00 or a restart
    // marker), so the first one after the header ends the picture; what follows is a trailer.
    const qsizetype end = original.indexOf("\xFF\xD9", originalEnd);
    if (end >= 0)
        result += original.mid(end + 2);
    return result;
}

bool SetExifPixelSize(QByteArray &segment, QSize size)
{
    TiffBlock tiff(segment);
    const std::optional<quint32> exifDirectory = tiff.Value(tiff.Entry(tiff.FirstDirectory(), 0x8769));
    if (!exifDirectory)
        return false;
    const bool width = tiff.SetValue(tiff.Entry(exifDirectory, 0xA002), quint32(size.width()));
    const bool height = tiff.SetValue(tiff.Entry(exifDirectory, 0xA003), quint32(size.height()));
    return width && height;
}

bool SetExifOrientation(QByteArray &segment, int orientation)
{
    TiffBlock tiff(segment);
    return tiff.SetValue(tiff.Entry(tiff.FirstDirectory(), 0x0112), quint32(orientation));
}

int ExifOrientationOf(const QByteArray &segment)
{
    QByteArray copy = segment;
    const TiffBlock tiff(copy);
    const std::optional<quint32> orientation = tiff.Value(tiff.Entry(tiff.FirstDirectory(), 0x0112));
    return orientation && *orientation >= 1 && *orientation <= 8 ? static_cast<int>(*orientation) : 1;
}

QByteArray ExifPreviewOf(const QByteArray &segment)
{
    QByteArray copy = segment;
    const TiffBlock tiff(copy);
    const PreviewPlace place = PreviewOf(tiff);
    const std::optional<quint32> offset = tiff.Value(place.offsetEntry);
    const std::optional<quint32> length = tiff.Value(place.lengthEntry);
    if (!offset || !length || TiffStart + qsizetype(*offset) + qsizetype(*length) > segment.size())
        return {};
    return segment.mid(TiffStart + *offset, *length);
}

bool SetExifPreview(QByteArray &segment, const QByteArray &preview)
{
    TiffBlock tiff(segment);
    const PreviewPlace place = PreviewOf(tiff);
    const std::optional<quint32> offset = tiff.Value(place.offsetEntry);
    const std::optional<quint32> length = tiff.Value(place.lengthEntry);
    if (preview.isEmpty() || !offset || !length || preview.size() > qsizetype(*length)
        || TiffStart + qsizetype(*offset) + qsizetype(*length) > segment.size())
        return false;
    // The room the old preview took stays; what the new one leaves of it is zeroed.
    segment.replace(TiffStart + *offset, *length, preview + QByteArray(qsizetype(*length) - preview.size(), '\0'));
    return tiff.SetValue(place.lengthEntry, quint32(preview.size()));
}
