#include "gps/EarthOutput.h"

#include "library/AlbumDocument.h"
#include "library/AlbumFormat.h"
#include "gps/GpsStore.h"
#include "gps/KmlDocument.h"
#include "gps/KmzWriter.h"
#include "app/Language.h"
#include "app/Paths.h"
#include "library/PhotoRecord.h"
#include "app/Prompter.h"
#include "app/Settings.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QSaveFile>

namespace {

const QString Gps = QStringLiteral("GPS");

QString Text(const char *key, const QString &section = Gps)
{
    return GetLocalizedString(QLatin1String(key), section);
}

QString AlbumDataFolder(const AlbumDocument &album)
{
    return album.Path() + QStringLiteral("/album.data");
}

// The display-size images of the album's export folder, or the photos themselves before any
// export has made them.
QString DisplayImageFolder(const AlbumDocument &album)
{
    const QString standard = AlbumDataFolder(album) + QStringLiteral("/size_2");
    return FolderExists(standard) ? standard : album.PhotoFilesFolder();
}

Result WriteFile(const QString &path, const QByteArray &bytes)
{
    CreateFolderPath(QFileInfo(path).absolutePath());
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit())
        return Result::Success();
    return Result::Failure(QStringLiteral("Cannot write %1: %2").arg(path, file.errorString()));
}

// The album document written to path; the user is told when no photo has a position.
EarthFile WriteAlbumKml(const AlbumDocument &album, const AlbumOnEarth &what, const GpsStore &store, const QString &imageFolder,
                        const QString &path, Prompter &prompter, ProgressSink *progress)
{
    const AlbumKml kml = BuildAlbumKml(album, what.photos, imageFolder, &store, what.withTracks ? what.tracks : QList<int>(),
                                       what.zoneHours, &prompter, progress);
    if (kml.photos == 0) {
        const QString message = Text(what.onlySelected ? "MessageNoLocationForEarth1" : "MessageNoLocationForEarth");
        prompter.Inform(Text("ShowOnEarth", QStringLiteral("Form")), message);
        return {Result::Failure(message), QString(), 0};
    }
    const Result written = WriteFile(path, kml.text);
    return {written, written ? path : QString(), kml.photos};
}

// The first of name, name(1), name(2), ... that is free.
QString FreeName(const QString &path)
{
    if (!QFileInfo::exists(path))
        return path;
    const QFileInfo info(path);
    const QString base = info.absolutePath() + u'/' + info.completeBaseName();
    for (int n = 1;; ++n) {
        QString candidate = QStringLiteral("%1(%2).%3").arg(base).arg(n).arg(info.suffix());
        if (!QFileInfo::exists(candidate))
            return candidate;
    }
}

// The located photos, read from the album (through the progress link when there is one); each
// packed from the display-size image an export has made, else from the photo itself.
QList<KmzImage> PlacedImages(const AlbumDocument &album, const QList<int> &photos, ProgressSink *progress)
{
    QList<KmzImage> images;
    ReadAlbumThrough(progress, [&] {
        for (const int photo : photos) {
            const QString name = album.Record(PhotoRecord::File, photo);
            if (!album.Record(PhotoRecord::Longitude, photo).isEmpty() && PhotoRecord::IsBareFileName(name))
                images.append({name, album.PhotoFilePath(photo)});
        }
    });
    const QString standard = AlbumDataFolder(album) + QStringLiteral("/size_2/");
    for (KmzImage &image : images) {
        if (QFileInfo::exists(standard + image.name))
            image.source = standard + image.name;
    }
    return images;
}

} // namespace

QString EarthPlacesFolder()
{
    return GetUserDataFolder() + QStringLiteral("/Earth Places");
}

EarthFile ShowAlbumOnEarth(AlbumDocument &album, const AlbumOnEarth &what, const GpsStore &store, Prompter &prompter,
                           ProgressSink *progress)
{
    EarthFile shown = WriteAlbumKml(album, what, store, DisplayImageFolder(album), EarthPlacesFolder() + QStringLiteral("/doc.kml"), prompter, progress);
    if (shown.result)
        StartEarthViewer(shown.path, prompter);
    return shown;
}

