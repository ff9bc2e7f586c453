#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <functional>

class AlbumDocument;
class GpsStore;
class ProgressSink;
class Prompter;

// KML documents for a globe viewer, made from the template files in the program's resources
// ("earth_kmlhead", "earth_kmlitem", ...), whose "$Name$" placeholders are filled in.

// The escaping of titles, descriptions and keywords: "<", ">" and the double quote become
// entities, in that order; the ampersand is left as it is, as it always has been.
QString EscapeForEarth(QString text);

// The balloon of a photo placemark.
QString PhotoBalloon(const AlbumDocument &album, int photo, const QString &imageFolder);

struct AlbumKml {
    QByteArray text; // UTF-8
    int photos = 0;  // placemarks written; 0 means nothing was made
};

// The album document: the photos (record indices, in view order) that have a position, then the
// given tracks whose period, in the zone's local time, overlaps the photos' capture times.
// imageFolder is where the balloons find the photos' images. With a progress link the album is
// read only inside its Apply, so the document may be built on a worker thread.
AlbumKml BuildAlbumKml(const AlbumDocument &album, const QList<int> &photos, const QString &imageFolder, const GpsStore *store,
                       const QList<int> &tracks, double zoneHours, Prompter *prompter, ProgressSink *progress = nullptr);

// Runs a read of the album through the progress link's Apply, on the album's own thread, or in
// place without one.
void ReadAlbumThrough(ProgressSink *progress, const std::function<void()> &read);

// The GPS log documents, titled "My Tracks" and "My Waypoints".
QByteArray BuildTracksKml(const GpsStore &store, const QList<int> &tracks, Prompter *prompter);
QByteArray BuildWaypointsKml(const GpsStore &store);
