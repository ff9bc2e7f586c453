#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

class AlbumDocument;
class GpsStore;
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
// imageFolder is where the balloons find the photos' images.
AlbumKml BuildAlbumKml(const AlbumDocument &album, const QList<int> &photos, const QString &imageFolder, const GpsStore *store,
                       const QList<int> &tracks, double zoneHours, Prompter *prompter);

// The GPS log documents, titled "My Tracks" and "My Waypoints".
QByteArray BuildTracksKml(const GpsStore &store, const QList<int> &tracks, Prompter *prompter);
QByteArray BuildWaypointsKml(const GpsStore &store);
