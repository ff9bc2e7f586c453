#include "ui/gps/WaypointListModel.h"

#include "ui/gps/GpsTexts.h"
#include "gps/GpsLog.h"

WaypointListModel::WaypointListModel(const GpsLog &shared, QObject *parent) : QAbstractTableModel(parent), log(shared) {}

void WaypointListModel::Refresh()
{
    beginResetModel();
    endResetModel();
}

int WaypointListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() || !log.IsLoaded() ? 0 : log.Store().WaypointCount();
}

int WaypointListModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant WaypointListModel::data(const QModelIndex &index, int role) const
{
    if (role != Qt::DisplayRole || !index.isValid() || index.row() >= rowCount())
        return {};
    const Waypoint waypoint = log.Store().WaypointAt(index.row());
    switch (index.column()) {
    case NameColumn:
        return waypoint.name;
    case LatColumn:
        return waypoint.lat;
    case LonColumn:
        return waypoint.lon;
    case EleColumn:
        return waypoint.ele;
    case DescColumn:
        return waypoint.desc;
    default:
        return {};
    }
}

QVariant WaypointListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    static const char *const Captions[] = {"WaypointName", "Latitude", "Longitude", "Elevation", "Description"};
    return section >= 0 && section < ColumnCount ? GpsUi::GpsFormText(Captions[section]) : QVariant();
}
