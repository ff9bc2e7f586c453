#include "app/WallClock.h"

#include <QDate>
#include <QTime>

namespace {

int Field(QStringView text, qsizetype from)
{
    const char16_t high = text[from].unicode();
    const char16_t low = text[from + 1].unicode();
    if (high < u'0' || high > u'9' || low < u'0' || low > u'9')
        return -1;
    return (high - u'0') * 10 + (low - u'0');
}

bool SeparatorsAt(QStringView text, std::initializer_list<std::pair<qsizetype, char16_t>> separators)
{
    for (const auto &[at, separator] : separators) {
        if (at < text.size() && text[at] != separator)
            return false;
    }
    return true;
}

} // namespace

std::optional<QDateTime> ReadWallClock(QStringView text)
{
    if (text.size() != 10 && text.size() != 13 && text.size() != 19)
        return std::nullopt;
    if (!SeparatorsAt(text, {{4, u'-'}, {7, u'-'}, {10, u' '}, {13, u':'}, {16, u':'}}))
        return std::nullopt;
    const int century = Field(text, 0);
    const int year = Field(text, 2);
    const int month = Field(text, 5);
    const int day = Field(text, 8);
    const int hour = text.size() > 10 ? Field(text, 11) : 0;
    const int minute = text.size() > 13 ? Field(text, 14) : 0;
    const int second = text.size() > 13 ? Field(text, 17) : 0;
    if (century < 0 || year < 0 || month < 0 || day < 0 || hour < 0 || minute < 0 || second < 0)
        return std::nullopt;
    const QDate date(century * 100 + year, month, day);
    const QTime time(hour, minute, second);
    if (!date.isValid() || !time.isValid())
        return std::nullopt;
    return QDateTime(date, time, Qt::UTC);
}

QString WallClockText(const QDateTime &moment)
{
    return moment.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}
