#include "gps/TrackStatistics.h"

#include "gps/GpsNumbers.h"
#include "app/Settings.h"
#include "gps/TimeText.h"
#include "gps/TrackPoints.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double EarthRadiusKilometres = 6370.0;
constexpr double Pi = 3.14159265358979; // the value the distances have always been worked out with
constexpr double KilometresPerMile = 1.609344;
constexpr double MetresPerFoot = 0.3048;

double Radians(double degrees)
{
    return degrees * Pi / 180;
}

double Number(const TrackPoints &points, int point, TrackPoints::Field field)
{
    return LenientNumber(QString::fromUtf8(points.Text(point, field)));
}

double GreatCircleKilometres(double lat1, double lon1, double lat2, double lon2)
{
    const double cosine = std::sin(Radians(lat1)) * std::sin(Radians(lat2))
        + std::cos(Radians(lat1)) * std::cos(Radians(lat2)) * std::cos(Radians(lon1) - Radians(lon2));
    // Rounding can take the cosine of two equal points just past 1.
    return EarthRadiusKilometres * std::acos(std::clamp(cosine, -1.0, 1.0));
}

QString Decimal(double value)
{
    return QString::number(value, 'f', 1);
}

} // namespace

TrackStatistics ComputeTrackStatistics(const Track &track, const TrackPoints &points)
{
    TrackStatistics statistics;
    double previousLat = 0;
    double previousLon = 0;
    for (int i = 0; i < points.Count(); ++i) {
        const double lat = Number(points, i, TrackPoints::Lat);
        const double lon = Number(points, i, TrackPoints::Lon);
        if (i > 0)
            statistics.kilometres += GreatCircleKilometres(previousLat, previousLon, lat, lon);
        previousLat = lat;
        previousLon = lon;
        if (points.Text(i, TrackPoints::Ele).isEmpty())
            continue;
        const double ele = Number(points, i, TrackPoints::Ele);
        statistics.lowest = statistics.elevatedPoints == 0 ? ele : std::min(statistics.lowest, ele);
        statistics.highest = statistics.elevatedPoints == 0 ? ele : std::max(statistics.highest, ele);
        ++statistics.elevatedPoints;
    }
    const std::optional<qint64> begin = TimeText::Seconds(track.beginTime);
    const std::optional<qint64> end = TimeText::Seconds(track.endTime);
    if (begin && end)
        statistics.seconds = std::abs(*end - *begin);
    return statistics;
}

StatisticsLabels FormatTrackStatistics(const TrackStatistics &statistics, bool metric)
{
    const double distance = metric ? statistics.kilometres : statistics.kilometres / KilometresPerMile;
    const double perMetre = metric ? 1.0 : 1.0 / MetresPerFoot;
    const QString distanceUnit = metric ? QStringLiteral("km") : QStringLiteral("mi");
    const QString heightUnit = metric ? QStringLiteral("m") : QStringLiteral("ft");
    const qint64 s = statistics.seconds;
    StatisticsLabels labels;
    labels.distance = Decimal(distance) + u' ' + distanceUnit;
    labels.time = QString::asprintf("%02lld:%02lld:%02lld", s / 3600, s / 60 % 60, s % 60);
    labels.averageSpeed = Decimal(s > 0 ? distance / (static_cast<double>(s) / 3600.0) : 0.0) + u' ' + distanceUnit + QStringLiteral("/hr");
    labels.elevation = statistics.elevatedPoints == 0
        ? QStringLiteral("0 ~ 0 ") + heightUnit
        : Decimal(statistics.lowest * perMetre) + QStringLiteral(" ~ ") + Decimal(statistics.highest * perMetre) + u' ' + heightUnit;
    return labels;
}

StatisticsLabels EmptyStatisticsLabels(bool metric)
{
    return FormatTrackStatistics({}, metric);
}

bool MetricUnits()
{
    return ReadSetting(QStringLiteral("System"), QStringLiteral("UnitSystem")).trimmed().compare(QLatin1String("E"), Qt::CaseInsensitive) != 0;
}
