#pragma once

#include "gps/GpsRecords.h"

#include <QString>
#include <QStringView>

class ProgressSink;
class QIODevice;

// What a GPX file holds, as the reader meets it. Views last only for the call.
struct GpxTrackPoint {
    QStringView lat;  // the attribute texts unchanged
    QStringView lon;
    QStringView ele;  // rounded to one decimal; "0.0" when the point has none
    QStringView time; // the element text unchanged; empty when the point has none
};

class GpxHandler {
public:
    virtual ~GpxHandler() = default;
    virtual void TrackStarted() = 0;
    virtual void TrackPoint(const GpxTrackPoint &point) = 0;
    virtual void TrackEnded(const QString &name) = 0;
    virtual void WaypointRead(const Waypoint &waypoint) = 0;
};

struct GpxReadResult {
    bool ok = true;
    bool cancelled = false;
    QString error; // the parser's reason, with line and column
    int skipped = 0; // track points and waypoints passed over for an impossible position
};

// Streams a GPX file through the handler: every track ("trk") with all its segments as one list
// of points, and every waypoint ("wpt"); routes and everything else are passed over. A fault ends
// the reading where it is: what was handed over before it stays handed over, the track under way
// is never ended. A point or waypoint whose "lat" or "lon" is not a finite number within -90..90
// or -180..180 is passed over and counted, never handed over. Progress goes in kilobytes read. Entities are neither expanded nor fetched: a reference to one declared in the
// file is a fault, one declared elsewhere is left out.
GpxReadResult ReadGpx(QIODevice &device, GpxHandler &handler, ProgressSink *progress = nullptr);
