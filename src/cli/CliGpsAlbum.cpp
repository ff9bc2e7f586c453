// orvana-cli gps: the verbs that change an album's records (matching, time shifts) and the
// verbs that write KML and KMZ.
#include "CliAlbumSupport.h"
#include "CliGpsSupport.h"
#include "CliGpsVerbs.h"
#include "CliOutput.h"

#include "EarthOutput.h"
#include "PhotoMatching.h"
#include "TimeCorrection.h"

#include <QDir>
#include <cmath>

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

// Prints what the operation told the user; messages of a failure go to stderr.
int Finish(const GpsCliPrompter &prompter, bool done)
{
    for (const QString &message : prompter.messages)
        done ? PrintOut(message) : (void)Fail(message);
    return done ? ExitDone : ExitFailed;
}

int Match(const GpsArguments &args, AlbumDocument &album)
{
    const std::optional<double> zone = ZoneHours(args);
    const std::optional<Photos> photos = PhotosOf(album, args.positional.mid(1));
    if (!zone || !photos)
        return zone ? ExitFailed : ExitUsage;
    GpsCliPrompter prompter;
    GpsStore store;
    store.Load(&prompter);
    CliProgress progress;
    const MatchReport report = MatchPhotosWithTracks(album, photos->named ? MatchScope::SelectedPhotos : MatchScope::AllPhotos,
                                                     photos->indices, store, DefaultMatchWindow(*zone), prompter, &progress);
    const int finished = Finish(prompter, report.ran);
    return report.ran ? SaveAndFinish(album) : finished;
}

int MatchWaypoint(const GpsArguments &args, AlbumDocument &album)
{
    if (args.positional.size() < 3)
        return UsageError(QStringLiteral("gps match-waypoint takes ALBUM, WAYPOINT and at least one FILE"), GpsUsage);
    const std::optional<Photos> photos = PhotosOf(album, args.positional.mid(2));
    if (!photos)
        return ExitFailed;
    GpsCliPrompter prompter;
    GpsStore store;
    store.Load(&prompter);
    std::optional<Waypoint> waypoint;
    for (int n = 0; n < store.WaypointCount() && !waypoint; ++n) {
        if (store.WaypointAt(n).name == args.positional[1])
            waypoint = store.WaypointAt(n);
    }
    if (!MatchSelectedPhotosWithSelectedWaypoint(album, photos->indices, waypoint, prompter))
        return Finish(prompter, false);
    return SaveAndFinish(album);
}

int Shift(const GpsArguments &args, AlbumDocument &album)
{
    const std::optional<double> hours = NumberArgument(args.positional.value(1));
    if (args.positional.size() < 3 || !hours || std::abs(*hours) > 25 || std::fmod(*hours * 2, 1.0) != 0)
        return UsageError(QStringLiteral("gps shift takes ALBUM, HOURS (whole or half, -25 to 25) and at least one FILE"), GpsUsage);
    const std::optional<Photos> photos = PhotosOf(album, args.positional.mid(2));
    if (!photos)
        return ExitFailed;
    ApplyTimeDifference(album, photos->indices, *hours);
    return SaveAndFinish(album);
}

int Correct(const GpsArguments &args, AlbumDocument &album)
{
    double parts[4] = {};
    const char *options[] = {"--days", "--hours", "--mins", "--secs"};
    for (std::size_t k = 0; k < std::size(options); ++k) {
        const QString text = args.Value(options[k]);
        const std::optional<double> value = text.isEmpty() ? std::optional<double>(0.0) : NumberArgument(text);
        if (!value)
            return UsageError(QStringLiteral("%1 takes a number").arg(QLatin1String(options[k])), GpsUsage);
        parts[k] = *value;
    }
    if (args.positional.size() < 2)
        return UsageError(QStringLiteral("gps correct takes ALBUM and at least one FILE"), GpsUsage);
    const std::optional<Photos> photos = PhotosOf(album, args.positional.mid(1));
    if (!photos)
        return ExitFailed;
    ApplyTimeCorrection(album, photos->indices, CorrectorOffsetDays(parts[0], parts[1], parts[2], parts[3], args.Has("--back") ? -1 : 1));
    return SaveAndFinish(album);
}

