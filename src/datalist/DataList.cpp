#include "datalist/DataList.h"

#include "datalist/DataListReader.h"
#include "datalist/DataListXml.h"

#include <QFile>
#include <QSaveFile>
#include <QXmlStreamWriter>
#include <algorithm>
#include <numeric>

namespace {

const QString PlistDoctype = QStringLiteral(
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">");

using Entries = std::vector<DataList::Entry>;

Entries::const_iterator FindEntry(const Entries &entries, int key)
{
    return std::find_if(entries.begin(), entries.end(), [key](const DataList::Entry &e) { return e.key == key; });
}

QString EntryText(const Entries &entries, int key)
{
    const auto found = key < 0 ? entries.end() : FindEntry(entries, key);
    if (found == entries.end() || found->kind == DataList::Kind::Nested)
        return {};
    return found->value;
}

void SetEntry(Entries &entries, DataList::KeyId key, const QString &value)
{
    const auto found = std::find_if(entries.begin(), entries.end(), [key](const DataList::Entry &e) { return e.key == key; });
    if (found == entries.end()) {
        entries.push_back({value, key, DataList::Kind::String});
    } else if (found->value != value || found->kind == DataList::Kind::Nested) {
        found->value = value;
        found->kind = DataList::Kind::String;
    }
}

} // namespace

DataList::LoadResult DataList::Load(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {LoadStatus::Unreadable, QStringLiteral("Cannot read %1: %2").arg(path, file.errorString())};
    if (file.size() == 0)
        return {LoadStatus::Unreadable, QStringLiteral("%1 is empty.").arg(path)};
    return LoadFromDevice(&file);
}

DataList::LoadResult DataList::LoadFromDevice(QIODevice *device)
{
    DataList parsed;
    LoadResult result = DataListReader(device, parsed).Read();
    if (result)
        *this = std::move(parsed);
    return result;
}

DataList::LoadResult DataList::LoadFromBytes(const QByteArray &xml)
{
    if (xml.isEmpty())
        return {LoadStatus::Unreadable, QStringLiteral("The list is empty.")};
    DataList parsed;
    LoadResult result = DataListReader(xml, parsed).Read();
    if (result)
        *this = std::move(parsed);
    return result;
}

DataList::KeyId DataList::InternKey(QStringView name)
{
    const QString key = name.toString();
    const auto found = keyIds.constFind(key);
    if (found != keyIds.constEnd())
        return found.value();
    const auto id = static_cast<KeyId>(keyNames.size());
    keyNames.push_back(key);
    keyIds.insert(key, id);
    return id;
}

int DataList::FindKey(const QString &name) const
{
    return keyIds.value(name, -1);
}

QByteArray DataList::ToBytes() const
{
    QByteArray xml;
    xml.reserve(64 * static_cast<qsizetype>(document.size() + 24 * items.size()));
    QXmlStreamWriter writer(&xml);
    writer.setAutoFormatting(true);
    writer.setAutoFormattingIndent(-1);
    writer.writeStartDocument();
    writer.writeDTD(PlistDoctype);
    writer.writeStartElement(QStringLiteral("plist"));
    writer.writeAttribute(QStringLiteral("version"), QStringLiteral("1.0"));
    writer.writeStartElement(QStringLiteral("dict"));

    const auto writeItems = [&] {
        writer.writeTextElement(QStringLiteral("key"), itemsKey);
        writer.writeStartElement(QStringLiteral("array"));
        for (const Item &item : items)
            DataListXml::WriteItem(writer, item, keyNames);
        writer.writeEndElement();
    };
    const std::size_t itemsAt = itemsPosition < 0 ? document.size() : static_cast<std::size_t>(itemsPosition);
    for (std::size_t i = 0; i < document.size(); ++i) {
        if (i == itemsAt)
            writeItems();
        DataListXml::WriteEntry(writer, document[i], keyNames);
    }
    if (itemsAt >= document.size())
        writeItems();
    writer.writeEndElement();
    writer.writeEndElement();
    writer.writeEndDocument();
    return xml;
}

bool DataList::Save(const QString &path, QString *error) const
{
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly)) {
        file.write(ToBytes());
        if (file.commit())
            return true;
    }
    if (error)
        *error = QStringLiteral("Cannot write %1: %2").arg(path, file.errorString());
    return false;
}

QString DataList::GetDocumentProperty(const QString &key) const
{
    return EntryText(document, FindKey(key));
}

void DataList::SetDocumentProperty(const QString &key, const QString &value)
{
    SetEntry(document, InternKey(key), value);
}

QStringList DataList::DocumentKeys() const
{
    QStringList keys;
    for (const Entry &entry : document) {
        if (entry.kind != Kind::Nested)
            keys << keyNames[entry.key];
    }
    return keys;
}

QString DataList::GetItemProperty(const QString &key, int index) const
{
    if (index < 1 || index > ItemCount())
        return {};
    return EntryText(items[static_cast<std::size_t>(index - 1)], FindKey(key));
}

void DataList::SetItemProperty(const QString &key, const QString &value, int index)
{
    if (index < 1 || index > ItemCount())
        return;
    SetEntry(items[static_cast<std::size_t>(index - 1)], InternKey(key), value);
}

void DataList::AddItem(int index)
{
    const std::size_t at = index < 1 || index > ItemCount() ? items.size() : static_cast<std::size_t>(index - 1);
    items.insert(items.begin() + static_cast<std::ptrdiff_t>(at), Item());
}

void DataList::RemoveItem(int index)
{
    if (index >= 1 && index <= ItemCount())
        items.erase(items.begin() + (index - 1));
}

void DataList::TakeItemsOf(DataList &from)
{
    std::vector<KeyId> renumbered;
    renumbered.reserve(from.keyNames.size());
    for (const QString &name : from.keyNames)
        renumbered.push_back(InternKey(name));
    items.reserve(items.size() + from.items.size());
    for (Item &item : from.items) {
        for (Entry &entry : item)
            entry.key = renumbered[entry.key];
        items.push_back(std::move(item));
    }
    from.items.clear();
}

void DataList::ClearItem(int index)
{
    if (index >= 1 && index <= ItemCount())
        items[static_cast<std::size_t>(index - 1)].clear();
}

void DataList::SortItems(const QString &key, int order)
{
    SortItems(key, order, [](const QString &a, const QString &b) { return a < b; });
}

void DataList::SortItems(const QString &key, int order, const std::function<bool(const QString &, const QString &)> &less)
{
    const int keyId = FindKey(key);
    std::vector<QString> texts;
    texts.reserve(items.size());
    for (const Item &item : items)
        texts.push_back(EntryText(item, keyId));
    std::vector<std::size_t> positions(items.size());
    std::iota(positions.begin(), positions.end(), 0);
    if (order == 0) {
        std::stable_sort(positions.begin(), positions.end(),
                         [&](std::size_t a, std::size_t b) { return less(texts[b], texts[a]); });
    } else {
        std::stable_sort(positions.begin(), positions.end(),
                         [&](std::size_t a, std::size_t b) { return less(texts[a], texts[b]); });
    }
    std::vector<Item> sorted;
    sorted.reserve(items.size());
    for (const std::size_t position : positions)
        sorted.push_back(std::move(items[position]));
    items = std::move(sorted);
}
