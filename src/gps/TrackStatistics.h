#pragma once

#include "gps/GpsRecords.h"

#include <QString>

class TrackPoints;

// The figures shown for a selected track.
struct TrackStatistics {
    double kilometres = 0;   // along the points, by the spherical law of cosines
    qint64 seconds = 0;      // from BEGINTIME to ENDTIME
    int elevatedPoints = 0;  // points with an elevation
    double lowest = 0;       // metres
    double highest = 0;
};

TrackStatistics ComputeTrackStatistics(const Track &track, const TrackPoints &points);

// The labels of the statistics in metric ("km", "m", "km/hr") or English units ("mi", "ft",
// "mi/hr"): distance and speed with one decimal, time as "hh:mm:ss", elevation as
// "lowest ~ highest".
struct StatisticsLabels {
    QString distance;
    QString time;
    QString averageSpeed;
    QString elevation;
};

StatisticsLabels FormatTrackStatistics(const TrackStatistics &statistics, bool metric);
// No statistics: no track selected.
StatisticsLabels EmptyStatisticsLabels(bool metric);

// [System] UnitSystem: "E" for English units, anything else metric.
bool MetricUnits();
