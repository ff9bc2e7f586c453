#include "Thumbnail.h"

#include "ImagingLibrary.h"
#include "ParallelWork.h"
#include "PictureData.h"
#include "TagReader.h"

#include <QFile>

using vips::VError;
using vips::VImage;

namespace {

vips::VOption *BoxOptions()
{
    return VImage::option()->set("height", ThumbnailBox)->set("size", VIPS_SIZE_DOWN);
}

// Opening only reads the header, so a file that claims an absurd size is refused before any
// pixel is decoded.
void RefuseOversized(const QString &photoPath)
{
    const VImage header = VImage::new_from_file(QFile::encodeName(photoPath).constData(),
                                                VImage::option()->set("access", VIPS_ACCESS_SEQUENTIAL));
    if (static_cast<double>(header.width()) * header.height() > MaxPicturePixels)
        throw VError("the picture is larger than the program handles");
}

Picture FromPhoto(const QString &photoPath)
{
    RefuseOversized(photoPath);
    return PictureData::Wrap(VImage::thumbnail(QFile::encodeName(photoPath).constData(), ThumbnailBox, BoxOptions()));
}

Picture FromEmbeddedPreview(const QString &photoPath)
{
    const TagReader tags = TagReader::FromFile(photoPath);
    const QByteArray preview = tags.EmbeddedPreview();
    if (preview.isEmpty())
        return {};
    VipsBlob *blob = vips_blob_copy(preview.constData(), static_cast<size_t>(preview.size()));
    try {
        VImage image = VImage::thumbnail_buffer(blob, ThumbnailBox, BoxOptions()->set("no_rotate", true));
        vips_area_unref(VIPS_AREA(blob));
        // The preview carries no orientation of its own: the photo's applies to it.
        image = image.copy();
        image.set(VIPS_META_ORIENTATION, tags.Orientation());
        return PictureData::Wrap(image.autorot());
    } catch (const VError &) {
        vips_area_unref(VIPS_AREA(blob));
        vips_error_clear();
        return {};
    }
}

} // namespace

Result MakeThumbnail(const QString &photoPath, const QString &thumbnailPath, ThumbnailSource source)
{
    InitialiseImaging();
    Picture thumbnail;
    if (source == ThumbnailSource::EmbeddedPreviewFirst)
        thumbnail = FromEmbeddedPreview(photoPath);
    try {
        if (thumbnail.IsNull())
            thumbnail = FromPhoto(photoPath);
    } catch (const VError &error) {
        const QString reason = QString::fromUtf8(error.what()).trimmed();
        vips_error_clear();
        return Result::Failure(QStringLiteral("%1: %2").arg(photoPath, reason));
    }
    return thumbnail.SaveJpeg(thumbnailPath, GoodJpegQuality);
}

QList<Result> MakeThumbnails(const QList<ThumbnailJob> &jobs, ThumbnailSource source)
{
    QList<Result> results(jobs.size());
    RunInParallel(jobs.size(), [&](qsizetype index) {
        results[index] = MakeThumbnail(jobs[index].photoPath, jobs[index].thumbnailPath, source);
    });
    return results;
}
