#include "datalist/DataListScanner.h"

#include <QIODevice>
#include <algorithm>
#include <cstring>

namespace {

constexpr qsizetype ChunkSize = 1 << 22;

constexpr QByteArrayView Bom = "\xEF\xBB\xBF";
constexpr QByteArrayView Declarations[] = {
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>",
    "<?xml version=\"1.0\" encoding=\"utf-8\"?>",
    "<?xml version=\"1.0\"?>",
};
constexpr QByteArrayView Doctype =
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">";
constexpr QByteArrayView PlistTags[] = {"<plist version=\"1.0\">", "<plist>"};

bool IsSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

bool IsXmlCharacter(char32_t c)
{
    return c == 0x9 || c == 0xA || c == 0xD || (c >= 0x20 && c <= 0xD7FF) || (c >= 0xE000 && c <= 0xFFFD)
        || (c >= 0x10000 && c <= 0x10FFFF);
}

void AppendUtf8(QByteArray &out, char32_t c)
{
    if (c < 0x80) {
        out.append(static_cast<char>(c));
    } else if (c < 0x800) {
        out.append(static_cast<char>(0xC0 | (c >> 6)));
        out.append(static_cast<char>(0x80 | (c & 0x3F)));
    } else if (c < 0x10000) {
        out.append(static_cast<char>(0xE0 | (c >> 12)));
        out.append(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
        out.append(static_cast<char>(0x80 | (c & 0x3F)));
    } else {
        out.append(static_cast<char>(0xF0 | (c >> 18)));
        out.append(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
        out.append(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
        out.append(static_cast<char>(0x80 | (c & 0x3F)));
    }
}

// One UTF-8 sequence at text[i], or 0 when it is malformed, overlong or a surrogate.
char32_t DecodeUtf8(QByteArrayView text, qsizetype &i)
{
    const auto lead = static_cast<unsigned char>(text[i]);
    int extra = 0;
    char32_t c = 0;
    char32_t least = 0;
    if (lead >= 0xF0 && lead <= 0xF4) {
        extra = 3, c = lead & 0x07, least = 0x10000;
    } else if (lead >= 0xE0) {
        extra = 2, c = lead & 0x0F, least = 0x800;
    } else if (lead >= 0xC2 && lead <= 0xDF) {
        extra = 1, c = lead & 0x1F, least = 0x80;
    } else {
        return 0;
    }
    if (i + extra >= text.size())
        return 0;
    for (int k = 1; k <= extra; ++k) {
        const auto next = static_cast<unsigned char>(text[i + k]);
        if ((next & 0xC0) != 0x80)
            return 0;
        c = (c << 6) | (next & 0x3F);
    }
    if (c < least || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF))
        return 0;
    i += extra;
    return c;
}

// Character data as a parser would take it unchanged: characters XML allows, no raw CR (parsers
// turn line ends into LF), no "]]>". Tells whether it holds references to resolve.
bool IsPlainCharacterData(QByteArrayView raw, bool &hasReference)
{
    hasReference = false;
    for (qsizetype i = 0; i < raw.size(); ++i) {
        const auto byte = static_cast<unsigned char>(raw[i]);
        if (byte >= 0x80) {
            if (!IsXmlCharacter(DecodeUtf8(raw, i)))
                return false;
        } else if (byte == '&') {
            hasReference = true;
        } else if ((byte < 0x20 && byte != '\t' && byte != '\n') || (byte == '>' && i >= 2 && raw[i - 1] == ']' && raw[i - 2] == ']')) {
            return false;
        }
    }
    return true;
}

// A character reference's number ("#13", "#x1F600"), or 0 when it is not a valid one.
char32_t CharacterReference(QByteArrayView name)
{
    const bool hex = name.size() > 1 && name[1] == 'x';
    const QByteArrayView digits = name.sliced(hex ? 2 : 1);
    if (digits.isEmpty() || digits.size() > 7)
        return 0;
    char32_t value = 0;
    for (const char c : digits) {
        int digit = -1;
        if (c >= '0' && c <= '9')
            digit = c - '0';
        else if (hex && c >= 'a' && c <= 'f')
            digit = c - 'a' + 10;
        else if (hex && c >= 'A' && c <= 'F')
            digit = c - 'A' + 10;
        if (digit < 0)
            return 0;
        value = value * (hex ? 16 : 10) + static_cast<char32_t>(digit);
    }
    return IsXmlCharacter(value) ? value : 0;
}

} // namespace

DataListScanner::DataListScanner(QIODevice &source, DataList &target, DataListItemVisitor &itemVisitor)
    : device(source), properties(target), visitor(itemVisitor)
{
}

DataListScanner::Outcome DataListScanner::Run()
{
    Refill();
    while (state != State::Finished) {
        if (!visitor.WantsMore())
            return Outcome::Stopped;
        Step step = Step::Refused;
        switch (state) {
        case State::Prolog: step = Prolog(); break;
        case State::TopLevel: step = TopLevelEntry(); break;
        case State::Items: step = ItemOrEnd(); break;
        default: step = Tail(); break;
        }
        if (step == Step::Refused || (step == Step::NeedMore && !Refill()))
            return Outcome::LeftToReader;
    }
    return Outcome::Scanned;
}

void DataListScanner::Commit(const char *p, State next)
{
    position = p - buffer.constData();
    state = next;
}

bool DataListScanner::Refill()
{
    if (atEnd)
        return false;
    buffer.remove(0, position);
    position = 0;
    const qsizetype kept = buffer.size();
    buffer.resize(kept + ChunkSize);
    const qint64 got = device.read(buffer.data() + kept, ChunkSize);
    buffer.resize(kept + qMax<qint64>(got, 0));
    atEnd = got <= 0;
    return true;
}

int DataListScanner::Match(const char *&p, QByteArrayView literal) const
{
    const qsizetype available = qMin<qsizetype>(End() - p, literal.size());
    if (std::memcmp(p, literal.data(), static_cast<std::size_t>(available)) != 0)
        return 0;
    if (available < literal.size())
        return -1;
    p += literal.size();
    return 1;
}

void DataListScanner::SkipSpace(const char *&p) const
{
    const char *end = End();
    while (p < end && IsSpace(*p))
        ++p;
}

DataListScanner::Step DataListScanner::Prolog()
{
    // The whole prolog is in the first chunk; a file that ends inside it is damaged.
    const char *p = buffer.constData() + position;
    Match(p, Bom);
    for (const QByteArrayView declaration : Declarations) {
        if (Match(p, declaration) == 1)
            break;
    }
    SkipSpace(p);
    Match(p, Doctype);
    SkipSpace(p);
    if (Match(p, PlistTags[0]) != 1 && Match(p, PlistTags[1]) != 1)
        return Step::Refused;
    SkipSpace(p);
    if (Match(p, "<dict>") != 1)
        return Step::Refused;
    Commit(p, State::TopLevel);
    return Step::Done;
}

DataListScanner::Step DataListScanner::TopLevelEntry()
{
    const char *p = buffer.constData() + position;
    SkipSpace(p);
    const int end = Match(p, "</dict>");
    if (end < 0)
        return Step::NeedMore;
    if (end == 1) {
        Commit(p, State::Tail);
        return Step::Done;
    }
    resolvedUsed = 0;
    QByteArrayView key;
    if (const Step step = ReadKey(p, key); step != Step::Done)
        return step;
    const int open = Match(p, "<array>");
    const int empty = open == 1 ? 0 : Match(p, "<array/>");
    if (open < 0 || empty < 0)
        return Step::NeedMore;
    if (open == 1 || empty == 1) {
        // The first array is the item array; a second one is not of the program's making.
        if (sawItems)
            return Step::Refused;
        sawItems = true;
        Commit(p, open == 1 ? State::Items : State::TopLevel);
        return Step::Done;
    }
    QByteArrayView value;
    if (const Step step = ReadString(p, value); step != Step::Done)
        return step;
    // A repeated key reads as its first value, as in DataList.
    const QString name = QString::fromUtf8(key);
    if (!properties.DocumentKeys().contains(name))
        properties.SetDocumentProperty(name, QString::fromUtf8(value));
    Commit(p, State::TopLevel);
    return Step::Done;
}

DataListScanner::Step DataListScanner::ItemOrEnd()
{
    const char *p = buffer.constData() + position;
    SkipSpace(p);
    const int end = Match(p, "</array>");
    if (end < 0)
        return Step::NeedMore;
    if (end == 1) {
        Commit(p, State::TopLevel);
        return Step::Done;
    }
    if (const Step step = ReadItem(p); step != Step::Done)
        return step;
    visitor.Item(entries);
    Commit(p, State::Items);
    return Step::Done;
}

DataListScanner::Step DataListScanner::Tail()
{
    const char *p = buffer.constData() + position;
    SkipSpace(p);
    if (const Step step = Expect(p, "</plist>"); step != Step::Done)
        return step;
    SkipSpace(p);
    if (p != End())
        return Step::Refused;
    if (!atEnd)
        return Step::NeedMore;
    Commit(p, State::Finished);
    return Step::Done;
}

DataListScanner::Step DataListScanner::ReadItem(const char *&p)
{
    entries.clear();
    resolvedUsed = 0;
    const int open = Match(p, "<dict>");
    if (open != 1) {
        const int empty = open < 0 ? -1 : Match(p, "<dict/>");
        return empty == 1 ? Step::Done : empty < 0 ? Step::NeedMore : Step::Refused;
    }
    for (;;) {
        SkipSpace(p);
        const int end = Match(p, "</dict>");
        if (end != 0)
            return end < 0 ? Step::NeedMore : Step::Done;
        StreamedEntry entry;
        if (const Step step = ReadKey(p, entry.key); step != Step::Done)
            return step;
        if (const Step step = ReadString(p, entry.value); step != Step::Done)
            return step;
        entries.push_back(entry);
    }
}

DataListScanner::Step DataListScanner::Expect(const char *&p, QByteArrayView literal) const
{
    const int found = Match(p, literal);
    return found == 1 ? Step::Done : found < 0 ? Step::NeedMore : Step::Refused;
}

// "<key>text</key>" and the blanks after it.
DataListScanner::Step DataListScanner::ReadKey(const char *&p, QByteArrayView &key)
{
    Step step = Expect(p, "<key>");
    if (step == Step::Done)
        step = ReadText(p, key);
    if (step == Step::Done)
        step = Expect(p, "</key>");
    if (step == Step::Done)
        SkipSpace(p);
    return step;
}

// "<string>text</string>" or "<string/>".
DataListScanner::Step DataListScanner::ReadString(const char *&p, QByteArrayView &value)
{
    const int open = Match(p, "<string>");
    if (open != 1) {
        const int empty = open < 0 ? -1 : Match(p, "<string/>");
        if (empty == 1)
            value = {};
        return empty == 1 ? Step::Done : empty < 0 ? Step::NeedMore : Step::Refused;
    }
    if (const Step step = ReadText(p, value); step != Step::Done)
        return step;
    return Expect(p, "</string>");
}

// Character data up to the next tag, with its references resolved.
DataListScanner::Step DataListScanner::ReadText(const char *&p, QByteArrayView &text)
{
    const char *tag = static_cast<const char *>(std::memchr(p, '<', static_cast<std::size_t>(End() - p)));
    if (!tag)
        return Step::NeedMore;
    const QByteArrayView raw(p, tag - p);
    bool hasReference = false;
    if (!IsPlainCharacterData(raw, hasReference))
        return Step::Refused;
    if (hasReference) {
        if (resolved.size() <= resolvedUsed)
            resolved.resize(resolvedUsed + 1);
        QByteArray &copy = resolved[resolvedUsed++];
        if (!Resolve(raw, copy))
            return Step::Refused;
        text = copy;
    } else {
        text = raw;
    }
    p = tag;
    return Step::Done;
}

bool DataListScanner::Resolve(QByteArrayView raw, QByteArray &out) const
{
    struct Named {
        QByteArrayView name;
        char character;
    };
    static constexpr Named Predefined[] = {{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}};
    out.resize(0);
    qsizetype from = 0;
    for (qsizetype amp = raw.indexOf('&'); amp >= 0; amp = raw.indexOf('&', from)) {
        out.append(raw.sliced(from, amp - from));
        const qsizetype semicolon = raw.indexOf(';', amp);
        if (semicolon < 0)
            return false;
        const QByteArrayView name = raw.sliced(amp + 1, semicolon - amp - 1);
        const auto known = std::find_if(std::begin(Predefined), std::end(Predefined), [&](const Named &n) { return n.name == name; });
        if (known != std::end(Predefined)) {
            out.append(known->character);
        } else if (name.startsWith('#')) {
            const char32_t c = CharacterReference(name);
            if (c == 0)
                return false;
            AppendUtf8(out, c);
        } else {
            return false;
        }
        from = semicolon + 1;
    }
    out.append(raw.sliced(from));
    return true;
}
