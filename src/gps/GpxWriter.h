#pragma once

#include "gps/GpsRecords.h"
#include "app/Result.h"

#include <QDateTime>
#include <QList>

class Prompter;

// GPX files in the program's own form: UTF-8, lines ended by CR LF, a GPX 1.0 header whose
// attribute is written `Version ="1.0"` as it always has been. Names and descriptions are
// escaped for XML; coordinates, elevations and times are written as they are stored.

// Every track with all its points; a "<time>" line with now (UTC) comes before each track.
Result ExportTracksToGpx(const QList<Track> &tracks, const QString &path, const QDateTime &now, Prompter *prompter);
// The waypoints after a "<bounds>" line over them.
Result ExportWaypointsToGpx(const QList<Waypoint> &waypoints, const QString &path);
