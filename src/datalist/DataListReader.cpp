#include "datalist/DataListReader.h"

#include "datalist/DataListXml.h"

#include <QXmlStreamWriter>
#include <limits>

using Kind = DataList::Kind;
using LoadStatus = DataList::LoadStatus;

namespace {

// A kept value is elements and text; comments, processing instructions and stray declarations
// inside it are dropped so the value can always be written back.
void CopyToken(QXmlStreamWriter &writer, const QXmlStreamReader &reader)
{
    if (reader.isStartElement() || reader.isEndElement() || reader.isCharacters())
        writer.writeCurrentToken(reader);
}

struct ValueElement {
    const char *name;
    Kind kind;
};

constexpr ValueElement TextElements[] = {
    {"string", Kind::String}, {"integer", Kind::Integer}, {"real", Kind::Real},
    {"date", Kind::Date},     {"data", Kind::Data},
};

constexpr std::size_t MaximumKeys = std::numeric_limits<DataList::KeyId>::max();

} // namespace

DataListReader::DataListReader(const QByteArray &xml, DataList &target)
    : reader(xml), list(target)
{
    reader.setEntityExpansionLimit(0);
}

DataListReader::DataListReader(QIODevice *device, DataList &target)
    : reader(device), list(target)
{
    reader.setEntityExpansionLimit(0);
}

bool DataListReader::Fail(LoadStatus status, const QString &why)
{
    if (result.status == LoadStatus::Loaded)
        result = {status, why};
    return false;
}

DataList::LoadResult DataListReader::Read()
{
    bool sawRoot = false;
    while (!reader.atEnd() && result.status == LoadStatus::Loaded) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        // Entities are refused at their declaration, before anything could expand them.
        if (token == QXmlStreamReader::DTD && !reader.entityDeclarations().isEmpty()) {
            Fail(LoadStatus::EntitiesDeclared, QStringLiteral("The file declares entities; it is not read."));
            break;
        }
        if (token != QXmlStreamReader::StartElement)
            continue;
        if (sawRoot || reader.name() != u"plist") {
            Fail(LoadStatus::NotPropertyList, QStringLiteral("The file is not a property list."));
            break;
        }
        sawRoot = true;
        if (!reader.readNextStartElement() || reader.name() != u"dict") {
            if (!reader.hasError())
                Fail(LoadStatus::NotPropertyList, QStringLiteral("The property list does not hold a dictionary."));
            break;
        }
        if (!ReadTopLevel())
            break;
        reader.skipCurrentElement(); // the rest of <plist>
    }
    if (reader.hasError())
        Fail(LoadStatus::Malformed, QStringLiteral("The file is damaged (line %1, column %2): %3")
                                        .arg(reader.lineNumber()).arg(reader.columnNumber()).arg(reader.errorString()));
    if (!sawRoot)
        Fail(LoadStatus::NotPropertyList, QStringLiteral("The file is not a property list."));
    return result;
}

bool DataListReader::ReadTopLevel()
{
    while (reader.readNextStartElement()) {
        DataList::KeyId key = 0;
        if (!ReadKey(key))
            return false;
        if (reader.name() == u"array") {
            if (!ReadTopLevelArray(key))
                return false;
            continue;
        }
        DataList::Entry entry{{}, key, Kind::String};
        if (!ReadValue(entry))
            return false;
        list.document.push_back(std::move(entry));
    }
    return !reader.hasError();
}

// The first array of dictionaries is the item array; any other array is kept as it stands.
bool DataListReader::ReadTopLevelArray(DataList::KeyId keyId)
{
    if (list.itemsPosition >= 0) {
        list.document.push_back({CaptureElement(), keyId, Kind::Nested});
        return !reader.hasError();
    }
    std::vector<DataList::Item> parsed;
    while (reader.readNextStartElement()) {
        if (reader.name() != u"dict") {
            // Not an array of dictionaries: what was read so far and the rest become one value.
            QString xml = QStringLiteral("<array>");
            {
                QXmlStreamWriter writer(&xml);
                for (const DataList::Item &item : parsed)
                    DataListXml::WriteItem(writer, item, list.keyNames);
            }
            xml = CaptureUntilParentEnd(xml) + QStringLiteral("</array>");
            list.document.push_back({xml, keyId, Kind::Nested});
            return !reader.hasError();
        }
        DataList::Item item;
        if (!ReadItem(item))
            return false;
        parsed.push_back(std::move(item));
    }
    if (reader.hasError())
        return false;
    list.items = std::move(parsed);
    list.itemsKey = list.KeyName(keyId);
    list.itemsPosition = static_cast<int>(list.document.size());
    return true;
}

bool DataListReader::ReadItem(DataList::Item &item)
{
    item.reserve(list.keyNames.size());
    expectedKey = 0;
    while (reader.readNextStartElement()) {
        DataList::Entry entry;
        if (!ReadKey(entry.key) || !ReadValue(entry))
            return false;
        item.push_back(std::move(entry));
    }
    item.shrink_to_fit();
    return !reader.hasError();
}

