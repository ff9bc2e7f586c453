// The only ways records change: each change is made, then announced.
#include "library/AlbumDocument.h"

#include <algorithm>

int AlbumDocument::AppendRecord(const RecordValues &values)
{
    const int index = RecordCount() + 1;
    list.AddItem(index);
    for (const auto &[key, value] : values)
        list.SetItemProperty(key, value, index);
    DocumentWasModified();
    emit RecordsInserted(index, 1);
    return index;
}

void AlbumDocument::RemoveRecord(int index)
{
    RemoveRecords({index});
}

void AlbumDocument::RemoveRecords(QList<int> indices)
{
    std::sort(indices.begin(), indices.end(), std::greater<>());
    indices.erase(std::unique(indices.begin(), indices.end()), indices.end());
    indices.erase(std::remove_if(indices.begin(), indices.end(), [this](int index) { return !Valid(index); }), indices.end());
    // Highest run first, so that the indices of the runs still to come stay true.
    for (qsizetype i = 0; i < indices.size();) {
        qsizetype end = i + 1;
        while (end < indices.size() && indices[end] == indices[end - 1] - 1)
            ++end;
        const int first = indices[end - 1];
        const int count = static_cast<int>(end - i);
        for (int index = indices[i]; index >= first; --index)
            list.RemoveItem(index);
        DocumentWasModified();
        emit RecordsRemoved(first, count);
        i = end;
    }
}

void AlbumDocument::SetRecordValue(int index, const QString &key, const QString &value)
{
    SetRecordValues(index, RecordValues{{key, value}});
}

void AlbumDocument::SetRecordValues(int index, const QMap<QString, QString> &values)
{
    RecordValues ordered;
    for (auto it = values.begin(); it != values.end(); ++it)
        ordered.append({it.key(), it.value()});
    SetRecordValues(index, ordered);
}

void AlbumDocument::SetRecordValues(int index, const RecordValues &values)
{
    if (!Valid(index))
        return;
    QStringList keys;
    for (const auto &[key, value] : values) {
        if (list.GetItemProperty(key, index) == value)
            continue;
        list.SetItemProperty(key, value, index);
        if (!keys.contains(key))
            keys << key;
    }
    if (keys.isEmpty())
        return;
    DocumentWasModified();
    emit RecordsChanged({index}, keys);
}

void AlbumDocument::SetValueOfRecords(const QList<int> &indices, const QString &key, const QString &value)
{
    QList<int> changed;
    for (const int index : indices) {
        if (Valid(index) && list.GetItemProperty(key, index) != value) {
            list.SetItemProperty(key, value, index);
            changed << index;
        }
    }
    if (changed.isEmpty())
        return;
    DocumentWasModified();
    emit RecordsChanged(changed, {key});
}

void AlbumDocument::ReplaceRecord(int index, const RecordValues &values)
{
    if (!Valid(index))
        return;
    QStringList keys;
    for (const DataList::Entry &entry : list.ItemAt(index))
        keys << list.KeyName(entry.key);
    list.ClearItem(index);
    for (const auto &[key, value] : values) {
        list.SetItemProperty(key, value, index);
        if (!keys.contains(key))
            keys << key;
    }
    DocumentWasModified();
    emit RecordsChanged({index}, keys);
}
