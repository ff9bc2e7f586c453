#include "imaging/Thumbnail.h"
#include "imaging/ErrorText.h"

#include "imaging/ImagingLibrary.h"
#include "imaging/JpegScaledDecode.h"
#include "imaging/ParallelWork.h"
#include "imaging/PictureData.h"
#include "imaging/TagReader.h"

#include <QFile>

using vips::VError;
using vips::VImage;

namespace {

vips::VOption *BoxOptions()
{
    return VImage::option()->set("height", ThumbnailBox)->set("size", VIPS_SIZE_DOWN);
}

} // namespace

void RefuseOtherDecoders(const QString &photoPath)
{
    const char *loader = vips_foreign_find_load(QFile::encodeName(photoPath).constData());
    const QByteArray name = loader ? QByteArray(loader) : QByteArray();
    const ImageFormat format = FormatOfFile(photoPath);
    const bool byMagick = format == ImageFormat::Bmp || format == ImageFormat::Psd || format == ImageFormat::Ico;
    for (const char *own : {"VipsForeignLoadJpeg", "VipsForeignLoadPng", "VipsForeignLoadSpng", "VipsForeignLoadTiff",
                            "VipsForeignLoadNsgif"}) {
        if (name.startsWith(own))
            return;
    }
    if (byMagick && name.startsWith("VipsForeignLoadMagick"))
        return;
    throw VError("not a picture of a format the program reads");
}

namespace {

// A JPEG goes to the faster scaled decoder first; whatever it leaves goes to libvips, which
// reports why a file cannot be decoded.
Picture FromJpeg(const QString &photoPath, int maxWidth, int maxHeight)
{
    QFile file(photoPath);
    if (!file.open(QIODevice::ReadOnly) || file.peek(2) != QByteArrayLiteral("\xFF\xD8"))
        return {};
    // Read into a buffer the worker keeps, so that photo after photo its pages are not faulted in
    // again. Not mapped: a file cut short meanwhile (a card pulled out) would kill the program.
    constexpr qsizetype Kept = qsizetype(32) << 20;
    thread_local QByteArray kept;
    QByteArray own;
    QByteArray &bytes = file.size() <= Kept ? kept : own;
    bytes.resize(file.size());
    if (file.read(bytes.data(), bytes.size()) != bytes.size())
        return {};
    return DecodeJpegToFit(bytes, maxWidth, maxHeight);
}

Picture FromPhoto(const QString &photoPath)
{
    if (Picture decoded = FromJpeg(photoPath, ThumbnailBox, ThumbnailBox); !decoded.IsNull())
        return decoded;
    RefuseOtherDecoders(photoPath);
    return PictureData::Wrap(VImage::thumbnail(QFile::encodeName(photoPath).constData(), ThumbnailBox, BoxOptions()));
}

Picture FromEmbeddedPreview(const QString &photoPath)
{
    const TagReader tags = TagReader::FromFile(photoPath);
    const QByteArray preview = tags.EmbeddedPreview();
    if (preview.isEmpty())
        return {};
    try {
        const VipsBytes bytes(preview);
        VImage image = VImage::thumbnail_buffer(bytes.get(), ThumbnailBox, BoxOptions()->set("no_rotate", true));
        // The preview carries no orientation of its own: the photo's applies to it.
        image = image.copy();
        image.set(VIPS_META_ORIENTATION, tags.Orientation());
        // Decoded here, so that a damaged preview falls back to the photo itself.
        return PictureData::Wrap(image.autorot().copy_memory());
    } catch (const VError &) {
        vips_error_clear(); // a later failure must not report this one too
        vips_error_clear();
        return {};
    }
}

} // namespace

Result MakeThumbnail(const QString &photoPath, const QString &thumbnailPath, ThumbnailSource source)
{
    InitialisePixelLibrary();
    Picture thumbnail;
    if (source == ThumbnailSource::EmbeddedPreviewFirst)
        thumbnail = FromEmbeddedPreview(photoPath);
    try {
        if (thumbnail.IsNull())
            thumbnail = FromPhoto(photoPath);
    } catch (const VError &error) {
        const QString reason = ErrorText(error);
        vips_error_clear();
        return Result::Failure(QStringLiteral("%1: %2").arg(photoPath, reason.isEmpty() ? QStringLiteral("the photo cannot be decoded") : reason));
    }
    return thumbnail.SaveJpeg(thumbnailPath, GoodJpegQuality);
}

Picture LoadPictureToFit(const QString &photoPath, int maxWidth, int maxHeight)
{
    InitialisePixelLibrary();
    if (maxWidth < 1 || maxHeight < 1)
        return {};
    if (Picture decoded = FromJpeg(photoPath, maxWidth, maxHeight); !decoded.IsNull())
        return decoded;
    try {
        RefuseOtherDecoders(photoPath);
        // Decoded here, on the caller's thread, so that a view's worker does all the work.
        return PictureData::Wrap(VImage::thumbnail(QFile::encodeName(photoPath).constData(), maxWidth,
                                                   VImage::option()->set("height", maxHeight)->set("size", VIPS_SIZE_DOWN))
                                     .copy_memory());
    } catch (const VError &) {
        vips_error_clear();
        return {};
    }
}

PhotosSharedOverCores::PhotosSharedOverCores()
{
    InitialisePixelLibrary();
    helpers = vips_concurrency_get();
    vips_concurrency_set(1);
}

PhotosSharedOverCores::~PhotosSharedOverCores()
{
    vips_concurrency_set(helpers);
}

QList<Result> MakeThumbnails(const QList<ThumbnailJob> &jobs, ThumbnailSource source)
{
    const PhotosSharedOverCores shared;
    QList<Result> results(jobs.size());
    Result *const result = results.data();
    RunInParallel(jobs.size(), [&](qsizetype index) {
        result[index] = MakeThumbnail(jobs[index].photoPath, jobs[index].thumbnailPath, source);
    });
    return results;
}
