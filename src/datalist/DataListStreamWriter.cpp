#include "datalist/DataListStream.h"

#include <QIODevice>
#include <algorithm>
#include <array>
#include <cstring>

namespace {

constexpr qsizetype FlushSize = 1 << 20;

// The prolog and indentation DataList::Save writes, so that both produce the same bytes.
constexpr char Prolog[] =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
    "<plist version=\"1.0\">\n"
    "\t<dict>\n";
constexpr char Epilog[] = "\t</dict>\n</plist>\n";
constexpr QByteArrayView TopIndent = "\t\t";
constexpr QByteArrayView ItemIndent = "\t\t\t";
constexpr QByteArrayView EntryIndent = "\t\t\t\t";

// What a byte of UTF-8 text becomes: 0 itself, 1 dropped (a control character XML cannot
// carry), 2 an entity.
constexpr std::array<quint8, 256> ByteClasses = [] {
    std::array<quint8, 256> classes{};
    for (int c = 0; c < 0x20; ++c)
        classes[static_cast<std::size_t>(c)] = 1;
    classes['\t'] = 0;
    classes['\n'] = 0;
    for (const char c : {'\r', '&', '<', '>', '"'})
        classes[static_cast<unsigned char>(c)] = 2;
    classes[0xEF] = 2; // may begin U+FFFE or U+FFFF, which XML forbids
    return classes;
}();

QByteArrayView Entity(char c)
{
    switch (c) {
    case '\r': return "&#13;";
    case '&': return "&amp;";
    case '<': return "&lt;";
    case '>': return "&gt;";
    default: return "&quot;";
    }
}

} // namespace

DataListStreamWriter::DataListStreamWriter(QIODevice &target)
    : device(target)
{
    buffer.resize(FlushSize + 4096);
    Put(Prolog);
}

void DataListStreamWriter::BeginItems(QByteArrayView itemsKey)
{
    Put(TopIndent);
    Put("<key>");
    WriteEscaped(itemsKey);
    Put("</key>\n");
    arrayPending = true;
}

void DataListStreamWriter::WriteItem(StreamedItem entries)
{
    if (arrayPending) {
        Put(TopIndent);
        Put("<array>\n");
        arrayPending = false;
    }
    Put(ItemIndent);
    if (entries.empty()) {
        Put("<dict/>\n");
    } else {
        Put("<dict>\n");
        for (const StreamedEntry &entry : entries)
            WriteEntry(EntryIndent, entry);
        Put(ItemIndent);
        Put("</dict>\n");
    }
    if (used >= FlushSize)
        Flush();
}

void DataListStreamWriter::EndItems()
{
    Put(TopIndent);
    Put(arrayPending ? "<array/>\n" : "</array>\n");
    arrayPending = false;
}

void DataListStreamWriter::WriteProperty(QByteArrayView key, QByteArrayView value)
{
    WriteEntry(TopIndent, {key, value});
}

bool DataListStreamWriter::Finish()
{
    Put(Epilog);
    Flush();
    return !failed;
}

void DataListStreamWriter::WriteEntry(QByteArrayView indent, const StreamedEntry &entry)
{
    Put(indent);
    Put("<key>");
    WriteEscaped(entry.key);
    Put("</key>\n");
    Put(indent);
    Put("<string>");
    WriteEscaped(entry.value);
    Put("</string>\n");
}

void DataListStreamWriter::WriteEscaped(QByteArrayView text)
{
    qsizetype plainFrom = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const quint8 kind = ByteClasses[byte];
        if (kind == 0)
            continue;
        const bool nonCharacter = byte == 0xEF && i + 2 < text.size() && static_cast<unsigned char>(text[i + 1]) == 0xBF
            && (static_cast<unsigned char>(text[i + 2]) & 0xFE) == 0xBE;
        if (byte == 0xEF && !nonCharacter)
            continue;
        Put(text.sliced(plainFrom, i - plainFrom));
        if (nonCharacter) {
            i += 2;
        } else if (kind == 2) {
            Put(Entity(text[i]));
        }
        plainFrom = i + 1;
    }
    Put(text.sliced(plainFrom));
}

void DataListStreamWriter::Put(QByteArrayView bytes)
{
    if (bytes.isEmpty())
        return;
    if (used + bytes.size() > buffer.size())
        buffer.resize(std::max(2 * buffer.size(), used + bytes.size()));
    std::memcpy(buffer.data() + used, bytes.data(), static_cast<std::size_t>(bytes.size()));
    used += bytes.size();
}

void DataListStreamWriter::Put(char byte)
{
    Put(QByteArrayView(&byte, 1));
}

void DataListStreamWriter::Flush()
{
    if (!failed && used > 0 && device.write(buffer.constData(), used) != used)
        failed = true;
    used = 0;
}
