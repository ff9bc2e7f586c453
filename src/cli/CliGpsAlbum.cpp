// orvana-cli gps: the verbs that work on an album: matching, time shifts, KML and KMZ.
#include "cli/CliAlbumSupport.h"
#include "cli/CliGpsSupport.h"
#include "cli/CliGpsVerbs.h"
#include "cli/CliOutput.h"

#include "app/Degrees.h"
#include "gps/EarthOutput.h"
#include "gps/PhotoMatching.h"
#include "gps/TimeCorrection.h"

#include <QDir>

namespace {

// The photos named after the album (with their scope), or every photo when none is named.
struct Photos {
    QList<int> indices;
    bool named = false;
};

std::optional<Photos> PhotosOf(const AlbumDocument &album, const QStringList &names)
{
    if (!names.isEmpty()) {
        const std::optional<QList<int>> named = RecordsNamed(album, names);
        return named ? std::optional<Photos>(Photos{*named, true}) : std::nullopt;
    }
    Photos all;
    for (int index = 1; index <= album.RecordCount(); ++index)
        all.indices << index;
    return all;
}

// A verb's arguments are checked before its album is opened: bad usage is told as such.
using UsageCheck = QString (*)(const GpsArguments &);

int Match(const GpsArguments &args, AlbumDocument &album)
{
    const std::optional<Photos> photos = PhotosOf(album, args.positional.mid(1));
    if (!photos)
        return ExitFailed;
    OpenedStore opened;
    if (!opened.loaded)
        return Fail(opened.loaded.message);
    CliProgressSink progress;
    const MatchReport report = MatchPhotosWithTracks(album, photos->named ? MatchScope::SelectedPhotos : MatchScope::AllPhotos,
                                                     photos->indices, opened.store, DefaultMatchWindow(ZoneHours(args)), opened.prompter, &progress);
    const int finished = FinishWithMessages(opened.prompter, report.ran);
    return report.ran ? SaveAndFinish(album) : finished;
}

QString MatchWaypointProblem(const GpsArguments &args)
{
    return args.positional.size() < 3 ? QStringLiteral("gps match-waypoint takes ALBUM, WAYPOINT and at least one FILE") : QString();
}

int MatchWaypoint(const GpsArguments &args, AlbumDocument &album)
{
    const std::optional<Photos> photos = PhotosOf(album, args.positional.mid(2));
    if (!photos)
        return ExitFailed;
    OpenedStore opened;
    if (!opened.loaded)
        return Fail(opened.loaded.message);
    const QList<int> named = opened.store.WaypointsNamed(args.positional[1]);
    const std::optional<Waypoint> waypoint = named.isEmpty() ? std::nullopt : std::optional(opened.store.WaypointAt(named.front()));
    if (!MatchSelectedPhotosWithSelectedWaypoint(album, photos->indices, waypoint, opened.prompter))
        return FinishWithMessages(opened.prompter, false);
    return SaveAndFinish(album);
}

QString LocateProblem(const GpsArguments &args)
{
    if (args.positional.size() < 4)
        return QStringLiteral("gps locate takes ALBUM, LAT, LON and at least one FILE");
    const QString latitude = DegreesProblem(args.positional[1], DegreesAxis::Latitude);
    return latitude.isEmpty() ? DegreesProblem(args.positional[2], DegreesAxis::Longitude) : latitude;
}

int Locate(const GpsArguments &args, AlbumDocument &album)
{
    const std::optional<Photos> photos = PhotosOf(album, args.positional.mid(3));
    if (!photos)
        return ExitFailed;
    if (const Result located = LocatePhotos(album, photos->indices, args.positional[1], args.positional[2]); !located)
        return Fail(located.message);
    return SaveAndFinish(album);
}

QString ShiftProblem(const GpsArguments &args)
{
    const std::optional<double> hours = NumberArgument(args.positional.value(1));
    if (args.positional.size() < 3 || !hours || !IsTimeDifference(*hours))
        return QStringLiteral("gps shift takes ALBUM, HOURS (whole or half, -25 to 25) and at least one FILE");
    return {};
}

int Shift(const GpsArguments &args, AlbumDocument &album)
{
    const std::optional<Photos> photos = PhotosOf(album, args.positional.mid(2));
    if (!photos)
        return ExitFailed;
    ApplyTimeDifference(album, photos->indices, *NumberArgument(args.positional[1]));
    return SaveAndFinish(album);
}

constexpr const char *CorrectorOptions[] = {"--days", "--hours", "--mins", "--secs"};

QString CorrectProblem(const GpsArguments &args)
{
    for (const char *option : CorrectorOptions) {
        if (args.Has(option) && !NumberArgument(args.Value(option)))
            return QStringLiteral("%1 takes a number").arg(QLatin1String(option));
    }
    return args.positional.size() < 2 ? QStringLiteral("gps correct takes ALBUM and at least one FILE") : QString();
}

int Correct(const GpsArguments &args, AlbumDocument &album)
{
    const std::optional<Photos> photos = PhotosOf(album, args.positional.mid(1));
    if (!photos)
        return ExitFailed;
    double parts[std::size(CorrectorOptions)] = {};
    for (std::size_t k = 0; k < std::size(CorrectorOptions); ++k)
        parts[k] = NumberArgument(args.Value(CorrectorOptions[k])).value_or(0.0);
    ApplyTimeCorrection(album, photos->indices, CorrectorOffsetDays(parts[0], parts[1], parts[2], parts[3], args.Has("--back") ? -1 : 1));
    return SaveAndFinish(album);
}

// The album document's contents as the GPS locator dialog would choose them.
std::optional<AlbumOnEarth> EarthContents(const GpsArguments &args, const AlbumDocument &album, const GpsStore &store, const QStringList &names)
{
    const std::optional<Photos> photos = PhotosOf(album, names);
    if (!photos)
        return std::nullopt;
    const double zone = ZoneHours(args);
    return AlbumOnEarth{photos->indices, photos->named, args.Has("--tracks"), ListedTracks(store, DefaultMatchWindow(zone)), zone};
}


bool NamesKml(const QString &argument)
{
    return argument.endsWith(QLatin1String(".kml"), Qt::CaseInsensitive);
}

QString KmlProblem(const GpsArguments &args)
{
    if (args.Has("--show") && NamesKml(args.positional.value(1)))
        return QStringLiteral("gps kml --show writes the viewer's own file; leave out OUT.kml");
    return {};
}

int Kml(const GpsArguments &args, AlbumDocument &album)
{
    QStringList names = args.positional.mid(1);
    const QString out = !names.isEmpty() && NamesKml(names.front()) ? QDir::current().absoluteFilePath(names.takeFirst()) : QString();
    OpenedStore opened;
    if (!opened.loaded)
        return Fail(opened.loaded.message);
    const std::optional<AlbumOnEarth> what = EarthContents(args, album, opened.store, names);
    if (!what)
        return ExitFailed;
    return EarthFinish(args.Has("--show") ? ShowAlbumOnEarth(album, *what, opened.store, opened.prompter) : GenerateKml(album, *what, opened.store, out, opened.prompter), opened.prompter);
}

QString KmzProblem(const GpsArguments &args)
{
    return args.positional.value(1).endsWith(QLatin1String(".kmz"), Qt::CaseInsensitive) ? QString() : QStringLiteral("gps kmz takes ALBUM and OUT.kmz");
}

int Kmz(const GpsArguments &args, AlbumDocument &album)
{
    OpenedStore opened;
    if (!opened.loaded)
        return Fail(opened.loaded.message);
    const std::optional<AlbumOnEarth> what = EarthContents(args, album, opened.store, args.positional.mid(2));
    if (!what)
        return ExitFailed;
    return EarthFinish(GenerateKmz(album, *what, opened.store, QDir::current().absoluteFilePath(args.positional[1]), opened.prompter), opened.prompter);
}

QString NoProblem(const GpsArguments &)
{
    return {};
}

template <UsageCheck Check, int (*Verb)(const GpsArguments &, AlbumDocument &)>
int OnAlbum(const GpsArguments &args)
{
    if (args.positional.isEmpty())
        return args.UsageError(QStringLiteral("gps %1 needs ALBUM").arg(args.Verb()));
    for (const QString &problem : {OffsetProblem(args), Check(args)}) {
        if (!problem.isEmpty())
            return args.UsageError(problem);
    }
    const auto album = OpenAlbumForCli(args.positional[0]);
    return album ? Verb(args, *album) : ExitFailed;
}

const CliOption Tracks{"--tracks", nullptr, "the tracks that cover the photos too"};

} // namespace

