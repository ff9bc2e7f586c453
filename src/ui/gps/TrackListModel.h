#pragma once

#include "gps/PhotoMatching.h"

#include <QAbstractTableModel>
#include <QList>
#include <QSet>

class GpsLog;

// ListViewTrack: the tracks of the shared GPS log that the window's period lists, one row each
// with a check box, named and timed in the chosen zone ("yyyy-mm-dd hh:mm:ss").
class TrackListModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { NameColumn, BeginColumn, EndColumn, ColumnCount };

    explicit TrackListModel(const GpsLog &log, QObject *parent = nullptr);

    // Lists the tracks again for this period and zone (after the log or the window changed).
    void Refresh(const MatchWindow &window);
    // The store index of a row's track.
    int TrackAt(int row) const { return listed.value(row, -1); }
    // The ticked tracks, as store indices in list order.
    QList<int> CheckedTracks() const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString KeyOf(int track) const;

    const GpsLog &log;
    QList<int> listed;
    double zoneHours = 0;
    // Tracks are ticked when they come; the ones the user cleared, by their name and times, so the
    // choice survives a refresh that moves rows.
    QSet<QString> cleared;
};
