#include "ui/common/PhotoDecode.h"

#include "imaging/Thumbnail.h"

QImage DecodePhotoToFit(const QString &path, const QSize &box)
{
    const ::Picture picture = LoadPictureToFit(path, box.width(), box.height());
    if (picture.IsNull())
        return {};
    const QByteArray rgb = picture.RgbPixels();
    if (rgb.size() < qsizetype(picture.Width()) * picture.Height() * 3)
        return {};
    return QImage(reinterpret_cast<const uchar *>(rgb.constData()), picture.Width(), picture.Height(), qsizetype(picture.Width()) * 3,
                  QImage::Format_RGB888)
        .convertToFormat(QImage::Format_RGB32);
}
