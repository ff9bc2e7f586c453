#include "gps/PhotoMatching.h"

#include "library/AlbumDocument.h"
#include "app/AppEnvironment.h"
#include "app/Degrees.h"
#include "gps/GpsStore.h"
#include "app/Language.h"
#include "library/PhotoRecord.h"
#include "app/ProgressSink.h"
#include "app/Prompter.h"
#include "app/Settings.h"
#include "gps/TimeText.h"
#include "gps/TrackPoints.h"
#include "gps/TrackTimeIndex.h"

#include <memory>

namespace {

const QString Gps = QStringLiteral("GPS");

QString Text(const char *key, const QString &section = Gps)
{
    return GetLocalizedString(QLatin1String(key), section);
}

qint64 DayStart(const QDate &date)
{
    return TimeText::Seconds(date.toString(QStringLiteral("yyyy-MM-dd 00:00:00"))).value_or(0);
}

// A track of the run: its local period, and its points once a photo needs them.
struct Candidate {
    int track = 0;
    qint64 localBegin = 0;
    qint64 localEnd = 0;
    std::unique_ptr<TrackPoints> points;
    std::unique_ptr<TrackTimeIndex> index;
};

struct LocalPeriod {
    qint64 begin;
    qint64 end;
};

std::optional<LocalPeriod> TrackPeriod(const Track &track, qint64 offset)
{
    const std::optional<qint64> begin = TimeText::Seconds(track.beginTime);
    const std::optional<qint64> end = TimeText::Seconds(track.endTime);
    if (!begin || !end)
        return std::nullopt;
    return LocalPeriod{*begin + offset, *end + offset};
}

void SetPosition(AlbumDocument &album, int photo, const QString &lat, const QString &lon, const QString &ele)
{
    album.SetRecordValues(photo, RecordValues{{PhotoRecord::Longitude, lon}, {PhotoRecord::Latitude, lat}, {PhotoRecord::Elevation, ele}});
}

void Report(Prompter &prompter, const MatchReport &report)
{
    QString text = report.located == 0 ? Text("MessageNoMatchedPhotoReport") : Text("MessageMatchedPhotoReport");
    text.replace(QStringLiteral("%1"), QString::number(report.examined)).replace(QStringLiteral("%2"), QString::number(report.located));
    prompter.Inform(Text("MatchResult"), text);
}

void CountLocatedPhotos(int located)
{
    const QString key = QStringLiteral("LocatedPhotos");
    WriteSetting(Gps, key, QString::number(SettingInteger(ReadSetting(Gps, key)) + located));
}

} // namespace

MatchWindow DefaultMatchWindow(double zoneHours)
{
    return {QDate(1990, 1, 1), Environment().Today(), zoneHours};
}

bool CheckMatchWindow(const MatchWindow &window, Prompter &prompter)
{
    if (window.begin <= window.end)
        return true;
    prompter.Error(GetLocalizedString(QStringLiteral("GPSLogManager"), QStringLiteral("Form")), Text("MessageWrongDateGPS"));
    return false;
}

QList<int> ListedTracks(const GpsStore &store, const MatchWindow &window)
{
    const qint64 offset = ZoneOffsetSeconds(window.zoneHours);
    const qint64 from = DayStart(window.begin);
    const qint64 until = DayStart(window.end) + TimeText::SecondsPerDay;
    QList<int> listed;
    for (int track = 0; track < store.GetTrackCount(); ++track) {
        const std::optional<LocalPeriod> period = TrackPeriod(store.TrackAt(track), offset);
        if (period && period->begin < until && period->end > from)
            listed << track;
    }
    return listed;
}

