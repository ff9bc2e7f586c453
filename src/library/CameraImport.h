#pragma once

#include "library/ImportReport.h"

#include <QList>
#include <QString>
#include <QStringList>

class AlbumDocument;
class ProgressSink;

// A photo on a camera, a card or a phone, as the camera import offers it.
struct CardPhoto {
    QString path;
    qint64 size = 0;
    QString captureDate;  // "yyyy-mm-dd hh:mm:ss" from its tags; "" when it has none
    bool inAlbum = false; // the album holds a photo of the same name, size and capture time
};

// The folders of the mounted volumes (AppEnvironment::MountedVolumes) that hold a "DCIM"
// folder, directly or one level down (a phone's "Internal storage"), in name order.
QStringList CameraVolumes();

// Every photo under the card's "DCIM" folder (or under the folder itself when it is one), in
// path order, with its size and capture time; hidden files and folders are skipped. Tags are read
// on every core. A cancelled listing returns what it has.
QList<CardPhoto> ListCardPhotos(const QString &card, bool allowNonJpeg, ProgressSink &progress);

// Marks the photos the album already holds: a record whose "File" names the photo (by
// PhotoRecord::MatchName), whose "Size" is the photo's and whose "CaptureDate" is its capture time.
void MarkPhotosInAlbum(QList<CardPhoto> &photos, const AlbumDocument &album);

// Copies the photos into the album's drop folder under free names, then imports the drop folder.
// A photo copied before a Cancel or a failure waits in the drop folder and comes in at the
// album's next opening, so nothing that left the card is lost; the card itself is never changed.
ImportReport ImportCardPhotos(AlbumDocument &album, const QStringList &photos, ProgressSink &progress);
