#include "gps/GpsLog.h"

GpsLog::GpsLog(QObject *parent) : QObject(parent) {}

void GpsLog::Adopt(GpsStore changed)
{
    store = std::move(changed);
    loaded = true;
    emit Changed();
}

void GpsLog::Change(const std::function<void(GpsStore &)> &change)
{
    change(store);
    emit Changed();
}

void GpsLog::SetVisibleTracks(const QObject *window, QList<int> tracks)
{
    visibleFrom = window;
    visibleTracks = std::move(tracks);
}

std::optional<QList<int>> GpsLog::VisibleTracks() const
{
    if (!visibleFrom)
        return std::nullopt;
    return visibleTracks;
}
