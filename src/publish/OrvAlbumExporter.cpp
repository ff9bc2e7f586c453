#include "publish/OrvAlbumExporter.h"

#include "publish/ExportList.h"
#include "publish/PhotoRenderer.h"
#include "publish/PreviewPage.h"
#include "library/AlbumDocument.h"
#include "app/Language.h"
#include "app/ProgressSink.h"

#include <QDir>

QString ExportFolderPath(const QString &albumPath)
{
    return QDir::cleanPath(albumPath) + QStringLiteral("/album.data");
}

ExportSource OrvAlbumExporter::TakeSource(ProgressSink &progress) const
{
    ExportSource source;
    if (document)
        progress.Apply([&] { source = TakeExportSource(*document, arguments, selection); });
    return source;
}

ExportFolderReport OrvAlbumExporter::Generate(const ExportSource &source, ProgressSink &progress, bool render)
{
    ExportFolderReport report;
    report.folder = ExportFolderPath(source.albumPath);
    for (const QString &file : source.unsafe)
        report.problems << QStringLiteral("%1: the record names no file of the album and was left out").arg(file);
    QDir folder(report.folder);
    if (folder.exists() && !folder.removeRecursively()) {
        report.result = Result::Failure(QStringLiteral("%1 could not be deleted").arg(report.folder));
        return report;
    }
    const QStringList sizes = ChosenSizeFolders(arguments);
    for (const QString &size : QStringList{QString()} + sizes) {
        if (!QDir().mkpath(report.folder + u'/' + size)) {
            report.result = Result::Failure(QStringLiteral("%1 could not be made").arg(report.folder + u'/' + size));
            return report;
        }
    }

    if (render) {
        progress.Begin(GetLocalizedString(QStringLiteral("Generating"), QStringLiteral("General")),
                       static_cast<int>(source.photos.size()));
        const PhotoRenderer renderer(arguments, source.albumPath, report.folder);
        report.problems << renderer.RenderAll(source.photos, progress);
        progress.End();
        // The list and the page are written only for a whole set of images, so that a folder
        // that looks finished is finished.
        if (progress.Cancelled()) {
            folder.removeRecursively();
            report.cancelled = true;
            report.result = Result::Failure(QStringLiteral("the export was cancelled"));
            return report;
        }
    }

    const DataList list = MakeExportList(source, arguments);
    report.photos = list.ItemCount();
    QString error;
    if (!list.Save(report.folder + QStringLiteral("/album.plist"), &error)) {
        folder.removeRecursively();
        report.result = Result::Failure(error);
        return report;
    }
    report.result = WritePreviewPage(list, sizes, report.folder + QStringLiteral("/album.html"));
    return report;
}

ExportFolderReport OrvAlbumExporter::GenerateExportFolder(ProgressSink &progress)
{
    return Generate(TakeSource(progress), progress, true);
}

QString OrvAlbumExporter::LightboxMaker(ProgressSink &progress)
{
    const ExportFolderReport report = GenerateExportFolder(progress);
    return report.result ? report.folder + QStringLiteral("/album.html") : QString();
}
