// orvana-cli gps: the GPS log database (tracks, waypoints, their KML) and the group's dispatch.
#include "cli/CliAlbumSupport.h"
#include "cli/CliGpsSupport.h"
#include "cli/CliGpsVerbs.h"
#include "cli/CliGroups.h"
#include "cli/CliOutput.h"

#include "app/Degrees.h"
#include "gps/EarthOutput.h"
#include "gps/GpsNumbers.h"
#include "gps/GpxWriter.h"
#include "gps/TimeText.h"
#include "gps/TrackPoints.h"
#include "gps/TrackSources.h"
#include "gps/TrackStatistics.h"

#include <QDateTime>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>

namespace {

QString Absolute(const QString &path)
{
    return QDir::current().absoluteFilePath(path);
}

void PrintJson(const QJsonArray &array)
{
    PrintOut(QString::fromUtf8(QJsonDocument(array).toJson(QJsonDocument::Indented)).trimmed());
}

int Import(const GpsArguments &args)
{
    const QString type = args.Has("--type") ? args.Value("--type") : TrackFileType(args.positional.value(0));
    if (args.positional.size() != 1 || !QStringList{"gpx", "nmea", "ozi"}.contains(type))
        return args.UsageError(QStringLiteral("gps import takes FILE and an optional --type gpx, nmea or ozi"));
    OpenedStore opened;
    if (!opened.loaded)
        return Fail(opened.loaded.message);
    CliProgressSink progress;
    const SourceImport imported = ImportTrackFile(opened.store, Absolute(args.positional[0]), type, &progress);
    const GpxImportReport &report = imported.report;
    QString counts = QStringLiteral("%1 track(s), %2 point(s), %3 waypoint(s)").arg(report.tracks).arg(report.points).arg(report.waypoints);
    if (report.skipped > 0)
        counts += QStringLiteral(", %1 with an impossible position skipped").arg(report.skipped);
    if (!imported.ok) {
        const QString detail = report.error.isEmpty() ? QString() : QStringLiteral(" (") + report.error + u')';
        return SaveStoreAndFinish(opened.store, Fail(GpsText(imported.messageKey) + detail + QStringLiteral("; kept: ") + counts));
    }
    PrintOut(GpsText(imported.messageKey));
    PrintOut(counts);
    return SaveStoreAndFinish(opened.store, ExitDone);
}

QJsonObject TrackJson(const Track &track, double zoneHours)
{
    TrackPoints points;
    LoadTrackPoints(track, points, nullptr);
    const StatisticsLabels labels = FormatTrackStatistics(ComputeTrackStatistics(track, points), MetricUnits());
    return {
        {QStringLiteral("name"), track.name},
        {QStringLiteral("begin"), GetDateWithSelectedTimeZone(track.beginTime, zoneHours)},
        {QStringLiteral("end"), GetDateWithSelectedTimeZone(track.endTime, zoneHours)},
        {QStringLiteral("beginUtc"), track.beginTime},
        {QStringLiteral("endUtc"), track.endTime},
        {QStringLiteral("bounds"), track.bounds},
        {QStringLiteral("points"), points.Count()},
        {QStringLiteral("distance"), labels.distance},
        {QStringLiteral("time"), labels.time},
        {QStringLiteral("averageSpeed"), labels.averageSpeed},
        {QStringLiteral("elevation"), labels.elevation},
    };
}

int Tracks(const GpsArguments &args)
{
    if (const QString problem = OffsetProblem(args); !problem.isEmpty())
        return args.UsageError(problem);
    if (!args.positional.isEmpty())
        return args.UsageError(QStringLiteral("gps tracks takes no arguments"));
    const double zone = ZoneHours(args);
    OpenedStore opened;
    if (!opened.loaded)
        return Fail(opened.loaded.message);
    QJsonArray tracks;
    for (int track = 0; track < opened.store.GetTrackCount(); ++track) {
        const QJsonObject row = TrackJson(opened.store.TrackAt(track), zone);
        if (!args.Has("--json")) {
            PrintOut(QStringList{row[QStringLiteral("name")].toString(), row[QStringLiteral("begin")].toString(), row[QStringLiteral("end")].toString(),
                                 QString::number(row[QStringLiteral("points")].toInt()), row[QStringLiteral("distance")].toString()}
                         .join(u'\t'));
        }
        tracks.append(row);
    }
    if (args.Has("--json"))
        PrintJson(tracks);
    return ExitDone;
}

int Waypoints(const GpsArguments &args)
{
    if (!args.positional.isEmpty())
        return args.UsageError(QStringLiteral("gps waypoints takes no arguments"));
    OpenedStore opened;
    if (!opened.loaded)
        return Fail(opened.loaded.message);
    QJsonArray waypoints;
    for (int n = 0; n < opened.store.WaypointCount(); ++n) {
        const Waypoint waypoint = opened.store.WaypointAt(n);
        if (!args.Has("--json"))
            PrintOut(QStringList{waypoint.name, waypoint.lat, waypoint.lon, waypoint.ele, waypoint.desc}.join(u'\t'));
        waypoints.append(QJsonObject{{QStringLiteral("name"), waypoint.name}, {QStringLiteral("lat"), waypoint.lat},
                                     {QStringLiteral("lon"), waypoint.lon}, {QStringLiteral("ele"), waypoint.ele},
                                     {QStringLiteral("desc"), waypoint.desc}});
    }
    if (args.Has("--json"))
        PrintJson(waypoints);
    return ExitDone;
}

int Export(const GpsArguments &args)
{
    const QString what = args.positional.value(0);
    if (args.positional.size() != 2 || (what != QLatin1String("tracks") && what != QLatin1String("waypoints")))
        return args.UsageError(QStringLiteral("gps export takes tracks or waypoints and OUT.gpx"));
    OpenedStore opened;
    if (!opened.loaded)
        return Fail(opened.loaded.message);
    const QString out = Absolute(args.positional[1]);
    Result written;
    if (what == QLatin1String("tracks")) {
        QList<Track> tracks;
        for (int track = 0; track < opened.store.GetTrackCount(); ++track)
            tracks << opened.store.TrackAt(track);
        written = ExportTracksToGpx(tracks, out, QDateTime::currentDateTimeUtc(), &opened.prompter);
    } else {
        QList<Waypoint> waypoints;
        for (int n = 0; n < opened.store.WaypointCount(); ++n)
            waypoints << opened.store.WaypointAt(n);
        written = ExportWaypointsToGpx(waypoints, out);
    }
    if (!written)
        return Fail(GpsText(what == QLatin1String("tracks") ? QStringLiteral("MessageFailToExportTrackToGPX") : QStringLiteral("MessageFailToExportWaypointToGPX"))
                    + QStringLiteral(" (") + written.message + u')');
    PrintOut(out);
    return ExitDone;
}

int AddWaypoint(const GpsArguments &args)
{
    const QStringList &values = args.positional;
    if (values.size() < 3 || values.size() > 5 || (values.size() > 3 && !NumberArgument(values[3])))
        return args.UsageError(QStringLiteral("gps waypoint add takes NAME, LAT and LON in degrees, and optionally ELE in metres and DESC"));
    for (const QString &problem : {DegreesProblem(values[1], DegreesAxis::Latitude), DegreesProblem(values[2], DegreesAxis::Longitude)}) {
        if (!problem.isEmpty())
            return args.UsageError(problem);
    }
    OpenedStore opened;
    if (!opened.loaded)
        return Fail(opened.loaded.message);
    opened.store.AddNewWaypoint({values[0], values[1].trimmed(), values[2].trimmed(), RoundedElevation(values.value(3)), values.value(4)});
    return SaveStoreAndFinish(opened.store, ExitDone);
}

// Removes every entry of the list named name, last first; fails when there is none.
int RemoveNamed(const QString &name, bool tracks)
{
    OpenedStore opened;
    if (!opened.loaded)
        return Fail(opened.loaded.message);
    QList<int> named = tracks ? opened.store.TracksNamed(name) : opened.store.WaypointsNamed(name);
    int removed = 0;
    std::reverse(named.begin(), named.end());
    for (const int n : named) {
        if (tracks ? opened.store.RemoveTrack(n, &opened.prompter) : opened.store.RemoveWaypoint(n, &opened.prompter))
            ++removed;
    }
    if (removed == 0)
        return Fail(QStringLiteral("there is no %1 named \"%2\"").arg(tracks ? QStringLiteral("track") : QStringLiteral("waypoint"), name));
    return SaveStoreAndFinish(opened.store, ExitDone);
}

int RemoveWaypoint(const GpsArguments &args)
{
    if (args.positional.size() != 1)
        return args.UsageError(QStringLiteral("gps waypoint remove takes NAME"));
    return RemoveNamed(args.positional[0], false);
}

int RemoveTrack(const GpsArguments &args)
{
    if (args.positional.size() != 1)
        return args.UsageError(QStringLiteral("gps track remove takes NAME"));
    return RemoveNamed(args.positional[0], true);
}

// Renames every track of that name; each point file is rewritten with the new name.
int RenameTrack(const GpsArguments &args)
{
    if (args.positional.size() != 2 || args.positional[1].isEmpty())
        return args.UsageError(QStringLiteral("gps track rename takes NAME and a non-empty NEWNAME"));
    OpenedStore opened;
    if (!opened.loaded)
        return Fail(opened.loaded.message);
    const QList<int> named = opened.store.TracksNamed(args.positional[0]);
    if (named.isEmpty())
        return Fail(QStringLiteral("there is no track named \"%1\"").arg(args.positional[0]));
    for (const int track : named) {
        if (const Result renamed = opened.store.ModifyTrackName(track, args.positional[1], &opened.prompter); !renamed)
            return SaveStoreAndFinish(opened.store, Fail(renamed.message));
    }
    return SaveStoreAndFinish(opened.store, ExitDone);
}

// Tracks or waypoints from a receiver through GPSBabel; the port as the receiver dialog lists it
// ("USB", "COM1"...) or a device path.
int Download(const GpsArguments &args)
{
    const QStringList &values = args.positional;
    const QList<ReceiverMake> makes = ReceiverMakes();
    const bool known = values.size() == 3 && (values[0] == u"tracks" || values[0] == u"waypoints")
        && std::any_of(makes.begin(), makes.end(), [&](const ReceiverMake &make) { return make.format == values[1]; });
    if (!known)
        return args.UsageError(QStringLiteral("gps download takes tracks or waypoints, garmin or magellan, and PORT"));
    OpenedStore opened;
    if (!opened.loaded)
        return Fail(opened.loaded.message);
    CliProgressSink progress;
    const SourceImport imported =
        DownloadFromReceiver(opened.store, values[1], values[2], values[0] == u"tracks" ? LogType::Tracks : LogType::Waypoints, &progress);
    if (!imported.ok)
        return SaveStoreAndFinish(opened.store, Fail(GpsText(imported.messageKey)));
    PrintOut(GpsText(imported.messageKey));
    return SaveStoreAndFinish(opened.store, ExitDone);
}

// The GPS log documents, opened in the viewer when asked.
int LogDocument(const GpsArguments &args, bool tracks)
{
    if (!args.positional.isEmpty())
        return args.UsageError(QStringLiteral("gps kml-tracks and kml-waypoints take no arguments"));
    OpenedStore opened;
    if (!opened.loaded)
        return Fail(opened.loaded.message);
    QList<int> all;
    for (int track = 0; track < opened.store.GetTrackCount(); ++track)
        all << track;
    const EarthFile written = tracks ? WriteTracksForEarth(opened.store, all, opened.prompter) : WriteWaypointsForEarth(opened.store);
    if (written.result && args.Has("--show") && !StartEarthViewer(written.path, opened.prompter))
        return ExitFailed;
    return EarthFinish(written, opened.prompter);
}

int TracksForEarth(const GpsArguments &args)
{
    return LogDocument(args, true);
}

int WaypointsForEarth(const GpsArguments &args)
{
    return LogDocument(args, false);
}

const CliOption Show{"--show", nullptr, "opens the written file in [GPS] EarthAppPath, or in the desktop's KML viewer"};

std::vector<CliVerb> Verbs()
{
    std::vector<CliVerb> verbs{
        {"import", "FILE", "reads a track file into the GPS log", {{"--type", "gpx|nmea|ozi", "the file's format when its extension does not tell"}}, Import},
        {"tracks", "", "the tracks of the GPS log: name, begin, end, points, distance", {JsonOption, OffsetOption}, Tracks},
        {"waypoints", "", "the waypoints: name, latitude, longitude, elevation, description", {JsonOption}, Waypoints},
        {"export", "tracks|waypoints OUT.gpx", "the GPS log's tracks or waypoints as GPX", {}, Export},
        {"waypoint add", "NAME LAT LON [ELE [DESC]]", "a waypoint; LAT and LON in degrees, ELE in metres", {}, AddWaypoint},
        {"waypoint remove", "NAME", "every waypoint of that name", {}, RemoveWaypoint},
        {"track remove", "NAME", "every track of that name, with its points", {}, RemoveTrack},
        {"track rename", "NAME NEWNAME", "renames every track of that name", {}, RenameTrack},
        {"download", "tracks|waypoints garmin|magellan PORT", "reads a receiver through GPSBabel; PORT is USB, COM1 to COM12 or a device",
         {}, Download},
        {"kml-tracks", "", "the GPS log's tracks as KML", {Show}, TracksForEarth},
        {"kml-waypoints", "", "the GPS log's waypoints as KML", {Show}, WaypointsForEarth},
        GpsGeocodeVerb(),
    };
    for (CliVerb &verb : GpsAlbumVerbs())
        verbs.push_back(std::move(verb));
    return verbs;
}

} // namespace

const CliGroup &GpsCommands()
{
    static const CliGroup group{
        "gps",
        "GPS tracks and waypoints, geotagging, time shifts, KML",
        Verbs(),
        "Without --offset, times are converted with the zone saved in [GPS], else the computer's own.",
        UseUserSettings,
    };
    return group;
}
