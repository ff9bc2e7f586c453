#include "ui/album/AlbumModel.h"

#include "library/AlbumDocument.h"
#include "library/PhotoRecord.h"

#include <QVariantMap>
#include <algorithm>

AlbumModel::AlbumModel(AlbumDocument &shown, QObject *parent)
    : QAbstractListModel(parent), document(shown), rows(shown.RecordCount()),
      highlighted(static_cast<std::size_t>(rows), false)
{
    connect(&document, &AlbumDocument::RecordsInserted, this, &AlbumModel::OnInserted);
    connect(&document, &AlbumDocument::RecordsRemoved, this, &AlbumModel::OnRemoved);
    connect(&document, &AlbumDocument::RecordsChanged, this, &AlbumModel::OnChanged);
    connect(&document, &AlbumDocument::RecordsReordered, this, &AlbumModel::OnReordered);
}

int AlbumModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : rows;
}

int AlbumModel::RecordOfRow(int row) const
{
    const int record = row + 1;
    switch (pending.kind) {
    case Pending::Kind::Insert:
        return record >= pending.first ? record + pending.count : record;
    case Pending::Kind::Remove:
        if (record < pending.first)
            return record;
        return record < pending.first + pending.count ? 0 : record - pending.count;
    case Pending::Kind::Reorder:
        return pending.newOfOld[static_cast<std::size_t>(record)];
    case Pending::Kind::None:
        break;
    }
    return record;
}

QVariant AlbumModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.parent().isValid() || index.row() >= rows)
        return {};
    const int record = RecordOfRow(index.row());
    if (record < 1 || record > document.RecordCount())
        return {};
    using namespace PhotoRecord;
    switch (role) {
    case Qt::DisplayRole:
    case FileRole:
        return document.Record(File, record);
    case RecordIndexRole:
        return record;
    case PhotoPathRole:
        return document.PhotoFilePath(record);
    case ThumbnailPathRole:
        return document.ThumbnailFilePath(record);
    case StarRole:
        return document.Record(Star, record) == QLatin1String("1");
    case HighlightRole:
        return pending.kind == Pending::Kind::None && highlighted[static_cast<std::size_t>(index.row())];
    case DescriptionRole:
        return document.Record(Description, record);
    case KeywordsRole:
        return document.Record(Keywords, record);
    case CaptureDateRole:
        return document.Record(CaptureDate, record);
    case RecordRole: {
        QVariantMap values;
        const DataList &list = document.List();
        for (const DataList::Entry &entry : list.ItemAt(record)) {
            if (entry.kind != DataList::Kind::Nested)
                values.insert(list.KeyName(entry.key), entry.value);
        }
        return values;
    }
    default:
        return {};
    }
}

QHash<int, QByteArray> AlbumModel::roleNames() const
{
    QHash<int, QByteArray> names = QAbstractListModel::roleNames();
    const std::pair<int, const char *> roles[] = {
        {RecordIndexRole, "recordIndex"}, {FileRole, "file"}, {PhotoPathRole, "photoPath"},
        {ThumbnailPathRole, "thumbnailPath"}, {StarRole, "star"}, {HighlightRole, "highlight"},
        {DescriptionRole, "description"}, {KeywordsRole, "keywords"}, {CaptureDateRole, "captureDate"},
        {RecordRole, "record"},
    };
    for (const auto &[role, name] : roles)
        names.insert(role, name);
    return names;
}

QList<int> AlbumModel::RolesOfKeys(const QStringList &keys)
{
    using namespace PhotoRecord;
    QList<int> roles{RecordRole};
    const auto add = [&roles](std::initializer_list<int> more) {
        for (const int role : more) {
            if (!roles.contains(role))
                roles << role;
        }
    };
    for (const QString &key : keys) {
        if (key == File)
            add({Qt::DisplayRole, FileRole, PhotoPathRole, ThumbnailPathRole});
        else if (key == Star)
            add({StarRole});
        else if (key == Description)
            add({DescriptionRole});
        else if (key == Keywords)
            add({KeywordsRole});
        else if (key == CaptureDate)
            add({CaptureDateRole});
    }
    return roles;
}

void AlbumModel::SetHighlighted(const QList<int> &indices)
{
    std::vector<bool> now(static_cast<std::size_t>(rows), false);
    for (const int index : indices) {
        if (index >= 1 && index <= rows)
            now[static_cast<std::size_t>(index - 1)] = true;
    }
    QList<int> changed;
    for (int row = 0; row < rows; ++row) {
        if (now[static_cast<std::size_t>(row)] != highlighted[static_cast<std::size_t>(row)])
            changed << row;
    }
    highlighted = std::move(now);
    EmitChanged(changed, {HighlightRole});
}

QList<int> AlbumModel::Highlighted() const
{
    QList<int> indices;
    for (int row = 0; row < rows; ++row) {
        if (highlighted[static_cast<std::size_t>(row)])
            indices << row + 1;
    }
    return indices;
}

void AlbumModel::OnInserted(int first, int count)
{
    pending = {Pending::Kind::Insert, first, count, {}};
    beginInsertRows(QModelIndex(), first - 1, first + count - 2);
    highlighted.insert(highlighted.begin() + (first - 1), static_cast<std::size_t>(count), false);
    rows += count;
    pending = {};
    endInsertRows();
}

void AlbumModel::OnRemoved(int first, int count)
{
    pending = {Pending::Kind::Remove, first, count, {}};
    beginRemoveRows(QModelIndex(), first - 1, first + count - 2);
    highlighted.erase(highlighted.begin() + (first - 1), highlighted.begin() + (first - 1 + count));
    rows -= count;
    pending = {};
    endRemoveRows();
}

void AlbumModel::OnChanged(const QList<int> &indices, const QStringList &keys)
{
    QList<int> changedRows;
    for (const int index : indices)
        changedRows << index - 1;
    EmitChanged(changedRows, RolesOfKeys(keys));
}

// One dataChanged per run of neighbouring rows: a grid repaints just those cells.
void AlbumModel::EmitChanged(QList<int> changedRows, const QList<int> &roles)
{
    std::sort(changedRows.begin(), changedRows.end());
    changedRows.erase(std::unique(changedRows.begin(), changedRows.end()), changedRows.end());
    for (qsizetype i = 0; i < changedRows.size();) {
        qsizetype end = i + 1;
        while (end < changedRows.size() && changedRows[end] == changedRows[end - 1] + 1)
            ++end;
        if (changedRows[i] >= 0 && changedRows[end - 1] < rows)
            emit dataChanged(index(changedRows[i]), index(changedRows[end - 1]), roles);
        i = end;
    }
}

void AlbumModel::OnReordered(const QList<int> &oldIndexOfNew)
{
    std::vector<int> newOfOld(static_cast<std::size_t>(oldIndexOfNew.size()) + 1, 0);
    for (qsizetype position = 0; position < oldIndexOfNew.size(); ++position)
        newOfOld[static_cast<std::size_t>(oldIndexOfNew[position])] = static_cast<int>(position + 1);
    pending = {Pending::Kind::Reorder, 0, 0, newOfOld};
    emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    for (const QModelIndex &old : before)
        after << index(newOfOld[static_cast<std::size_t>(old.row() + 1)] - 1, old.column());
    changePersistentIndexList(before, after);
    std::vector<bool> moved(highlighted.size(), false);
    for (std::size_t position = 0; position < moved.size(); ++position)
        moved[position] = highlighted[static_cast<std::size_t>(oldIndexOfNew[static_cast<qsizetype>(position)] - 1)];
    highlighted = std::move(moved);
    pending = {};
    emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}
