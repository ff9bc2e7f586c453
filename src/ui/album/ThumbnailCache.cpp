#include "ui/album/ThumbnailCache.h"

#include <QImageReader>
#include <QMetaObject>
#include <QMutex>
#include <QRunnable>

// The files waiting for a worker, shared with the workers: one that finds its file gone from
// the queue skips it.
struct ThumbnailCache::Queue {
    QMutex mutex;
    QSet<QString> waiting;

    bool Take(const QString &path)
    {
        const QMutexLocker lock(&mutex);
        return waiting.remove(path);
    }
};

namespace {

QImage Decode(const QString &path)
{
    QImageReader reader(path);
    // Album thumbnails are written turned already.
    reader.setAutoTransform(false);
    const QSize size = reader.size();
    if (size.isValid() && (size.width() > ThumbnailCache::Box || size.height() > ThumbnailCache::Box))
        reader.setScaledSize(size.scaled(ThumbnailCache::Box, ThumbnailCache::Box, Qt::KeepAspectRatio));
    QImage image = reader.read();
    // Painted as is, with no conversion on the interface thread.
    if (!image.isNull())
        image = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    return image;
}

} // namespace

ThumbnailCache::ThumbnailCache(qint64 maxBytes, QObject *parent)
    : QObject(parent), images(static_cast<qsizetype>(maxBytes)), queue(std::make_shared<Queue>())
{
    // Decoding a 128-pixel JPEG is quick: two workers keep up with scrolling and leave the
    // other cores to the rest of the program.
    pool.setMaxThreadCount(2);
}

ThumbnailCache::~ThumbnailCache()
{
    KeepOnly({});
    pool.waitForDone();
}

QImage ThumbnailCache::Thumbnail(const QString &path)
{
    const QImage *image = images.object(path);
    return image ? *image : QImage();
}

void ThumbnailCache::Request(const QString &path)
{
    if (path.isEmpty() || images.contains(path))
        return;
    {
        const QMutexLocker lock(&queue->mutex);
        if (queue->waiting.contains(path))
            return;
        queue->waiting.insert(path);
    }
    const std::shared_ptr<Queue> shared = queue;
    // The cache outlives its workers (its destructor waits for them); a result still on its
    // way to a cache that is gone is dropped with the cache's events.
    pool.start([this, shared, path] {
        if (!shared->Take(path))
            return;
        const QImage image = Decode(path);
        QMetaObject::invokeMethod(this, [this, path, image] { Store(path, image); }, Qt::QueuedConnection);
    });
}

void ThumbnailCache::KeepOnly(const QSet<QString> &paths)
{
    const QMutexLocker lock(&queue->mutex);
    queue->waiting.intersect(paths);
}

void ThumbnailCache::Forget(const QString &path)
{
    images.remove(path);
}

void ThumbnailCache::Clear()
{
    images.clear();
}

void ThumbnailCache::WaitForDone()
{
    pool.waitForDone();
}

void ThumbnailCache::Store(const QString &path, const QImage &image)
{
    // A file that cannot be decoded is remembered as an empty image, so it is not read again at
    // every paint; the placeholder stays in its cell.
    images.insert(path, new QImage(image), std::max<qsizetype>(1, image.sizeInBytes()));
    emit ThumbnailReady(path);
}
