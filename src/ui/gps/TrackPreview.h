#pragma once

#include "gps/GpsRecords.h"
#include "gps/TrackStatistics.h"

#include <QHash>
#include <QPolygonF>
#include <QWidget>
#include <functional>
#include <memory>

// What the window shows of a selected track once its points are read: the figures of the
// statistics labels and the shape of the track (longitude across, latitude up).
struct TrackDetails {
    TrackStatistics statistics;
    QPolygonF shape;
};

// Reads a track's points on a worker thread, never on the interface thread, and keeps what it
// found per track, so selecting a track again shows it at once. A track is known by its point
// file and its name, which is all its details depend on.
class TrackDetailsCache : public QObject {
    Q_OBJECT
public:
    using Ready = std::function<void(std::shared_ptr<const TrackDetails>)>;
    explicit TrackDetailsCache(QObject *parent = nullptr) : QObject(parent) {}
    // `ready` runs on the interface thread, at once when the track is known, and only while this
    // cache exists.
    void Request(const Track &track, const Ready &ready);

private:
    QHash<QString, std::shared_ptr<const TrackDetails>> known;
};

// PictureTrackPreview: the track's shape scaled into the widget, start and end marked.
class TrackPreview : public QWidget {
    Q_OBJECT
public:
    explicit TrackPreview(QWidget *parent = nullptr);
    void SetShape(const QPolygonF &shape);
    const QPolygonF &Shape() const { return shape; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QPolygonF shape;
};
