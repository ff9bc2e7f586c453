// The camera import of the windows, for scripts: a card's photos into an album.
#include "cli/CliAlbumVerbs.h"
#include "cli/CliOutput.h"
#include "cli/CliProgress.h"

#include "library/CameraImport.h"
#include "library/PhotoRecord.h"

#include <QDir>

int AlbumCameraImport(const CliArguments &args, AlbumDocument &album)
{
    QStringList cards = args.positional.mid(1, 1);
    if (cards.isEmpty())
        cards = CameraVolumes();
    if (cards.isEmpty())
        return Fail(QStringLiteral("no camera, card or phone with a DCIM folder is mounted"));
    const QString card = QDir::current().absoluteFilePath(cards.constFirst());
    CliProgressSink progress;
    QList<CardPhoto> photos = ListCardPhotos(card, PhotoRecord::AllowNonJpeg(), progress);
    if (photos.isEmpty())
        return Fail(QStringLiteral("%1 holds no photo in a DCIM folder").arg(card));
    MarkPhotosInAlbum(photos, album);
    QStringList chosen;
    for (const CardPhoto &photo : photos) {
        if (args.Has("--list"))
            PrintOut(QStringLiteral("%1\t%2").arg(photo.path, photo.inAlbum ? QStringLiteral("in the album") : QString()));
        else if (!photo.inAlbum || args.Has("--all"))
            chosen << photo.path;
    }
    if (args.Has("--list") || chosen.isEmpty())
        return ExitDone;
    const ImportReport report = ImportCardPhotos(album, chosen, progress);
    for (const int index : report.imported)
        PrintOut(album.Record(PhotoRecord::File, index));
    const int saved = SaveAndFinish(album);
    if (progress.Cancelled())
        return Fail(QStringLiteral("camera import cancelled; the photos copied wait in the album's drop folder"));
    return ReportProblems(report) ? saved : ExitFailed;
}
