#pragma once

#include "app/Result.h"

#include <QList>
#include <QString>

class AlbumDocument;
class GpsStore;
class ProgressSink;
class Prompter;

// Putting photos, tracks and waypoints in front of a globe viewer: KML written to the user's
// "Earth Places" folder (or where the user asks), KMZ packed with the album's images, and the
// viewer started on the result.

QString EarthPlacesFolder();

// What goes into an album document: the photos (record indices, in view order; those without a
// position are passed over), and the tracks to put in when the user wants them.
struct AlbumOnEarth {
    QList<int> photos;
    bool onlySelected = false; // picks the message when no photo has a position
    bool withTracks = false;   // [GPS] TrackOnEarth
    QList<int> tracks;         // the ticked tracks of the GPS window
    double zoneHours = 0;
};

// The outcome: the file written ("" when nothing was) and the photos placed in it.
struct EarthFile {
    Result result;
    QString path;
    int photos = 0;
};

// With a progress link the album is read only inside its Apply, so that the three may run on a
// worker thread (the packing of a KMZ file takes a while).

// "Earth Places/doc.kml", with images from the album's display-size folder, then the viewer.
EarthFile ShowAlbumOnEarth(AlbumDocument &album, const AlbumOnEarth &what, const GpsStore &store, Prompter &prompter,
                           ProgressSink *progress = nullptr);
// The same document to target ("" is the album's Identification + ".kml" in Earth Places); the
// folder is made when missing. MessageGenerateKML tells the user.
EarthFile GenerateKml(AlbumDocument &album, const AlbumOnEarth &what, const GpsStore &store, const QString &target, Prompter &prompter,
                      ProgressSink *progress = nullptr);
// The document with images under "files", packed with the images as "album.data/album.kmz" in the
// album and copied to target, or to target numbered "(n)" when that name is taken.
EarthFile GenerateKmz(AlbumDocument &album, const AlbumOnEarth &what, const GpsStore &store, const QString &target, Prompter &prompter,
                      ProgressSink *progress = nullptr);

// "my_tracks.kml" of the given tracks, "my_waypoints.kml" of every waypoint, in Earth Places.
EarthFile WriteTracksForEarth(const GpsStore &store, const QList<int> &tracks, Prompter &prompter);
EarthFile WriteWaypointsForEarth(const GpsStore &store);

// Starts [GPS] EarthAppPath on the file, or the desktop's own handler when none is set. A viewer
// set but missing is told as MessageNoGoogleEarthFound; the file stays written.
bool StartEarthViewer(const QString &path, Prompter &prompter);
