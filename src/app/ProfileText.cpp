#include "app/ProfileText.h"

#include <QList>
#include <optional>

namespace {

const QByteArray Utf8Bom("\xEF\xBB\xBF");

// Lines keep a CR of their own, so that a file mixing line ends is written back as it was; the
// parsing below trims it with the other blanks. Lines the writer makes follow the first line.
struct Lines {
    QByteArray bom;
    QList<QByteArray> lines; // without their LF
    bool crlf = true;
    bool endsWithEol = true;

    QByteArray Made(const QByteArray &text) const { return crlf ? text + '\r' : text; }
};

Lines SplitLines(const QByteArray &content)
{
    Lines result;
    QByteArray body = content;
    if (body.startsWith(Utf8Bom)) {
        result.bom = Utf8Bom;
        body.remove(0, Utf8Bom.size());
    }
    if (body.isEmpty())
        return result;
    result.endsWithEol = body.endsWith('\n');
    const qsizetype firstNewline = body.indexOf('\n');
    if (firstNewline >= 0 && (firstNewline == 0 || body.at(firstNewline - 1) != '\r'))
        result.crlf = false;
    result.lines = body.split('\n');
    if (result.endsWithEol)
        result.lines.removeLast();
    return result;
}

QByteArray JoinLines(const Lines &parts)
{
    QByteArray out = parts.bom;
    for (qsizetype i = 0; i < parts.lines.size(); ++i) {
        out += parts.lines.at(i);
        if (i + 1 < parts.lines.size() || parts.endsWithEol)
            out += '\n';
    }
    return out;
}

// The name of a section header line, or nothing when the line is not one.
std::optional<QString> SectionName(const QByteArray &line)
{
    const QByteArray trimmed = line.trimmed();
    if (!trimmed.startsWith('['))
        return std::nullopt;
    const qsizetype close = trimmed.indexOf(']');
    if (close < 0)
        return std::nullopt;
    return QString::fromUtf8(trimmed.mid(1, close - 1)).trimmed();
}

bool IsComment(const QByteArray &line)
{
    return line.trimmed().startsWith(';');
}

// A line without "=" is a key with an empty value.
QString KeyName(const QByteArray &line)
{
    const qsizetype eq = line.indexOf('=');
    return QString::fromUtf8(eq < 0 ? line : line.left(eq)).trimmed();
}

QString ValueOf(const QByteArray &line)
{
    const qsizetype eq = line.indexOf('=');
    if (eq < 0)
        return {};
    QString value = QString::fromUtf8(line.mid(eq + 1)).trimmed();
    if (value.size() >= 2) {
        const QChar first = value.front();
        if ((first == u'"' || first == u'\'') && value.back() == first)
            value = value.mid(1, value.size() - 2);
    }
    const qsizetype nul = value.indexOf(QChar(0));
    if (nul >= 0)
        value.truncate(nul);
    if (value.size() > ProfileText::ProfileValueLimit) {
        value.truncate(ProfileText::ProfileValueLimit);
        if (value.back().isHighSurrogate())
            value.chop(1);
    }
    return value;
}

bool SameName(const QString &a, const QString &b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

struct Location {
    qsizetype sectionLine = -1;   // header of the first matching section
    qsizetype keyLine = -1;       // first matching key in it
    qsizetype lastContentLine = -1; // last non-blank line of that section
};

Location Locate(const QList<QByteArray> &lines, const QString &section, const QString &key)
{
    Location where;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QByteArray &line = lines.at(i);
        if (const auto name = SectionName(line)) {
            if (where.sectionLine >= 0)
                break;
            if (SameName(*name, section)) {
                where.sectionLine = i;
                where.lastContentLine = i;
            }
            continue;
        }
        if (where.sectionLine < 0)
            continue;
        if (line.trimmed().isEmpty())
            continue;
        where.lastContentLine = i;
        if (where.keyLine < 0 && !IsComment(line) && SameName(KeyName(line), key))
            where.keyLine = i;
    }
    return where;
}

} // namespace

namespace ProfileText {

QString FindValue(const QByteArray &content, const QString &section, const QString &key)
{
    const Lines parts = SplitLines(content);
    const Location where = Locate(parts.lines, section, key);
    if (where.keyLine < 0)
        return {};
    return ValueOf(parts.lines.at(where.keyLine));
}

bool HasKey(const QByteArray &content, const QString &section, const QString &key)
{
    return Locate(SplitLines(content).lines, section, key).keyLine >= 0;
}

QByteArray WithValue(const QByteArray &content, const QString &section, const QString &key,
                     const QString &value)
{
    Lines parts = SplitLines(content);
    // A last line without its line end gets one, or a line written after it would join it.
    if (!parts.endsWithEol && parts.crlf && !parts.lines.isEmpty() && !parts.lines.back().endsWith('\r'))
        parts.lines.back() += '\r';
    const Location where = Locate(parts.lines, section, key);
    if (where.keyLine >= 0) {
        // The stored spelling of the key stays; only the blanks go.
        QByteArray &line = parts.lines[where.keyLine];
        const QByteArray stored = KeyName(line).toUtf8();
        line = stored + '=' + value.toUtf8() + (line.endsWith('\r') ? "\r" : "");
    } else if (where.sectionLine >= 0) {
        parts.lines.insert(where.lastContentLine + 1, parts.Made(key.toUtf8() + '=' + value.toUtf8()));
    } else {
        if (!parts.lines.isEmpty() && !parts.lines.back().trimmed().isEmpty())
            parts.lines.append(parts.Made({}));
        parts.lines.append(parts.Made('[' + section.toUtf8() + ']'));
        parts.lines.append(parts.Made(key.toUtf8() + '=' + value.toUtf8()));
    }
    parts.endsWithEol = true;
    return JoinLines(parts);
}

} // namespace ProfileText
