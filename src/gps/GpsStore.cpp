#include "gps/GpsStore.h"

#include "app/Language.h"
#include "app/Paths.h"
#include "app/Prompter.h"
#include "gps/StoreFiles.h"
#include "gps/TimeText.h"
#include "gps/TrackFileWriter.h"
#include "gps/TrackPoints.h"

#include <QDir>
#include <QFile>
#include <QSet>

namespace {

const QString Gps = QStringLiteral("GPS");

bool Confirmed(Prompter *prompter, const char *question)
{
    return !prompter || prompter->AskYesNo(GetLocalizedString(QStringLiteral("GPSLogManager"), QStringLiteral("Form")),
                                           GetLocalizedString(QLatin1String(question), Gps));
}

// The list of the file; a missing file is an empty list. The reason a file that exists could not
// be read, "" when it was.
QString LoadStoreList(const QString &path, DataList &list, Prompter *prompter)
{
    list = DataList();
    if (!QFile::exists(path))
        return {};
    DataList loaded;
    const DataList::LoadResult result = StoreFiles::LoadWithBackup(path, [&loaded](const QString &from) { return loaded.Load(from); }, prompter);
    if (!result)
        return QStringLiteral("%1 cannot be read: %2").arg(path, result.message);
    list = std::move(loaded);
    return {};
}

Result SaveStoreList(const QString &path, const DataList &list, const QString &unreadable)
{
    if (!unreadable.isEmpty())
        return Result::Failure(unreadable + QStringLiteral(" It is left as it is."));
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

namespace {

QString TimesFileName(const Track &track)
{
    return TimeText::FileStamp(track.beginTime) + u'-' + TimeText::FileStamp(track.endTime) + QStringLiteral(".plist");
}

} // namespace

QString GpsStore::TrackFilePath(const Track &track)
{
    return Folder() + u'/' + (track.file.isEmpty() ? TimesFileName(track) : track.file);
}

QString GpsStore::NewTrackFileName(const Track &track) const
{
    // Tracks with equal times share their file on purpose: a second import of a track replaces its
    // points. A track without both times has no such name, so it gets a file of its own.
    if (TimeText::Seconds(track.beginTime) && TimeText::Seconds(track.endTime))
        return TimesFileName(track);
    QSet<QString> taken;
    for (int n = 0; n < GetTrackCount(); ++n)
        taken.insert(TrackFilePath(TrackAt(n)));
    const auto isFree = [&taken](const QString &name) {
        const QString path = Folder() + u'/' + name;
        return !taken.contains(path) && !QFile::exists(path) && !QFile::exists(StoreFiles::BackupPath(path));
    };
    for (int n = 1;; ++n) {
        const QString name = QStringLiteral("untimed(%1).plist").arg(n);
        if (isFree(name))
            return name;
    }
}

Result GpsStore::Load(Prompter *prompter)
{
    unreadableWaypoints = LoadStoreList(WaypointsPath(), waypoints, prompter);
    unreadableIndex = LoadStoreList(IndexPath(), index, prompter);
    modified = false;
    const QString unreadable = unreadableIndex.isEmpty() ? unreadableWaypoints : unreadableIndex;
    if (unreadable.isEmpty())
        return Result::Success();
    return Result::Failure(QStringLiteral("The GPS log database cannot be opened: ") + unreadable);
}

Result GpsStore::Save()
{
    const Result savedWaypoints = SaveStoreList(WaypointsPath(), waypoints, unreadableWaypoints);
    const Result savedIndex = SaveStoreList(IndexPath(), index, unreadableIndex);
    if (savedWaypoints && savedIndex)
        modified = false;
    return savedWaypoints ? savedIndex : savedWaypoints;
}

Track GpsStore::TrackAt(int track) const
{
    const int item = track + 1;
    return {index.GetItemProperty(GpsKey::Name, item), index.GetItemProperty(GpsKey::BeginTime, item),
            index.GetItemProperty(GpsKey::EndTime, item), index.GetItemProperty(GpsKey::Bounds, item),
            index.GetItemProperty(GpsKey::File, item)};
}

void GpsStore::AddTrack(const Track &track)
{
    const int item = index.ItemCount() + 1;
    index.AddItem(item);
    index.SetItemProperty(GpsKey::Name, track.name, item);
    index.SetItemProperty(GpsKey::BeginTime, track.beginTime, item);
    index.SetItemProperty(GpsKey::EndTime, track.endTime, item);
    index.SetItemProperty(GpsKey::Bounds, track.bounds, item);
    if (!track.file.isEmpty() && track.file != TimesFileName(track))
        index.SetItemProperty(GpsKey::File, track.file, item);
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
    // Stores of older versions let tracks with equal times share a file: it goes with the last.
    const QString file = TrackFilePath(TrackAt(track));
    index.RemoveItem(track + 1);
    bool shared = false;
    for (int n = 0; n < GetTrackCount() && !shared; ++n)
        shared = TrackFilePath(TrackAt(n)) == file;
    if (!shared)
        QFile::remove(file);
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
