#include "library/CameraImport.h"

#include "app/AppEnvironment.h"
#include "app/Language.h"
#include "app/ProgressSink.h"
#include "imaging/ImageTags.h"
#include "library/AlbumDocument.h"
#include "library/AlbumFormat.h"
#include "library/OrvAlbumImporter.h"
#include "library/PhotoRecord.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace {

const QString Dcim = QStringLiteral("DCIM");

// The card's DCIM folder: the folder itself, its "DCIM", or a storage folder's "DCIM".
QString DcimFolder(const QString &card)
{
    const QDir folder(card);
    if (folder.dirName().compare(Dcim, Qt::CaseInsensitive) == 0)
        return folder.absolutePath();
    if (folder.exists(Dcim))
        return folder.absoluteFilePath(Dcim);
    for (const QString &storage : folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
        if (QDir(folder.absoluteFilePath(storage)).exists(Dcim))
            return folder.absoluteFilePath(storage + u'/' + Dcim);
    }
    return {};
}

// Photos go to the tag reader a few hundred at a time, so a Cancel is seen between batches.
constexpr qsizetype TagBatch = 256;

} // namespace

QStringList CameraVolumes()
{
    QStringList cards;
    for (const QString &volume : Environment().MountedVolumes()) {
        if (!DcimFolder(volume).isEmpty())
            cards << volume;
    }
    cards.sort();
    return cards;
}

QList<CardPhoto> ListCardPhotos(const QString &card, bool allowNonJpeg, ProgressSink &progress)
{
    const QString dcim = DcimFolder(card);
    if (dcim.isEmpty())
        return {};
    QStringList paths;
    QDirIterator walk(dcim, QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QFileInfo file(walk.nextFileInfo());
        // Phones keep their own previews in hidden folders (".thumbnails"): not photos of the user.
        if (!file.absoluteFilePath().mid(dcim.size()).contains(QLatin1String("/."))
            && PhotoRecord::IsPhotoFile(file.fileName(), allowNonJpeg))
            paths << file.absoluteFilePath();
    }
    paths.sort();

    QList<CardPhoto> photos;
    progress.Begin(GetLocalizedString(QStringLiteral("Processing"), QStringLiteral("General")), static_cast<int>(paths.size()));
    for (qsizetype first = 0; first < paths.size() && !progress.Cancelled(); first += TagBatch) {
        const QStringList batch = paths.mid(first, TagBatch);
        const QList<ImageTags> tags = LoadExifTagsOfFiles(batch);
        for (qsizetype i = 0; i < batch.size(); ++i)
            photos.append(CardPhoto{batch[i], QFileInfo(batch[i]).size(), tags[i].dateTaken, false});
        progress.Advance(static_cast<int>(photos.size()));
    }
    progress.End();
    return photos;
}

void MarkPhotosInAlbum(QList<CardPhoto> &photos, const AlbumDocument &album)
{
    const QStringList files = album.RecordFiles();
    QStringList names;
    for (const CardPhoto &photo : photos)
        names << QFileInfo(photo.path).fileName();
    const QList<int> matches = PhotoRecord::MatchNames(names, files);
    for (qsizetype i = 0; i < photos.size(); ++i) {
        const int index = matches[i] + 1; // records count from 1
        photos[i].inAlbum = matches[i] >= 0
            && album.Record(PhotoRecord::Size, index) == QString::number(photos[i].size)
            && album.Record(PhotoRecord::CaptureDate, index) == photos[i].captureDate;
    }
}

ImportReport ImportCardPhotos(AlbumDocument &album, const QStringList &photos, ProgressSink &progress)
{
    ImportReport report;
    const QString drop = AlbumFormat::DropFolderPath(album.Path());
    if (!QDir().mkpath(drop)) {
        for (const QString &photo : photos)
            report.notImported << FileProblem{photo, QStringLiteral("the album's folder \"%1\" cannot be made").arg(drop)};
        return report;
    }
    progress.Begin(GetLocalizedString(QStringLiteral("Importing"), QStringLiteral("General")), static_cast<int>(photos.size()));
    int copied = 0;
    for (const QString &photo : photos) {
        if (progress.Cancelled())
            break;
        const QString name = PhotoRecord::FreeName(QFileInfo(photo).fileName(), [&](const QString &candidate) {
            return QFileInfo::exists(drop + u'/' + candidate);
        });
        // QFile::copy writes a temporary file beside the target and renames it, so the drop
        // folder never holds half a photo.
        QFile source(photo);
        if (!source.copy(drop + u'/' + name))
            report.notImported << FileProblem{photo, QStringLiteral("could not be copied from the card: %1").arg(source.errorString())};
        progress.Advance(++copied);
    }
    progress.End();
    if (progress.Cancelled())
        return report;
    OrvAlbumImporter importer;
    importer.SetDocument(&album);
    report.Add(importer.ImportFiles({drop}, progress));
    return report;
}
