#include "ImportedPhoto.h"

#include "TagReader.h"

#include <QFile>
#include <QFileInfo>

namespace {

// A copy keeps the original's modified time: it is the photo's date when its tags have none.
Result CopyKeepingTime(const QString &source, const QString &destination)
{
    const QDateTime modified = QFileInfo(source).lastModified();
    QFile original(source);
    if (!original.copy(destination))
        return Result::Failure(QStringLiteral("could not be copied to %1: %2").arg(destination, original.errorString()));
    QFile copy(destination);
    if (copy.open(QIODevice::ReadWrite))
        copy.setFileTime(modified, QFileDevice::FileModificationTime);
    return Result::Success();
}

Result Place(const QString &source, const QString &destination, PlacedHow how)
{
    switch (how) {
    case PlacedHow::AlreadyThere:
        return QFileInfo::exists(destination) ? Result::Success() : Result::Failure(QStringLiteral("no longer exists"));
    case PlacedHow::Move: {
        if (QFile::rename(source, destination))
            return Result::Success();
        Result copied = CopyKeepingTime(source, destination);
        if (copied)
            QFile::remove(source); // when it cannot go, both stay: nothing is lost
        return copied;
    }
    case PlacedHow::Copy:
        return CopyKeepingTime(source, destination);
    }
    return Result::Failure(QStringLiteral("could not be placed"));
}

} // namespace

ImportedPhoto PlaceAndReadPhoto(const QString &source, const QString &destination, PlacedHow how,
                                const QString &thumbnailPath, ThumbnailSource thumbnailSource)
{
    ImportedPhoto photo;
    photo.placed = Place(source, destination, how);
    if (!photo.placed)
        return photo;
    // A photo without a thumbnail still gets its record, with a warning that says why.
    if (const Result thumbnail = MakeThumbnail(destination, thumbnailPath, thumbnailSource); !thumbnail) {
        photo.warning = QStringLiteral("imported, but no thumbnail could be made: ")
            + (thumbnail.message.isEmpty() ? QStringLiteral("the picture could not be decoded") : thumbnail.message);
    }
    photo.facts = ReadPhotoFileFacts(destination);
    const QFileInfo file(destination);
    const QDateTime born = file.birthTime();
    photo.created = RecordDateTimeText(born.isValid() ? born : file.lastModified());
    const TagReader tags = TagReader::FromFile(destination);
    photo.tags.LoadExifTags(tags);
    photo.facts.width = tags.PixelWidth();
    photo.facts.height = tags.PixelHeight();
    photo.compressedBitsPerPixel = tags.Text(TagFamily::Exif, QStringLiteral("CompressedBitsPerPixel"));
    return photo;
}
