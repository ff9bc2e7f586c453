#pragma once

#include <QString>

// The records of the GPS store. Every coordinate, time and elevation is kept as the text it was
// read as: a LAT written back to GPX is the very text that came in.
namespace GpsKey {

inline const QString Name = QStringLiteral("NAME");
inline const QString BeginTime = QStringLiteral("BEGINTIME");
inline const QString EndTime = QStringLiteral("ENDTIME");
inline const QString Bounds = QStringLiteral("BOUNDS");
inline const QString Time = QStringLiteral("TIME");
inline const QString Lat = QStringLiteral("LAT");
inline const QString Lon = QStringLiteral("LON");
inline const QString Ele = QStringLiteral("ELE");
inline const QString Desc = QStringLiteral("DESC");
// The name of a track's point file, kept in the index only when it is not the one its times give.
inline const QString File = QStringLiteral("FILE");
// The key of a track file's point array.
inline constexpr char TrackPoints[] = "TRKPT";

} // namespace GpsKey

// A track as the index lists it; its points live in a file of their own.
struct Track {
    QString name;
    QString beginTime; // UTC, "yyyy-mm-dd hh:mm:ss"
    QString endTime;
    QString bounds;    // "(minLat,minLon)-(maxLat,maxLon)"
    QString file;      // the point file's name when it is not the one the times give
};

struct Waypoint {
    QString name;
    QString lat;
    QString lon;
    QString ele = QStringLiteral("0.0");
    QString desc;
};
