#pragma once

#include "publish/AlbumExportArguments.h"
#include "publish/ExportSource.h"
#include "app/Result.h"
#include "imaging/Picture.h"

#include <QString>

class ProgressSink;

// The size folders of an export folder.
namespace ExportFolderNames {
inline const QString Thumbnail = QStringLiteral("size_0");
inline const QString Preview = QStringLiteral("size_1");
inline const QString Standard = QStringLiteral("size_2");
inline const QString Full = QStringLiteral("size_full");
} // namespace ExportFolderNames

// The box of the preview size.
constexpr int PreviewBox = 256;

// The size folders the arguments ask for, in the order thumbnail, preview, standard, full.
QStringList ChosenSizeFolders(const AlbumExportArguments &arguments);

// Makes the chosen sizes of photos in an export folder, each under the photo's "File" name. The
// thumbnail is the album's own, copied; the other sizes come from one decode of the photo at the
// largest size any of them needs, shrunk while it loads. Only the standard size carries the
// watermark.
class PhotoRenderer {
public:
    PhotoRenderer(const AlbumExportArguments &arguments, const QString &albumPath, const QString &exportFolder);

    Result Render(const ExportPhoto &photo) const;

    // Renders the photos on every core, a few at a time so that memory stays bounded, advancing
    // the progress after each few and stopping between them when cancelled. Returns the
    // failures, one line per photo.
    QStringList RenderAll(const QList<ExportPhoto> &photos, ProgressSink &progress) const;

private:
    AlbumExportArguments arguments;
    QString folder;
    Picture watermark;
    WatermarkPlaces places;
};
