#include "net/FtpListing.h"

#include <QList>
#include <array>
#include <optional>

namespace {

// A listing line cut at blanks, each word still pointing into the line so that a name with
// blanks inside can be taken from the line itself.
QList<QStringView> Words(QStringView line)
{
    QList<QStringView> words;
    qsizetype i = 0;
    while (i < line.size()) {
        while (i < line.size() && line.at(i).isSpace())
            ++i;
        const qsizetype start = i;
        while (i < line.size() && !line.at(i).isSpace())
            ++i;
        if (i > start)
            words.append(line.sliced(start, i - start));
    }
    return words;
}

qsizetype EndOf(QStringView line, QStringView word)
{
    return (word.data() - line.data()) + word.size();
}

bool AllDigits(QStringView text)
{
    if (text.isEmpty())
        return false;
    for (const QChar c : text) {
        if (c < u'0' || c > u'9')
            return false;
    }
    return true;
}

// Checks `text` against a pattern where '9' stands for one digit and every other character for
// itself.
bool Matches(QStringView text, QStringView pattern)
{
    if (text.size() != pattern.size())
        return false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        const bool fits = pattern.at(i) == u'9' ? (c >= u'0' && c <= u'9') : c == pattern.at(i);
        if (!fits)
            return false;
    }
    return true;
}

bool IsMonth(QStringView word)
{
    static constexpr std::array<const char16_t *, 12> Months = {u"jan", u"feb", u"mar", u"apr", u"may", u"jun",
                                                                u"jul", u"aug", u"sep", u"oct", u"nov", u"dec"};
    for (const char16_t *month : Months) {
        if (word.compare(QStringView(month), Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

bool IsDayOfMonth(QStringView word)
{
    return word.size() <= 2 && AllDigits(word) && word.toInt() >= 1 && word.toInt() <= 31;
}

bool IsTimeOrYear(QStringView word)
{
    return Matches(word, u"9999") || Matches(word, u"9:99") || Matches(word, u"99:99") || Matches(word, u"99:99:99");
}

bool IsUnixMode(QStringView word)
{
    static const QString Types = QStringLiteral("-dlcbpsD");
    static const QString Permissions = QStringLiteral("-rwxsStTlL");
    if (word.size() < 10 || !Types.contains(word.at(0)))
        return false;
    for (qsizetype i = 1; i < 10; ++i) {
        if (!Permissions.contains(word.at(i)))
            return false;
    }
    return true;
}

// The text after the word that ends the date and a single blank: "ls" puts exactly one blank
// before the name, so blanks that start a name are kept.
QString NameAfter(QStringView line, QStringView lastDateWord)
{
    return line.sliced(std::min(line.size(), EndOf(line, lastDateWord) + 1)).toString();
}

std::optional<QString> UnixName(QStringView line, const QList<QStringView> &words)
{
    if (words.isEmpty() || !IsUnixMode(words.first()))
        return std::nullopt;
    // The date follows the size (or the minor number of a device). Owner and group can be
    // anything, so the date is found by its shape rather than by its column.
    for (qsizetype i = 2; i + 1 < words.size(); ++i) {
        if (!AllDigits(words.at(i - 1)))
            continue;
        QString name;
        if (i + 2 < words.size() && IsMonth(words.at(i)) && IsDayOfMonth(words.at(i + 1)) && IsTimeOrYear(words.at(i + 2)))
            name = NameAfter(line, words.at(i + 2));
        else if (Matches(words.at(i), u"9999-99-99") && IsTimeOrYear(words.at(i + 1)))
            name = NameAfter(line, words.at(i + 1));
        else
            continue;
        if (words.first().at(0) == u'l') {
            const qsizetype arrow = name.indexOf(QLatin1String(" -> "));
            if (arrow >= 0)
                name.truncate(arrow);
        }
        return name;
    }
    return std::nullopt;
}

std::optional<QString> DosName(QStringView line, const QList<QStringView> &words)
{
    if (words.size() < 4)
        return std::nullopt;
    const QStringView date = words.at(0);
    if (!Matches(date, u"99-99-99") && !Matches(date, u"99-99-9999"))
        return std::nullopt;
    QStringView time = words.at(1);
    if (time.endsWith(u"AM", Qt::CaseInsensitive) || time.endsWith(u"PM", Qt::CaseInsensitive))
        time.chop(2);
    if (!Matches(time, u"99:99") && !Matches(time, u"9:99"))
        return std::nullopt;
    const QStringView sizeOrFolder = words.at(2);
    QString digits = sizeOrFolder.toString();
    digits.remove(u',');
    if (sizeOrFolder.compare(u"<DIR>", Qt::CaseInsensitive) != 0 && !AllDigits(digits))
        return std::nullopt;
    // IIS pads the size column; a name starts at the first character after it.
    return line.sliced(words.at(3).data() - line.data()).toString();
}

std::optional<QString> EplfName(QStringView line)
{
    if (!line.startsWith(u'+'))
        return std::nullopt;
    const qsizetype tab = line.indexOf(u'\t');
    return tab < 0 ? QString() : line.sliced(tab + 1).toString();
}

} // namespace

QString NameFromListingLine(QStringView line)
{
    while (line.endsWith(u'\r') || line.endsWith(u'\n'))
        line.chop(1);
    const QList<QStringView> words = Words(line);
    std::optional<QString> name = UnixName(line, words);
    if (!name)
        name = DosName(line, words);
    if (!name)
        name = EplfName(line);
    if (!name || *name == QLatin1String(".") || *name == QLatin1String(".."))
        return {};
    return *name;
}

QStringList NamesFromListing(const QString &listing)
{
    QString lines = listing;
    lines.replace(QLatin1String("\r\n"), QLatin1String("\r"));
    lines.replace(u'\n', u'\r');
    QStringList names;
    for (const QString &line : lines.split(u'\r')) {
        QString name = NameFromListingLine(line);
        if (!name.isEmpty())
            names.append(std::move(name));
    }
    if (names.isEmpty())
        names.append(QString());
    return names;
}
