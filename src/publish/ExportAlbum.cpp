#include "publish/OrvAlbumExporter.h"

#include "publish/FolderCopy.h"
#include "app/Language.h"
#include "app/ProgressSink.h"
#include "app/Prompter.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace {

QString ExportText(const char *key)
{
    return GetLocalizedString(QLatin1String(key), QStringLiteral("PublishAction"));
}

} // namespace

// The copy is always made from a fresh generation: a folder left by an older export may no
// longer match the album.
QString OrvAlbumExporter::ExportAlbum(Prompter &prompter, ProgressSink &progress,
                                      const std::function<void(const QString &)> &openFolder)
{
    const ExportSource source = TakeSource(progress);
    const ExportFolderReport generated = Generate(source, progress, true);
    if (!generated.result) {
        if (!generated.cancelled)
            prompter.Error(ExportText("AlbumExport"), generated.result.message);
        return QString();
    }

    const QString desktop = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
    QDir().mkpath(desktop);
    const QString base = source.identification.isEmpty() ? QFileInfo(source.albumPath).fileName() : source.identification;
    QString target = FreeDataFolderName(desktop, base, true);
    if (QFileInfo::exists(target)) {
        const bool replace = prompter.AskYesNo(ExportText("AlbumExport"),
                                               ExportText("MessageAlbumExistsOnDesktop").replace(QLatin1String("%1"), QFileInfo(target).fileName()));
        if (replace) {
            if (!QDir(target).removeRecursively()) {
                prompter.Error(ExportText("AlbumExport"), QStringLiteral("%1 could not be replaced").arg(target));
                return QString();
            }
        } else {
            target = FreeDataFolderName(desktop, base, false);
        }
    }

    progress.Begin(GetLocalizedString(QStringLiteral("Exporting"), QStringLiteral("General")), 0);
    const Result copied = CopyFolder(generated.folder, target, progress);
    progress.End();
    if (progress.Cancelled()) {
        QDir(target).removeRecursively();
        return QString();
    }
    if (!copied) {
        prompter.Error(ExportText("AlbumExport"), copied.message);
        return QString();
    }
    if (!QFileInfo::exists(target))
        return QString();
    prompter.Inform(ExportText("AlbumExport"),
                    ExportText("MessageAlbumExportDone").replace(QLatin1String("%1"), QFileInfo(target).fileName()));
    if (openFolder)
        openFolder(target);
    return target;
}
