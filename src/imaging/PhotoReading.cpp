#include "imaging/PhotoReading.h"

#include "imaging/Picture.h"
#include "imaging/TagReader.h"

#include <QFileInfo>

PhotoReading ReadPhoto(const QString &photoPath, const QString &thumbnailPath, ThumbnailSource thumbnailSource)
{
    PhotoReading reading;
    reading.thumbnail = MakeThumbnail(photoPath, thumbnailPath, thumbnailSource);
    reading.facts = ReadPhotoFileFacts(photoPath);
    const QFileInfo file(photoPath);
    const QDateTime born = file.birthTime();
    reading.created = RecordDateTimeText(born.isValid() ? born : file.lastModified());

    const TagReader tags = TagReader::FromFile(photoPath);
    reading.tagsRead = tags.Status();
    reading.tags.LoadExifTags(tags);
    QSize size(tags.PixelWidth(), tags.PixelHeight());
    if (size.width() <= 0 || size.height() <= 0)
        reading.pixelSize = ReadPictureSize(photoPath, size);
    // A size nothing could read is recorded as 0 by 0, as the record's number form has it.
    if (!reading.pixelSize)
        size = QSize(0, 0);
    reading.facts.width = size.width();
    reading.facts.height = size.height();
    return reading;
}
