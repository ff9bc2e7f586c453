#include "library/ImportedPhoto.h"

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
    // A photo without a thumbnail, tags or size still gets its record, with a warning that says why.
    static_cast<PhotoReading &>(photo) = ReadPhoto(destination, thumbnailPath, thumbnailSource);
    QStringList unread;
    if (!photo.thumbnail)
        unread << QStringLiteral("no thumbnail could be made: ") + photo.thumbnail.message;
    if (!photo.tagsRead)
        unread << QStringLiteral("its tags could not be read: ") + photo.tagsRead.message;
    if (!photo.pixelSize)
        unread << QStringLiteral("its size in pixels is unknown: ") + photo.pixelSize.message;
    if (!unread.isEmpty())
        photo.warning = QStringLiteral("imported, but ") + unread.join(QStringLiteral("; "));
    return photo;
}
