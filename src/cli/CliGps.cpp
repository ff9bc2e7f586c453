// orvana-cli gps: the GPS log database (tracks, waypoints, their KML) and the group's dispatch.
#include "CliAlbumSupport.h"
#include "CliGpsSupport.h"
#include "CliGpsVerbs.h"
#include "CliOutput.h"

#include "Degrees.h"
#include "EarthOutput.h"
#include "GpsNumbers.h"
#include "GpxWriter.h"
#include "TimeText.h"
#include "TrackPoints.h"
#include "TrackSources.h"
#include "TrackStatistics.h"

#include <QDateTime>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

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
    const QString type = args.values.value(QStringLiteral("--type"), TrackFileType(args.positional.value(0)));
    if (args.positional.size() != 1 || !QStringList{"gpx", "nmea", "ozi"}.contains(type))
        return UsageError(QStringLiteral("gps import takes FILE and an optional --type gpx, nmea or ozi"), GpsUsage);
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
        return UsageError(problem, GpsUsage);
    if (!args.positional.isEmpty())
        return UsageError(QStringLiteral("gps tracks takes no arguments"), GpsUsage);
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
        return UsageError(QStringLiteral("gps waypoints takes no arguments"), GpsUsage);
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
        return UsageError(QStringLiteral("gps export takes tracks or waypoints and OUT.gpx"), GpsUsage);
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

int AddWaypoint(const QStringList &values)
{
    if (values.size() < 3 || values.size() > 5 || (values.size() > 3 && !NumberArgument(values[3])))
        return UsageError(QStringLiteral("gps waypoint add takes NAME, LAT and LON in degrees, and optionally ELE in metres and DESC"), GpsUsage);
    for (const QString &problem : {DegreesProblem(values[1], DegreesAxis::Latitude), DegreesProblem(values[2], DegreesAxis::Longitude)}) {
        if (!problem.isEmpty())
            return UsageError(problem, GpsUsage);
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
    int removed = 0;
    for (int n = (tracks ? opened.store.GetTrackCount() : opened.store.WaypointCount()) - 1; n >= 0; --n) {
        const QString entry = tracks ? opened.store.TrackAt(n).name : opened.store.WaypointAt(n).name;
        if (entry == name && (tracks ? opened.store.RemoveTrack(n, &opened.prompter) : opened.store.RemoveWaypoint(n, &opened.prompter)))
            ++removed;
    }
    if (removed == 0)
        return Fail(QStringLiteral("there is no %1 named \"%2\"").arg(tracks ? QStringLiteral("track") : QStringLiteral("waypoint"), name));
    return SaveStoreAndFinish(opened.store, ExitDone);
}

int WaypointVerb(const GpsArguments &args)
{
    const QString action = args.positional.value(0);
    if (action == QLatin1String("add"))
        return AddWaypoint(args.positional.mid(1));
    if (action == QLatin1String("remove") && args.positional.size() == 2)
        return RemoveNamed(args.positional[1], false);
    return UsageError(QStringLiteral("gps waypoint takes add NAME LAT LON [ELE [DESC]] or remove NAME"), GpsUsage);
}

int TrackVerb(const GpsArguments &args)
{
    if (args.positional.size() != 2 || args.positional[0] != QLatin1String("remove"))
        return UsageError(QStringLiteral("gps track takes remove NAME"), GpsUsage);
    return RemoveNamed(args.positional[1], true);
}

// The GPS log documents, opened in the viewer when asked.
int LogDocument(const GpsArguments &args, bool tracks)
{
    if (!args.positional.isEmpty())
        return UsageError(QStringLiteral("gps kml-tracks and kml-waypoints take no arguments"), GpsUsage);
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

struct GpsVerb {
    const char *name;
    int (*run)(const GpsArguments &);
};

constexpr GpsVerb Verbs[] = {
    {"import", Import},         {"tracks", Tracks}, {"waypoints", Waypoints},          {"export", Export},
    {"waypoint", WaypointVerb}, {"track", TrackVerb}, {"kml-tracks", TracksForEarth}, {"kml-waypoints", WaypointsForEarth},
};

const QStringList Switches = {QStringLiteral("--json"), QStringLiteral("--tracks"), QStringLiteral("--back"), QStringLiteral("--show")};
const QStringList ValueOptions = {QStringLiteral("--type"), QStringLiteral("--offset"), QStringLiteral("--days"),
                                  QStringLiteral("--hours"), QStringLiteral("--mins"), QStringLiteral("--secs")};

} // namespace

int RunGps(const QStringList &arguments)
{
    if (WantsHelp(arguments)) {
        PrintOut(QStringLiteral("usage: ") + GpsUsage);
        return ExitDone;
    }
    UseUserSettings();
    const QString verb = arguments.value(0);
    const auto parsed = [&arguments] { return ParseGpsArguments(arguments.mid(1), Switches, ValueOptions); };
    for (const GpsVerb &candidate : Verbs) {
        if (verb != QLatin1String(candidate.name))
            continue;
        const std::optional<GpsArguments> args = parsed();
        return args ? candidate.run(*args) : ExitUsage;
    }
    if (const GpsAlbumVerb *albumVerb = FindGpsAlbumVerb(verb)) {
        const std::optional<GpsArguments> args = parsed();
        return args ? RunGpsAlbumVerb(*albumVerb, *args) : ExitUsage;
    }
    return UsageError(verb.isEmpty() ? QStringLiteral("gps needs a verb") : QStringLiteral("unknown verb \"%1\"").arg(verb), GpsUsage);
}
