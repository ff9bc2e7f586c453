#include "ui/gps/TrackListModel.h"

#include "ui/gps/GpsTexts.h"
#include "gps/GpsLog.h"
#include "gps/TimeText.h"

TrackListModel::TrackListModel(const GpsLog &shared, QObject *parent) : QAbstractTableModel(parent), log(shared) {}

void TrackListModel::Refresh(const MatchWindow &window)
{
    beginResetModel();
    listed = log.IsLoaded() ? ListedTracks(log.Store(), window) : QList<int>{};
    zoneHours = window.zoneHours;
    endResetModel();
}

QList<int> TrackListModel::CheckedTracks() const
{
    QList<int> checked;
    for (const int track : listed) {
        if (!cleared.contains(KeyOf(track)))
            checked << track;
    }
    return checked;
}

QString TrackListModel::KeyOf(int track) const
{
    const Track shown = log.Store().TrackAt(track);
    return shown.name + u'\n' + shown.beginTime + u'\n' + shown.endTime;
}

int TrackListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(listed.size());
}

int TrackListModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant TrackListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= listed.size())
        return {};
    const int track = listed[index.row()];
    if (role == Qt::CheckStateRole && index.column() == NameColumn)
        return cleared.contains(KeyOf(track)) ? Qt::Unchecked : Qt::Checked;
    if (role != Qt::DisplayRole)
        return {};
    const Track shown = log.Store().TrackAt(track);
    switch (index.column()) {
    case NameColumn:
        return shown.name;
    case BeginColumn:
        return GetDateWithSelectedTimeZone(shown.beginTime, zoneHours);
    case EndColumn:
        return GetDateWithSelectedTimeZone(shown.endTime, zoneHours);
    default:
        return {};
    }
}

bool TrackListModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != Qt::CheckStateRole || index.column() != NameColumn || index.row() >= listed.size())
        return false;
    const QString key = KeyOf(listed[index.row()]);
    if (value.toInt() == Qt::Checked)
        cleared.remove(key);
    else
        cleared.insert(key);
    emit dataChanged(index, index, {Qt::CheckStateRole});
    return true;
}

Qt::ItemFlags TrackListModel::flags(const QModelIndex &index) const
{
    Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    if (index.column() == NameColumn)
        flags |= Qt::ItemIsUserCheckable;
    return flags;
}

QVariant TrackListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    static const char *const Captions[] = {"TrackName", "BeginTime", "EndTime"};
    return section >= 0 && section < ColumnCount ? GpsUi::GpsFormText(Captions[section]) : QVariant();
}
