#pragma once

#include <QAbstractTableModel>

class GpsLog;

// ListViewWaypoint: every waypoint of the shared GPS log, with its name, latitude, longitude,
// elevation and description as stored. Rows are the store's waypoint indices.
class WaypointListModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { NameColumn, LatColumn, LonColumn, EleColumn, DescColumn, ColumnCount };

    explicit WaypointListModel(const GpsLog &log, QObject *parent = nullptr);
    // The log changed: the rows are read again.
    void Refresh();

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    const GpsLog &log;
};
