#include "ui/album/DetailPictures.h"

#include "ui/common/PhotoDecode.h"

#include <QMetaObject>


DetailPictures::DetailPictures(QObject *parent) : QObject(parent), pictures(4)
{
    // One photo at a time: the shown one is asked for first, its neighbours after it.
    pool.setMaxThreadCount(1);
}

DetailPictures::~DetailPictures()
{
    pool.clear();
    pool.waitForDone();
}

QString DetailPictures::Key(const QString &path, const QSize &box)
{
    return QStringLiteral("%1x%2:%3").arg(box.width()).arg(box.height()).arg(path);
}

QImage DetailPictures::Picture(const QString &path, const QSize &box)
{
    const QString key = Key(path, box);
    if (const QImage *picture = pictures.object(key))
        return *picture;
    if (path.isEmpty() || box.isEmpty() || decoding.contains(key))
        return {};
    decoding.insert(key);
    pool.start([this, path, box, key] {
        const QImage image = DecodePhotoToFit(path, box);
        QMetaObject::invokeMethod(this, [this, path, box, key, image] {
            decoding.remove(key);
            pictures.insert(key, new QImage(image));
            emit Ready(path, box);
        }, Qt::QueuedConnection);
    });
    return {};
}

void DetailPictures::WaitForDone()
{
    pool.waitForDone();
}