MatchReport MatchPhotosWithTracks(AlbumDocument &album, MatchScope scope, const QList<int> &photos, const GpsStore &store,
                                  const MatchWindow &window, Prompter &prompter, ProgressSink *progress)
{
    MatchReport report;
    const QList<int> listed = ListedTracks(store, window);
    if (photos.isEmpty() || listed.isEmpty()) {
        const bool selected = scope == MatchScope::SelectedPhotos;
        prompter.Inform(Text(selected ? "MatchSelectedPhotosWithAllTracks" : "MatchAllPhotosWithAllTracks"),
                        Text(selected ? "MessageNoSelectedPhotosOrTrackToMatch" : "MessageNoPhotosOrTrackToMatch"));
        return report;
    }
    report.ran = true;
    NoProgress quiet;
    ProgressSink &link = progress ? *progress : quiet;
    if (progress)
        progress->Begin(Text("Matching", QStringLiteral("General")), static_cast<int>(photos.size()));

    // The photos' times, and the span of them widened by the greatest difference accepted.
    std::vector<std::optional<qint64>> times;
    std::optional<qint64> earliest;
    std::optional<qint64> latest;
    QStringList captured;
    link.Apply([&] {
        for (const int photo : photos)
            captured << album.Record(PhotoRecord::CaptureDate, photo);
    });
    for (const QString &taken : captured) {
        times.push_back(TimeText::Seconds(taken));
        if (const std::optional<qint64> t = times.back()) {
            earliest = earliest ? std::min(*earliest, *t) : *t;
            latest = latest ? std::max(*latest, *t) : *t;
        }
    }
    const qint64 offset = ZoneOffsetSeconds(window.zoneHours);
    std::vector<Candidate> candidates;
    for (const int track : listed) {
        const std::optional<LocalPeriod> period = TrackPeriod(store.TrackAt(track), offset);
        if (earliest && period->begin <= *latest + MatchSeconds && period->end > *earliest - MatchSeconds)
            candidates.push_back({track, period->begin, period->end, nullptr, nullptr});
    }

    const qint64 windowBegin = DayStart(window.begin);
    const qint64 windowEnd = DayStart(window.end) + TimeText::SecondsPerDay;
    for (qsizetype n = 0; n < photos.size(); ++n) {
        ++report.examined;
        if (progress) {
            progress->Advance(static_cast<int>(n));
            if (progress->Cancelled()) {
                report.cancelled = true;
                --report.examined;
                break;
            }
        }
        const std::optional<qint64> t = times[static_cast<std::size_t>(n)];
        if (!t || *t <= windowBegin || *t >= windowEnd)
            continue;
        MatchState state;
        for (std::size_t c = 0; c < candidates.size(); ++c) {
            Candidate &candidate = candidates[c];
            // The window's bounds test: one whole day added to the upper bound, as it always was.
            if (!(candidate.localBegin - MatchSeconds < *t && *t < candidate.localEnd + MatchSeconds + TimeText::SecondsPerDay))
                continue;
            if (!candidate.index) {
                candidate.points = std::make_unique<TrackPoints>();
                LoadTrackPoints(store.TrackAt(candidate.track), *candidate.points, &prompter);
                candidate.index = std::make_unique<TrackTimeIndex>(candidate.points->AllSeconds());
            }
            // Point times are compared as local times: the photo's time less the zone is the same test.
            candidate.index->Scan(*t - offset, static_cast<int>(c), state);
        }
        if (!state.found)
            continue;
        const TrackPoints &points = *candidates[static_cast<std::size_t>(state.track)].points;
        link.Apply([&] {
            SetPosition(album, photos[n], points.String(state.point, TrackPoints::Lat), points.String(state.point, TrackPoints::Lon),
                        points.String(state.point, TrackPoints::Ele));
        });
        ++report.located;
    }
    if (progress)
        progress->End();
    Report(prompter, report);
    CountLocatedPhotos(report.located);
    return report;
}

bool MatchSelectedPhotosWithSelectedWaypoint(AlbumDocument &album, const QList<int> &photos, const std::optional<Waypoint> &waypoint,
                                             Prompter &prompter)
{
    if (photos.isEmpty() || !waypoint) {
        prompter.Inform(Text("MatchSelectedPhotosWithSelectedWaypoint"), Text("MessageNoSelectedPhotosOrSelectedWaypointToMatch"));
        return false;
    }
    for (const int photo : photos)
        SetPosition(album, photo, waypoint->lat, waypoint->lon, waypoint->ele);
    return true;
}

Result LocatePhotos(AlbumDocument &album, const QList<int> &photos, const QString &latitude, const QString &longitude)
{
    const std::optional<double> lat = ReadDegrees(latitude, DegreesAxis::Latitude);
    const std::optional<double> lon = ReadDegrees(longitude, DegreesAxis::Longitude);
    if (!lat || !lon)
        return Result::Failure(lat ? DegreesProblem(longitude, DegreesAxis::Longitude) : DegreesProblem(latitude, DegreesAxis::Latitude));
    for (const int photo : photos)
        SetPosition(album, photo, QString::number(*lat, 'f', 9), QString::number(*lon, 'f', 9), album.Record(PhotoRecord::Elevation, photo));
    return Result::Success();
}