// Reads "<key>...</key>" and leaves the reader on the value's start element.
bool DataListReader::ReadKey(DataList::KeyId &key)
{
    if (reader.name() != u"key")
        return Fail(LoadStatus::NotPropertyList, QStringLiteral("A dictionary entry has no key."));
    // Items list their keys in the same order: the one after the last is tried before any search.
    const auto &names = list.keyNames;
    const bool expectable = static_cast<std::size_t>(expectedKey) < names.size();
    bool isExpected = false;
    QString text;
    reader.readNext();
    if (reader.isCharacters()) {
        isExpected = expectable && names[static_cast<std::size_t>(expectedKey)] == reader.text();
        if (!isExpected)
            text = reader.text().toString();
        reader.readNext();
    }
    while (reader.isCharacters() || reader.isEntityReference()) {
        if (isExpected) {
            text = names[static_cast<std::size_t>(expectedKey)];
            isExpected = false;
        }
        text += reader.text();
        reader.readNext();
    }
    if (!reader.isEndElement())
        return reader.hasError() ? false : Fail(LoadStatus::NotPropertyList, QStringLiteral("A key holds markup."));

    if (isExpected) {
        key = static_cast<DataList::KeyId>(expectedKey);
    } else {
        if (names.size() >= MaximumKeys && !list.keyIds.contains(text))
            return Fail(LoadStatus::NotPropertyList, QStringLiteral("The list uses too many different keys."));
        key = list.InternKey(text);
    }
    expectedKey = key + 1;
    if (!reader.readNextStartElement())
        return reader.hasError() ? false : Fail(LoadStatus::NotPropertyList, QStringLiteral("A key has no value."));
    return true;
}

bool DataListReader::ReadValue(DataList::Entry &entry)
{
    const QStringView name = reader.name();
    for (const ValueElement &element : TextElements) {
        if (name == QLatin1String(element.name)) {
            entry.kind = element.kind;
            return ReadText(entry);
        }
    }
    if (name == u"true" || name == u"false") {
        entry.kind = name == u"true" ? Kind::True : Kind::False;
        entry.value = name.toString();
        reader.skipCurrentElement();
        return !reader.hasError();
    }
    if (name == u"array" || name == u"dict") {
        entry.kind = Kind::Nested;
        entry.value = CaptureElement();
        return !reader.hasError();
    }
    return Fail(LoadStatus::NotPropertyList, QStringLiteral("Unknown value type <%1>.").arg(name));
}

bool DataListReader::ReadText(DataList::Entry &entry)
{
    reader.readNext();
    if (reader.isEndElement()) {
        entry.value.clear();
        return true;
    }
    if (!reader.isCharacters())
        return reader.hasError() ? false : Fail(LoadStatus::NotPropertyList, QStringLiteral("A value holds markup."));
    // The text is valid only until the next token: take it first, then see whether more follows.
    entry.value = Shared(entry.key, reader.text());
    reader.readNext();
    // Text that arrives in pieces (character references, CDATA) is joined.
    while (reader.isCharacters() || reader.isEntityReference()) {
        entry.value += reader.text();
        reader.readNext();
    }
    if (!reader.isEndElement())
        return reader.hasError() ? false : Fail(LoadStatus::NotPropertyList, QStringLiteral("A value holds markup."));
    return true;
}

QString DataListReader::Shared(DataList::KeyId key, QStringView text)
{
    if (recent.size() <= key)
        recent.resize(static_cast<std::size_t>(key) + 1);
    RecentTexts &cache = recent[key];
    for (const QString &known : cache.texts) {
        if (known.size() == text.size() && known == text)
            return known;
    }
    QString value = text.toString();
    cache.texts[static_cast<std::size_t>(cache.next)] = value;
    cache.next = (cache.next + 1) % RecentValues;
    return value;
}

// The current element and everything in it, as XML text, for values kept without being used.
QString DataListReader::CaptureElement()
{
    QString xml;
    QXmlStreamWriter writer(&xml);
    int depth = 0;
    while (!reader.atEnd() && !reader.hasError()) {
        CopyToken(writer, reader);
        if (reader.isStartElement())
            ++depth;
        else if (reader.isEndElement() && --depth == 0)
            break;
        reader.readNext();
    }
    return xml;
}

// From the current element to the end of the element that holds it, which is consumed.
QString DataListReader::CaptureUntilParentEnd(QString xml)
{
    QXmlStreamWriter writer(&xml);
    int depth = 0;
    while (!reader.atEnd() && !reader.hasError()) {
        if (reader.isEndElement() && depth == 0)
            break;
        CopyToken(writer, reader);
        if (reader.isStartElement())
            ++depth;
        else if (reader.isEndElement())
            --depth;
        reader.readNext();
    }
    return xml;
}
