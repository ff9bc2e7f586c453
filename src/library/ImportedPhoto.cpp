#include "ImportedPhoto.h"

#include <QFile>
#include <QFileInfo>

namespace {

// A copy keeps the original's modified time: it is the photo's date when its tags have none.
bool CopyKeepingTime(const QString &source, const QString &destination)
{
    const QDateTime modified = QFileInfo(source).lastModified();
    if (!QFile::copy(source, destination))
        return false;
    QFile copy(destination);
    if (copy.open(QIODevice::ReadWrite))
        copy.setFileTime(modified, QFileDevice::FileModificationTime);
    return true;
}

bool Place(const QString &source, const QString &destination, PlacedHow how)
{
    switch (how) {
    case PlacedHow::AlreadyThere:
        return QFileInfo::exists(destination);
    case PlacedHow::Move:
        return QFile::rename(source, destination) || (CopyKeepingTime(source, destination) && QFile::remove(source));
    case PlacedHow::Copy:
        return CopyKeepingTime(source, destination);
    }
    return false;
}

} // namespace

ImportedPhoto PlaceAndReadPhoto(const QString &source, const QString &destination, PlacedHow how,
                                const QString &thumbnailPath, ThumbnailSource thumbnailSource)
{
    ImportedPhoto photo;
    if (!Place(source, destination, how))
        return photo;
    // A photo without a thumbnail, tags or size still gets its record; the reasons go with it.
    static_cast<PhotoReading &>(photo) = ReadPhoto(destination, thumbnailPath, thumbnailSource);
    photo.ok = true;
    return photo;
}
