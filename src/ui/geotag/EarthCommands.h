#pragma once

class AlbumWindow;

// The album's photos in a globe viewer: the document shown in the viewer, or written to a KML or
// KMZ file the user names, which is then shown selected in the file manager. The work runs on
// the album window's worker; the tracks go in with [GPS] TrackOnEarth.
enum class EarthOutput { Viewer, KmlFile, KmzFile };

struct EarthRequest {
    EarthOutput output = EarthOutput::Viewer;
    bool onlySelected = false; // the selected photos, else every photo of the album
    double zoneHours = 0;      // the zone the tracks' times are read in
};

// The request of the album window's own commands: every photo, the zone saved in [GPS].
EarthRequest AlbumEarthRequest(EarthOutput output);
void RunEarthCommand(AlbumWindow &album, const EarthRequest &request);
