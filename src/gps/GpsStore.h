#pragma once

#include "datalist/DataList.h"
#include "gps/GpsRecords.h"
#include "app/Result.h"

#include <QList>
#include <QString>

class Prompter;

// The user's GPS log database under the user-data folder, "GPS Logs": the track index
// "tracks.plist" (the tracks without their points, in list order), one point file per track
// named after its begin and end times, and "waypoints.plist". Values the program does not know
// stay in the files as they were. Indices are from 0, in list order.
class GpsStore {
public:
    static QString Folder();
    static QString IndexPath();
    static QString WaypointsPath();
    // The track's own point file: "yyyymmdd_HHmmss-yyyymmdd_HHmmss.plist" from BEGINTIME and
    // ENDTIME, or the name the index keeps for it.
    static QString TrackFilePath(const Track &track);
    // The point file name for a new track: the one its times give when it has both, else the first
    // free "untimed(n).plist", so that tracks without times never share points.
    QString NewTrackFileName(const Track &track) const;

    // Reads waypoints.plist, then tracks.plist; a damaged file is replaced by its backup after
    // the user is told. Missing files are an empty store. A file that exists but cannot be read,
    // even from its backup, fails the load, naming the file and the reason; it is never written
    // over by this store.
    Result Load(Prompter *prompter);
    // Writes both lists, each after keeping its last version as a backup.
    Result Save();
    bool IsModified() const { return modified; }

    int GetTrackCount() const { return index.ItemCount(); }
    Track TrackAt(int track) const;
    // Adds a track whose point file has been written under TrackFilePath.
    void AddTrack(const Track &track);
    // Only the name of a track can be changed; its point file is rewritten with it.
    Result ModifyTrackName(int track, const QString &name, Prompter *prompter);
    // Removes the track from the list and deletes its point file, after asking MessageDeleteTrack
    // when a prompter is given; false when the user declined.
    bool RemoveTrack(int track, Prompter *prompter);
    // The tracks of that name, in list order: names need not be unique.
    QList<int> TracksNamed(const QString &name) const;

    int WaypointCount() const { return waypoints.ItemCount(); }
    Waypoint WaypointAt(int waypoint) const;
    void AddNewWaypoint(const Waypoint &waypoint);
    void ModifyWaypoint(int waypoint, const Waypoint &values);
    // After asking MessageDeleteWaypoint when a prompter is given; false when the user declined.
    bool RemoveWaypoint(int waypoint, Prompter *prompter);
    // The waypoints of that name, in list order.
    QList<int> WaypointsNamed(const QString &name) const;

private:
    DataList index;
    DataList waypoints;
    QString unreadableIndex;     // the reason tracks.plist could not be read, "" when it could
    QString unreadableWaypoints;
    bool modified = false;
};