std::vector<CliVerb> GpsAlbumVerbs()
{
    return {
        {"match", "ALBUM [FILE...]", "places photos by the tracks' points at their capture times; no FILE: every photo", {OffsetOption},
         OnAlbum<NoProblem, Match>},
        {"match-waypoint", "ALBUM WAYPOINT FILE...", "places photos at a waypoint", {}, OnAlbum<MatchWaypointProblem, MatchWaypoint>},
        {"locate", "ALBUM LAT LON FILE...", "places photos by hand at a position in degrees", {}, OnAlbum<LocateProblem, Locate>},
        {"shift", "ALBUM HOURS FILE...", "shifts capture times by whole or half hours, -25 to 25", {}, OnAlbum<ShiftProblem, Shift>},
        {"correct", "ALBUM FILE...", "corrects capture times by the sum of the parts given",
         {{"--days", "D", "days"}, {"--hours", "H", "hours"}, {"--mins", "M", "minutes"}, {"--secs", "S", "seconds"},
          {"--back", nullptr, "takes the time back instead"}},
         OnAlbum<CorrectProblem, Correct>},
        {"kml", "ALBUM [OUT.kml] [FILE...]", "the photos with a position as KML; no FILE: every photo",
         {Tracks, OffsetOption, {"--show", nullptr, "writes the viewer's own file and opens it in [GPS] EarthAppPath, or the desktop's KML viewer"}},
         OnAlbum<KmlProblem, Kml>},
        {"kmz", "ALBUM OUT.kmz [FILE...]", "the photos with a position, their thumbnails and photos as KMZ", {Tracks, OffsetOption}, OnAlbum<KmzProblem, Kmz>},
    };
}
