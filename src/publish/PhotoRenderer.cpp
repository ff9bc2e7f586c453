#include "publish/PhotoRenderer.h"

#include "library/AlbumFormat.h"
#include "app/ProgressSink.h"
#include "imaging/ParallelWork.h"
#include "imaging/Thumbnail.h"

#include <QFile>
#include <QThread>
#include <algorithm>

namespace {

// Bounds the decoder's box for the full size: libvips never enlarges, so the photo comes out at
// its own size.
constexpr int UnboundedBox = 1000000;

WatermarkPlaces PlacesOf(const AlbumExportArguments &arguments)
{
    WatermarkPlaces places;
    places.setFlag(WatermarkPlace::LeftTop, arguments.PlaceWatermarkAtLeftTop);
    places.setFlag(WatermarkPlace::LeftBottom, arguments.PlaceWatermarkAtLeftBottom);
    places.setFlag(WatermarkPlace::RightTop, arguments.PlaceWatermarkAtRightTop);
    places.setFlag(WatermarkPlace::RightBottom, arguments.PlaceWatermarkAtRightBottom);
    places.setFlag(WatermarkPlace::Centre, arguments.PlaceWatermarkAtCenter);
    return places;
}

Result CopyReplacing(const QString &from, const QString &to)
{
    QFile::remove(to);
    if (!QFile::copy(from, to))
        return Result::Failure(QStringLiteral("%1 could not be copied to %2").arg(from, to));
    return Result::Success();
}

} // namespace

QStringList ChosenSizeFolders(const AlbumExportArguments &arguments)
{
    QStringList folders;
    if (arguments.NeedExportThumbnail)
        folders << ExportFolderNames::Thumbnail;
    if (arguments.NeedExportPreview)
        folders << ExportFolderNames::Preview;
    if (arguments.NeedExportStandard)
        folders << ExportFolderNames::Standard;
    if (arguments.NeedExportFull)
        folders << ExportFolderNames::Full;
    return folders;
}

PhotoRenderer::PhotoRenderer(const AlbumExportArguments &exportArguments, const QString &albumPath,
                             const QString &exportFolder)
    : arguments(exportArguments), folder(exportFolder), places(PlacesOf(exportArguments))
{
    if (arguments.NeedExportStandard && arguments.NeedAddWatermark && places)
        watermark = Picture::Load(AlbumFormat::StudioDataPath(albumPath) + QStringLiteral("/watermark.png"));
}

Result PhotoRenderer::Render(const ExportPhoto &photo) const
{
    const auto target = [&](const QString &size) { return folder + u'/' + size + u'/' + photo.file; };
    if (arguments.NeedExportThumbnail) {
        // The album's thumbnail is copied as it is; only a missing one is made again.
        const Result copied = QFile::exists(photo.thumbnailPath)
            ? CopyReplacing(photo.thumbnailPath, target(ExportFolderNames::Thumbnail))
            : MakeThumbnail(photo.photoPath, target(ExportFolderNames::Thumbnail));
        if (!copied)
            return copied;
    }
    if (!arguments.NeedExportPreview && !arguments.NeedExportStandard && !arguments.NeedExportFull)
        return Result::Success();

    const int standardWidth = std::max(1, arguments.StandardWidth);
    const int standardHeight = std::max(1, arguments.StandardHeight);
    int boxWidth = UnboundedBox;
    int boxHeight = UnboundedBox;
    if (!arguments.NeedExportFull) {
        boxWidth = std::max(arguments.NeedExportPreview ? PreviewBox : 1, arguments.NeedExportStandard ? standardWidth : 1);
        boxHeight = std::max(arguments.NeedExportPreview ? PreviewBox : 1, arguments.NeedExportStandard ? standardHeight : 1);
    }
    const Picture decoded = LoadPictureToFit(photo.photoPath, boxWidth, boxHeight);
    if (decoded.IsNull())
        return Result::Failure(QStringLiteral("%1 could not be decoded").arg(photo.photoPath));

    if (arguments.NeedExportFull) {
        if (const Result saved = decoded.SaveJpeg(target(ExportFolderNames::Full)); !saved)
            return saved;
    }
    Picture standard;
    if (arguments.NeedExportStandard) {
        standard = decoded.ResizedToFit(standardWidth, standardHeight);
        const Picture stamped = watermark.IsNull() ? standard : standard.WithWatermark(watermark, places);
        if (const Result saved = stamped.SaveJpeg(target(ExportFolderNames::Standard)); !saved)
            return saved;
    }
    if (arguments.NeedExportPreview) {
        // A standard box at least as large as the preview box gives the same preview from the
        // unmarked standard picture, a smaller source than the decode.
        const bool fromStandard = !standard.IsNull() && standardWidth >= PreviewBox && standardHeight >= PreviewBox;
        const Picture preview = (fromStandard ? standard : decoded).ResizedToFit(PreviewBox, PreviewBox);
        if (const Result saved = preview.SaveJpeg(target(ExportFolderNames::Preview)); !saved)
            return saved;
    }
    return Result::Success();
}

QStringList PhotoRenderer::RenderAll(const QList<ExportPhoto> &photos, ProgressSink &progress) const
{
    const PhotosSharedOverCores shared;
    const qsizetype step = std::max(2, QThread::idealThreadCount()) * 2;
    QStringList failures;
    for (qsizetype first = 0; first < photos.size() && !progress.Cancelled(); first += step) {
        const qsizetype count = std::min(step, photos.size() - first);
        QList<Result> results(count);
        RunInParallel(count, [&](qsizetype i) { results[i] = Render(photos[first + i]); });
        for (const Result &result : results) {
            if (!result)
                failures << result.message;
        }
        progress.Advance(static_cast<int>(first + count));
    }
    return failures;
}