// The album document's contents as the GPS locator dialog would choose them.
std::optional<AlbumOnEarth> EarthContents(const GpsArguments &args, const AlbumDocument &album, const GpsStore &store, const QStringList &names)
{
    const std::optional<double> zone = ZoneHours(args);
    const std::optional<Photos> photos = zone ? PhotosOf(album, names) : std::nullopt;
    if (!photos)
        return std::nullopt;
    return AlbumOnEarth{photos->indices, photos->named, args.Has("--tracks"), ListedTracks(store, DefaultMatchWindow(*zone)), *zone};
}

int Kml(const GpsArguments &args, AlbumDocument &album)
{
    QStringList names = args.positional.mid(1);
    const QString out = !names.isEmpty() && names.front().endsWith(QLatin1String(".kml"), Qt::CaseInsensitive) ? names.takeFirst() : QString();
    if (args.Has("--show") && !out.isEmpty())
        return UsageError(QStringLiteral("gps kml --show writes the viewer's own file; leave out OUT.kml"), GpsUsage);
    GpsCliPrompter prompter;
    GpsStore store;
    store.Load(&prompter);
    const std::optional<AlbumOnEarth> what = EarthContents(args, album, store, names);
    if (!what)
        return ExitFailed;
    const EarthFile written = args.Has("--show") ? ShowAlbumOnEarth(album, *what, store, prompter)
                                                 : GenerateKml(album, *what, store, out.isEmpty() ? out : QDir::current().absoluteFilePath(out), prompter);
    if (!written.result)
        return prompter.messages.isEmpty() ? Fail(written.result.message) : Finish(prompter, false);
    PrintOut(written.path);
    return ExitDone;
}

int Kmz(const GpsArguments &args, AlbumDocument &album)
{
    const QString out = args.positional.value(1);
    if (!out.endsWith(QLatin1String(".kmz"), Qt::CaseInsensitive))
        return UsageError(QStringLiteral("gps kmz takes ALBUM and OUT.kmz"), GpsUsage);
    GpsCliPrompter prompter;
    GpsStore store;
    store.Load(&prompter);
    const std::optional<AlbumOnEarth> what = EarthContents(args, album, store, args.positional.mid(2));
    if (!what)
        return ExitFailed;
    const EarthFile written = GenerateKmz(album, *what, store, QDir::current().absoluteFilePath(out), prompter);
    if (!written.result)
        return prompter.messages.isEmpty() ? Fail(written.result.message) : Finish(prompter, false);
    PrintOut(written.path);
    return ExitDone;
}

int WithAlbum(const GpsArguments &args, const char *verb, int (*run)(const GpsArguments &, AlbumDocument &))
{
    if (args.positional.isEmpty())
        return UsageError(QStringLiteral("gps %1 needs ALBUM").arg(QLatin1String(verb)), GpsUsage);
    const auto album = OpenAlbumForCli(args.positional[0]);
    return album ? run(args, *album) : ExitFailed;
}

// The GPS log documents, opened in the viewer when asked.
int LogDocument(const GpsArguments &args, bool tracks)
{
    if (!args.positional.isEmpty())
        return UsageError(QStringLiteral("gps kml-tracks and kml-waypoints take no arguments"), GpsUsage);
    GpsCliPrompter prompter;
    GpsStore store;
    store.Load(&prompter);
    QList<int> all;
    for (int track = 0; track < store.GetTrackCount(); ++track)
        all << track;
    const EarthFile written = tracks ? WriteTracksForEarth(store, all, prompter) : WriteWaypointsForEarth(store);
    if (!written.result)
        return Fail(written.result.message);
    if (args.Has("--show") && !StartEarthViewer(written.path, prompter))
        return ExitFailed;
    PrintOut(written.path);
    return ExitDone;
}

} // namespace

int RunGpsMatch(const GpsArguments &args)
{
    return WithAlbum(args, "match", Match);
}

int RunGpsMatchWaypoint(const GpsArguments &args)
{
    return WithAlbum(args, "match-waypoint", MatchWaypoint);
}

int RunGpsShift(const GpsArguments &args)
{
    return WithAlbum(args, "shift", Shift);
}

int RunGpsCorrect(const GpsArguments &args)
{
    return WithAlbum(args, "correct", Correct);
}

int RunGpsKml(const GpsArguments &args)
{
    return WithAlbum(args, "kml", Kml);
}

int RunGpsKmz(const GpsArguments &args)
{
    return WithAlbum(args, "kmz", Kmz);
}

int RunGpsKmlTracks(const GpsArguments &args)
{
    return LogDocument(args, true);
}

int RunGpsKmlWaypoints(const GpsArguments &args)
{
    return LogDocument(args, false);
}
