#pragma once

#include "gps/GpsRecords.h"
#include "app/Result.h"

#include <QDate>
#include <QList>
#include <optional>

class AlbumDocument;
class GpsStore;
class ProgressSink;
class Prompter;

// The period of the GPS window's two date pickers, and the time zone of its list.
struct MatchWindow {
    QDate begin;
    QDate end;
    double zoneHours = 0;
};

// What DoMatchPhotosWithTracks uses: from 1990-1-1 to today (of the program's environment).
MatchWindow DefaultMatchWindow(double zoneHours);
// A begin date after the end date is refused with MessageWrongDateGPS.
bool CheckMatchWindow(const MatchWindow &window, Prompter &prompter);

// The tracks the window lists: those whose period, in the zone's local time, overlaps the days
// from the begin date to the end date (the upper bound being the end of the end date, one whole
// day after it, as the window has always tested). Tracks without readable times are not listed.
QList<int> ListedTracks(const GpsStore &store, const MatchWindow &window);

// Which photos a match is for; it picks the message shown when there is nothing to match.
enum class MatchScope { SelectedPhotos, AllPhotos };

struct MatchReport {
    bool ran = false;   // false: nothing to match, the user was told so
    bool cancelled = false;
    int examined = 0;
    int located = 0;
};

// Matching photos with tracks by time. Each photo (record indices, in album order) whose
// CaptureDate lies inside the window gets the position of the track point nearest in time, within
// 300 seconds, by the rule TrackTimeIndex describes; there is no interpolation, and a photo with
// no point in reach keeps the position it had. The report goes to the prompter, and [GPS]
// LocatedPhotos counts every photo located, run after run. With a progress link the album is read
// and changed only inside its Apply, so the match may run on a worker thread.
MatchReport MatchPhotosWithTracks(AlbumDocument &album, MatchScope scope, const QList<int> &photos, const GpsStore &store,
                                  const MatchWindow &window, Prompter &prompter, ProgressSink *progress);

// Every photo gets the waypoint's latitude, longitude and elevation, whatever its time. Without
// photos or without a waypoint the user is told so and nothing changes.
bool MatchSelectedPhotosWithSelectedWaypoint(AlbumDocument &album, const QList<int> &photos, const std::optional<Waypoint> &waypoint,
                                             Prompter &prompter);

// Places photos by hand, as the map locator does: latitude and longitude written with nine
// decimals, the elevation left as it was. A position that is not a finite latitude within -90..90
// and longitude within -180..180 is refused with the reason, and nothing changes.
Result LocatePhotos(AlbumDocument &album, const QList<int> &photos, const QString &latitude, const QString &longitude);
