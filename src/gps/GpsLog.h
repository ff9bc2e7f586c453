#pragma once

#include "gps/GpsStore.h"

#include <QList>
#include <QObject>
#include <QPointer>

#include <functional>
#include <optional>

// The GPS log the windows share while the program runs. The GPS window, the GPS locator and the
// map dialogs read and change one store and hear of each other's changes through Changed. The
// store in memory is small (the track index and the waypoints; points stay in their files), so
// reading it on the interface thread is cheap; reading and writing the files is not, and runs on
// a worker against a copy that Adopt then puts back.
class GpsLog : public QObject {
    Q_OBJECT
public:
    explicit GpsLog(QObject *parent = nullptr);

    // False until a loaded store has been adopted; windows show "LoadingGPSLogDatabase" till then.
    bool IsLoaded() const { return loaded; }
    const GpsStore &Store() const { return store; }

    // For work on a worker thread (loading, importing, downloading): change a copy, then hand it
    // back with Adopt on the interface thread. Whoever copies keeps the log's windows from
    // changing it meanwhile, or their change is replaced.
    GpsStore Copy() const { return store; }
    void Adopt(GpsStore changed);

    // A small change made here and now (a waypoint added, a track renamed).
    void Change(const std::function<void(GpsStore &)> &change);

    // The tracks the GPS window has ticked (its GetVisibleTracks), which the album's globe-viewer
    // documents show. They count while that window lives; without it there are none, and those
    // documents take every track listed for the match period.
    void SetVisibleTracks(const QObject *window, QList<int> tracks);
    std::optional<QList<int>> VisibleTracks() const;

signals:
    void Changed();

private:
    GpsStore store;
    bool loaded = false;
    QPointer<const QObject> visibleFrom;
    QList<int> visibleTracks;
};
