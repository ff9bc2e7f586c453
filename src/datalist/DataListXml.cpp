#include "datalist/DataListXml.h"

#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace {

using Kind = DataList::Kind;

QString ElementName(Kind kind)
{
    switch (kind) {
    case Kind::Integer: return QStringLiteral("integer");
    case Kind::Real: return QStringLiteral("real");
    case Kind::Date: return QStringLiteral("date");
    case Kind::Data: return QStringLiteral("data");
    default: return QStringLiteral("string");
    }
}

// XML 1.0 cannot carry most control characters, not even escaped; they are dropped rather than
// making the whole file unreadable.
QString XmlSafe(const QString &text)
{
    const auto allowed = [](QChar c) { return c.unicode() >= 0x20 || c == u'\t' || c == u'\n' || c == u'\r'; };
    if (std::all_of(text.cbegin(), text.cend(), allowed))
        return text;
    QString safe;
    safe.reserve(text.size());
    for (const QChar c : text) {
        if (allowed(c) && c.unicode() != 0xFFFE && c.unicode() != 0xFFFF)
            safe += c;
    }
    return safe;
}

// Parsers turn CR LF into LF; a CR written as a character reference comes back as it was.
void WriteText(QXmlStreamWriter &writer, const QString &element, const QString &text)
{
    const QString safe = XmlSafe(text);
    if (!safe.contains(u'\r')) {
        writer.writeTextElement(element, safe);
        return;
    }
    writer.writeStartElement(element);
    const QStringList pieces = safe.split(u'\r');
    for (qsizetype i = 0; i < pieces.size(); ++i) {
        if (i > 0)
            writer.writeEntityReference(QStringLiteral("#13"));
        if (!pieces[i].isEmpty())
            writer.writeCharacters(pieces[i]);
    }
    writer.writeEndElement();
}

void ReplayNested(QXmlStreamWriter &writer, const QString &xml)
{
    QXmlStreamReader nested(xml);
    while (!nested.atEnd()) {
        nested.readNext();
        if (nested.isStartDocument() || nested.isEndDocument())
            continue;
        writer.writeCurrentToken(nested);
    }
}

} // namespace

namespace DataListXml {

void WriteEntry(QXmlStreamWriter &writer, const DataList::Entry &entry, const KeyNames &keys)
{
    WriteText(writer, QStringLiteral("key"), keys.at(entry.key));
    switch (entry.kind) {
    case Kind::True:
        writer.writeEmptyElement(QStringLiteral("true"));
        break;
    case Kind::False:
        writer.writeEmptyElement(QStringLiteral("false"));
        break;
    case Kind::Nested:
        ReplayNested(writer, entry.value);
        break;
    default:
        WriteText(writer, ElementName(entry.kind), entry.value);
    }
}

void WriteItem(QXmlStreamWriter &writer, const DataList::Item &item, const KeyNames &keys)
{
    writer.writeStartElement(QStringLiteral("dict"));
    for (const DataList::Entry &entry : item)
        WriteEntry(writer, entry, keys);
    writer.writeEndElement();
}

} // namespace DataListXml
