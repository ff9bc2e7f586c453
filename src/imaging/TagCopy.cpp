#include "imaging/TagCopy.h"
#include "imaging/ErrorText.h"

#include "imaging/ExifSegment.h"
#include "imaging/Exiv2Support.h"
#include "imaging/ImagingLibrary.h"
#include "imaging/Picture.h"


namespace {

// The size cameras give the preview in the EXIF block.
constexpr int PreviewBox = 160;

bool HoldsTags(Exiv2::Image &image)
{
    return !image.exifData().empty() || !image.iptcData().empty() || !image.xmpData().empty() || !image.xmpPacket().empty()
        || !image.comment().empty() || image.iccProfileDefined();
}

void RemakePreview(Exiv2::ExifData &exif, const Picture &edited)
{
    if (Exiv2::ExifThumbC(exif).copy().size_ == 0)
        return;
    const QByteArray preview = edited.ResizedToFit(PreviewBox, PreviewBox).Encode(ImageFormat::Jpeg);
    Exiv2::ExifThumb thumbnail(exif);
    if (preview.isEmpty())
        thumbnail.erase();
    else
        thumbnail.setJpegThumbnail(reinterpret_cast<const Exiv2::byte *>(preview.constData()), static_cast<long>(preview.size()));
}

// The packet goes over as it was written where the file kept one; TIFF files only give the
// parsed properties, which are serialised again.
void CopyXmp(Exiv2::Image &source, Exiv2::Image &target)
{
    std::string packet = source.xmpPacket();
    // A TIFF keeps its packet in a tag of its own; taken from there, it goes over as written
    // rather than serialised again from the properties the toolkit understood.
    const auto tiffPacket = source.exifData().findKey(Exiv2::ExifKey("Exif.Image.XMLPacket"));
    if (packet.empty() && tiffPacket != source.exifData().end()) {
        const Exiv2::DataBuf bytes(tiffPacket->size());
        tiffPacket->copy(bytes.pData_, Exiv2::invalidByteOrder);
        packet.assign(reinterpret_cast<const char *>(bytes.pData_), static_cast<std::size_t>(bytes.size_));
    }
    if (!packet.empty()) {
        target.setXmpPacket(packet);
        target.writeXmpFromPacket(true);
    } else {
        target.setXmpData(source.xmpData());
        target.writeXmpFromPacket(false);
    }
}

bool IsJpeg(const QByteArray &bytes)
{
    return bytes.startsWith("\xFF\xD8");
}

// The preview made again from the edited picture, at a quality low enough to fit the room the
// camera left for it; the old one stays when none fits.
void RemakePreviewInPlace(QByteArray &segment, const Picture &edited)
{
    if (ExifPreviewOf(segment).isEmpty())
        return;
    const Picture small = edited.ResizedToFit(PreviewBox, PreviewBox);
    for (const int quality : {GoodJpegQuality, 50, 25}) {
        if (SetExifPreview(segment, small.Encode(ImageFormat::Jpeg, quality)))
            return;
    }
}

} // namespace

Result CopyTags(const QByteArray &original, QByteArray &encoded, const Picture &edited)
{
    if (IsJpeg(original) && IsJpeg(encoded)) {
        // A JPEG's segments go over as bytes (see ExifSegment.h): nothing a tag library could
        // fail to understand is written again.
        QByteArray exifSegment = ExifSegmentOf(original);
        if (!exifSegment.isEmpty()) {
            SetExifPixelSize(exifSegment, QSize(edited.Width(), edited.Height()));
            RemakePreviewInPlace(exifSegment, edited);
        }
        encoded = WithSegmentsOf(original, encoded, exifSegment);
        return Result::Success();
    }
    InitialiseTagLibrary();
    try {
        const auto source = OpenExiv2Image(original);
        if (source.get() == nullptr)
            return Result::Success();
        source->readMetadata();
        // Reading clears the flag; set, xmpPacket() gives the packet as written, not serialised again.
        source->writeXmpFromPacket(true);
        if (!HoldsTags(*source))
            return Result::Success();
        const auto target = OpenExiv2Image(encoded);
        if (target.get() == nullptr)
            return Result::Failure(QStringLiteral("the edited picture cannot hold the photo's tags"));
        target->readMetadata();
        Exiv2::ExifData exif = source->exifData();
        SetExifPixelSize(exif, edited.Width(), edited.Height());
        RemakePreview(exif, edited);
        if (target->supportsMetadata(Exiv2::mdExif))
            target->setExifData(exif);
        if (target->supportsMetadata(Exiv2::mdIptc))
            target->setIptcData(source->iptcData());
        if (target->supportsMetadata(Exiv2::mdXmp))
            CopyXmp(*source, *target);
        if (target->supportsMetadata(Exiv2::mdComment))
            target->setComment(source->comment());
        if (target->supportsMetadata(Exiv2::mdIccProfile) && source->iccProfileDefined())
            target->setIccProfile(*source->iccProfile());
        target->writeMetadata();
        encoded = WrittenBytes(*target);
        return Result::Success();
    } catch (const std::exception &error) {
        const QString why = ErrorText(error);
        return Result::Failure(QStringLiteral("the photo's tags could not be carried over: %1")
                                   .arg(why.isEmpty() ? QStringLiteral("the tag library refused them") : why));
    }
}
