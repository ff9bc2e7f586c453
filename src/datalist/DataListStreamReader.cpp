#include "datalist/DataListScanner.h"
#include "datalist/DataListStream.h"

#include <QFile>

namespace {

// Hands the items of a list read whole to the visitor, as the scanner would have.
void VisitLoaded(const DataList &list, DataListItemVisitor &visitor)
{
    std::vector<QByteArray> texts;
    std::vector<StreamedEntry> entries;
    for (int i = 1; i <= list.ItemCount(); ++i) {
        const DataList::Item &item = list.ItemAt(i);
        texts.clear();
        texts.reserve(2 * item.size());
        entries.clear();
        for (const DataList::Entry &entry : item) {
            if (entry.kind == DataList::Kind::Nested)
                continue;
            texts.push_back(list.KeyName(entry.key).toUtf8());
            texts.push_back(entry.value.toUtf8());
        }
        for (std::size_t k = 0; k < texts.size(); k += 2)
            entries.push_back({texts[k], texts[k + 1]});
        visitor.Item(entries);
    }
}

} // namespace

DataList::LoadResult StreamDataListItems(QIODevice &device, DataList &properties, DataListItemVisitor &visitor)
{
    DataList scanned;
    const DataListScanner::Outcome outcome = DataListScanner(device, scanned, visitor).Run();
    if (outcome != DataListScanner::Outcome::LeftToReader) {
        properties = std::move(scanned);
        return {};
    }
    // Not in the program's own form, or damaged: DataList's reader decides, and reports.
    visitor.Restart();
    DataList whole;
    if (!device.seek(0))
        return {DataList::LoadStatus::Unreadable, device.errorString()};
    DataList::LoadResult loaded = whole.LoadFromDevice(&device);
    if (!loaded)
        return loaded;
    VisitLoaded(whole, visitor);
    DataList plain;
    for (const QString &key : whole.DocumentKeys()) {
        if (!plain.DocumentKeys().contains(key))
            plain.SetDocumentProperty(key, whole.GetDocumentProperty(key));
    }
    properties = std::move(plain);
    return loaded;
}

DataList::LoadResult StreamDataListItems(const QString &path, DataList &properties, DataListItemVisitor &visitor)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {DataList::LoadStatus::Unreadable, QStringLiteral("Cannot read %1: %2").arg(path, file.errorString())};
    if (file.size() == 0)
        return {DataList::LoadStatus::Unreadable, QStringLiteral("%1 is empty.").arg(path)};
    return StreamDataListItems(file, properties, visitor);
}