EarthFile GenerateKml(AlbumDocument &album, const AlbumOnEarth &what, const GpsStore &store, const QString &target, Prompter &prompter,
                      ProgressSink *progress)
{
    QString path = target;
    if (path.isEmpty())
        ReadAlbumThrough(progress, [&] {
            path = EarthPlacesFolder() + u'/' + album.List().GetDocumentProperty(QStringLiteral("Identification")) + QStringLiteral(".kml");
        });
    EarthFile generated = WriteAlbumKml(album, what, store, DisplayImageFolder(album), path, prompter, progress);
    if (generated.result) {
        QString message = Text("MessageGenerateKML");
        prompter.Inform(Text("GenerateKML"), message.replace(QStringLiteral("%1"), QString::number(generated.photos)).replace(QStringLiteral("%2"), path));
    }
    return generated;
}

EarthFile GenerateKmz(AlbumDocument &album, const AlbumOnEarth &what, const GpsStore &store, const QString &target, Prompter &prompter,
                      ProgressSink *progress)
{
    const QString document = EarthPlacesFolder() + QStringLiteral("/doc.kml");
    EarthFile kmz = WriteAlbumKml(album, what, store, QStringLiteral("files"), document, prompter, progress);
    if (!kmz.result)
        return kmz;
    QFile bytes(document);
    const QString packed = AlbumDataFolder(album) + QStringLiteral("/album.kmz");
    const QString albumCopy = AlbumDataFolder(album) + QStringLiteral("/doc.kml");
    CreateFolderPath(AlbumDataFolder(album));
    QFile::remove(albumCopy);
    QFile::copy(document, albumCopy);
    if (!bytes.open(QIODevice::ReadOnly))
        return {Result::Failure(QStringLiteral("Cannot read %1").arg(document)), QString(), 0};
    kmz.result = WriteKmz(packed, bytes.readAll(), PlacedImages(album, what.photos, progress));
    if (!kmz.result)
        return kmz;
    QString chosen = target;
    if (!chosen.endsWith(QLatin1String(".kmz"), Qt::CaseInsensitive))
        chosen += QStringLiteral(".kmz");
    kmz.path = FreeName(chosen);
    CreateFolderPath(QFileInfo(kmz.path).absolutePath());
    if (!QFile::copy(packed, kmz.path)) {
        kmz.result = Result::Failure(QStringLiteral("Cannot write %1").arg(kmz.path));
        return kmz;
    }
    prompter.Inform(Text("GenerateKMZ"), Text("MessageGenerateKMZ"));
    return kmz;
}

EarthFile WriteTracksForEarth(const GpsStore &store, const QList<int> &tracks, Prompter &prompter)
{
    const QString path = EarthPlacesFolder() + QStringLiteral("/my_tracks.kml");
    const Result written = WriteFile(path, BuildTracksKml(store, tracks, &prompter));
    return {written, path, 0};
}

EarthFile WriteWaypointsForEarth(const GpsStore &store)
{
    const QString path = EarthPlacesFolder() + QStringLiteral("/my_waypoints.kml");
    const Result written = WriteFile(path, BuildWaypointsKml(store));
    return {written, path, 0};
}

bool StartEarthViewer(const QString &path, Prompter &prompter)
{
    const QString viewer = ReadSetting(Gps, QStringLiteral("EarthAppPath"));
    if (viewer.isEmpty())
        return QProcess::startDetached(QStringLiteral("xdg-open"), {path});
    if (!QFileInfo(viewer).isExecutable()) {
        prompter.Error(Text("ShowOnEarth", QStringLiteral("Form")), Text("MessageNoGoogleEarthFound"));
        return false;
    }
    return QProcess::startDetached(viewer, {path});
}
