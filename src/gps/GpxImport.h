#pragma once

#include <QString>

class GpsStore;
class ProgressSink;

struct GpxImportReport {
    bool ok = true;
    bool cancelled = false;
    QString error;  // why the file was not read to its end
    int tracks = 0;
    int points = 0;
    int waypoints = 0;
    int skipped = 0; // points and waypoints with an impossible position, not stored
};

// ImportGPXFile: reads a GPX file into the store. A track's points go to its point file as they
// are read, so a file of any size is read in bounded memory; the track joins the list when its
// end is read. Tracks with no points are left out. Whatever was completed before a fault (or a
// cancel) stays in the store; the track under way is dropped.
GpxImportReport ImportGPXFile(GpsStore &store, const QString &path, ProgressSink *progress = nullptr);
