#pragma once

#include "app/Result.h"
#include "imaging/Picture.h"

#include <QList>
#include <QString>

// The box an album thumbnail fits into, in pixels.
constexpr int ThumbnailBox = 128;

// Where a thumbnail's pixels come from. The quick way takes the small preview most cameras
// embed in the EXIF block (the [Layout] FastMakeThumbnail setting) and falls back to the photo
// itself when there is none.
enum class ThumbnailSource { Photo, EmbeddedPreviewFirst };

// Writes the photo's thumbnail as a JPEG of the good quality that fits ThumbnailBox, turned the
// way the photo's orientation tag says. The photo is decoded at a reduced size where its format
// allows, so a large photo is never decoded whole. On failure nothing is written.
Result MakeThumbnail(const QString &photoPath, const QString &thumbnailPath,
                     ThumbnailSource source = ThumbnailSource::Photo);

// While it lives, libvips works on each picture in the calling thread alone: for callers that
// already share their photos out over the cores, where libvips's own helper threads would only
// crowd them.
class PhotosSharedOverCores {
public:
    PhotosSharedOverCores();
    ~PhotosSharedOverCores();
    PhotosSharedOverCores(const PhotosSharedOverCores &) = delete;
    PhotosSharedOverCores &operator=(const PhotosSharedOverCores &) = delete;

private:
    int helpers;
};

// The photo decoded to fit the box, turned the way its orientation tag says, never enlarged. As
// for thumbnails the decoder shrinks while it loads where the format allows, so a view showing a
// large photo on a small screen never holds it whole. Null when the file cannot be decoded.
Picture LoadPictureToFit(const QString &photoPath, int maxWidth, int maxHeight);

struct ThumbnailJob {
    QString photoPath;
    QString thumbnailPath;
};

// Makes many thumbnails on every core; the results are in the order of the jobs.
QList<Result> MakeThumbnails(const QList<ThumbnailJob> &jobs, ThumbnailSource source = ThumbnailSource::Photo);
