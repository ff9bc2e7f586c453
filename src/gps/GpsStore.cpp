#include "GpsStore.h"

#include "Language.h"
#include "Paths.h"
#include "Prompter.h"
#include "StoreFiles.h"
#include "TimeText.h"
#include "TrackFileWriter.h"
#include "TrackPoints.h"

#include <QDir>
#include <QFile>

namespace {

const QString Gps = QStringLiteral("GPS");

bool Confirmed(Prompter *prompter, const char *question)
{
    return !prompter || prompter->AskYesNo(GetLocalizedString(QStringLiteral("GPSLogManager"), QStringLiteral("Form")),
                                           GetLocalizedString(QLatin1String(question), Gps));
}

void LoadStoreList(const QString &path, DataList &list, Prompter *prompter)
{
    DataList loaded;
    if (StoreFiles::LoadWithBackup(path, [&] { return loaded.Load(path); }, prompter))
        list = std::move(loaded);
}

Result SaveStoreList(const QString &path, const DataList &list)
{
    QDir().mkpath(GpsStore::Folder());
    return StoreFiles::SaveWithBackup(path, [&list](const QString &target, QString *error) { return list.Save(target, error); });
}

} // namespace

QString GpsStore::Folder()
{
    return GetUserDataFolder() + QStringLiteral("/GPS Logs");
}

QString GpsStore::IndexPath()
{
    return Folder() + QStringLiteral("/tracks.plist");
}

QString GpsStore::WaypointsPath()
{
    return Folder() + QStringLiteral("/waypoints.plist");
}

QString GpsStore::TrackFilePath(const Track &track)
{
    return Folder() + u'/' + TimeText::FileStamp(track.beginTime) + u'-' + TimeText::FileStamp(track.endTime) + QStringLiteral(".plist");
}

void GpsStore::Load(Prompter *prompter)
{
    LoadStoreList(WaypointsPath(), waypoints, prompter);
    LoadStoreList(IndexPath(), index, prompter);
    modified = false;
}

Result GpsStore::Save()
{
    const Result savedWaypoints = SaveStoreList(WaypointsPath(), waypoints);
    const Result savedIndex = SaveStoreList(IndexPath(), index);
    if (savedWaypoints && savedIndex)
        modified = false;
    return savedWaypoints ? savedIndex : savedWaypoints;
}

Track GpsStore::TrackAt(int track) const
{
    const int item = track + 1;
    return {index.GetItemProperty(GpsKey::Name, item), index.GetItemProperty(GpsKey::BeginTime, item),
            index.GetItemProperty(GpsKey::EndTime, item), index.GetItemProperty(GpsKey::Bounds, item)};
}

void GpsStore::AddTrack(const Track &track)
{
    const int item = index.ItemCount() + 1;
    index.AddItem(item);
    index.SetItemProperty(GpsKey::Name, track.name, item);
    index.SetItemProperty(GpsKey::BeginTime, track.beginTime, item);
    index.SetItemProperty(GpsKey::EndTime, track.endTime, item);
    index.SetItemProperty(GpsKey::Bounds, track.bounds, item);
    modified = true;
}

Result GpsStore::ModifyTrackName(int track, const QString &name, Prompter *prompter)
{
    Track renamed = TrackAt(track);
    renamed.name = name;
    TrackPoints points;
    if (QFile::exists(TrackFilePath(renamed))) {
        if (const DataList::LoadResult loaded = LoadTrackPoints(renamed, points, prompter); !loaded)
            return Result::Failure(loaded.message);
        TrackFileWriter writer;
        if (Result opened = writer.Open(); !opened)
            return opened;
        for (int i = 0; i < points.Count(); ++i) {
            writer.Add(points.Text(i, TrackPoints::Time), points.Text(i, TrackPoints::Lat), points.Text(i, TrackPoints::Lon),
                       points.Text(i, TrackPoints::Ele));
        }
        if (Result written = writer.Finish(renamed); !written)
            return written;
    }
    index.SetItemProperty(GpsKey::Name, name, track + 1);
    modified = true;
    return Result::Success();
}

bool GpsStore::RemoveTrack(int track, Prompter *prompter)
{
    if (!Confirmed(prompter, "MessageDeleteTrack"))
        return false;
    QFile::remove(TrackFilePath(TrackAt(track)));
    index.RemoveItem(track + 1);
    modified = true;
    return true;
}

QList<int> GpsStore::TracksNamed(const QString &name) const
{
    QList<int> found;
    for (int track = 0; track < GetTrackCount(); ++track) {
        if (index.GetItemProperty(GpsKey::Name, track + 1) == name)
            found << track;
    }
    return found;
}

Waypoint GpsStore::WaypointAt(int waypoint) const
{
    const int item = waypoint + 1;
    return {waypoints.GetItemProperty(GpsKey::Name, item), waypoints.GetItemProperty(GpsKey::Lat, item),
            waypoints.GetItemProperty(GpsKey::Lon, item), waypoints.GetItemProperty(GpsKey::Ele, item),
            waypoints.GetItemProperty(GpsKey::Desc, item)};
}

void GpsStore::AddNewWaypoint(const Waypoint &waypoint)
{
    waypoints.AddItem(waypoints.ItemCount() + 1);
    ModifyWaypoint(waypoints.ItemCount() - 1, waypoint);
}

void GpsStore::ModifyWaypoint(int waypoint, const Waypoint &values)
{
    const int item = waypoint + 1;
    waypoints.SetItemProperty(GpsKey::Name, values.name, item);
    waypoints.SetItemProperty(GpsKey::Lat, values.lat, item);
    waypoints.SetItemProperty(GpsKey::Lon, values.lon, item);
    waypoints.SetItemProperty(GpsKey::Ele, values.ele, item);
    waypoints.SetItemProperty(GpsKey::Desc, values.desc, item);
    modified = true;
}

bool GpsStore::RemoveWaypoint(int waypoint, Prompter *prompter)
{
    if (!Confirmed(prompter, "MessageDeleteWaypoint"))
        return false;
    waypoints.RemoveItem(waypoint + 1);
    modified = true;
    return true;
}

QList<int> GpsStore::WaypointsNamed(const QString &name) const
{
    QList<int> found;
    for (int waypoint = 0; waypoint < WaypointCount(); ++waypoint) {
        if (waypoints.GetItemProperty(GpsKey::Name, waypoint + 1) == name)
            found << waypoint;
    }
    return found;
}
