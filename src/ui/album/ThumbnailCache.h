#pragma once

#include <QCache>
#include <QImage>
#include <QObject>
#include <QSet>
#include <QSize>
#include <QThreadPool>

#include <memory>

// Decoded album thumbnails for the grid. Files are read and decoded on worker threads only; the
// painting path asks Thumbnail(), a lookup, and Request(), a queue entry. The decoded images are
// kept in a least-recently-used cache bounded in bytes, so memory stays flat however many photos
// the album holds.
class ThumbnailCache : public QObject {
    Q_OBJECT
public:
    explicit ThumbnailCache(qint64 maxBytes = qint64(64) * 1024 * 1024, QObject *parent = nullptr);
    ~ThumbnailCache() override;

    // The decoded thumbnail, or a null image while it is not ready.
    QImage Thumbnail(const QString &path);
    // Queues the file for decoding unless it is cached or already queued.
    void Request(const QString &path);
    // Drops queued files that are not in the set (rows that left the view before their turn).
    void KeepOnly(const QSet<QString> &paths);
    // Forgets a thumbnail whose file was made again (after a rotation, say).
    void Forget(const QString &path);
    // Forgets every thumbnail, after files were made again in bulk.
    void Clear();
    // Waits for the queue to empty; for callers that must see every result.
    void WaitForDone();

    // Thumbnails larger than this (a thumbnail folder written by another program) are shrunk
    // while they are decoded.
    static constexpr int Box = 128;

signals:
    // Only the cells showing this file need painting again.
    void ThumbnailReady(const QString &path);

private:
    struct Queue;
    void Store(const QString &path, const QImage &image);

    QCache<QString, QImage> images;
    std::shared_ptr<Queue> queue;
    QThreadPool pool;
};
