#pragma once

#include "datalist/DataList.h"
#include "gps/GpsRecords.h"

#include <QByteArray>
#include <QByteArrayView>
#include <limits>
#include <vector>

class Prompter;

// The points of one track, held compactly: the four texts of a point side by side in one buffer,
// and its time already read. A million points take some 60 MB.
class TrackPoints {
public:
    static constexpr qint64 NoTime = std::numeric_limits<qint64>::min();
    enum Field { Time = 0, Lat = 1, Lon = 2, Ele = 3 };

    void Append(QByteArrayView time, QByteArrayView lat, QByteArrayView lon, QByteArrayView ele);
    void Clear();
    int Count() const { return static_cast<int>(starts.size()); }

    // UTF-8 text of a field; the view lasts until the points change.
    QByteArrayView Text(int point, Field field) const;
    QString String(int point, Field field) const { return QString::fromUtf8(Text(point, field)); }
    // The point's TIME read as UTC seconds; NoTime when it is empty or unreadable.
    qint64 Seconds(int point) const { return seconds[static_cast<std::size_t>(point)]; }
    const std::vector<qint64> &AllSeconds() const { return seconds; }

private:
    QByteArray texts; // per point: time, lat, lon, ele, each ended by a NUL (XML cannot hold one)
    std::vector<qsizetype> starts;
    std::vector<qint64> seconds;
};

// LoadTrackPoints: the points of a track from its file; a damaged file is replaced by its backup
// after the user is told. A track whose file is missing has no points.
DataList::LoadResult LoadTrackPoints(const Track &track, TrackPoints &points, Prompter *prompter);
