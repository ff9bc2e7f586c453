#include "gps/TimeText.h"

#include <cmath>

namespace {

struct Civil {
    int year;
    int month;
    int day;
};

bool IsLeapYear(int year)
{
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

int DaysInMonth(int year, int month)
{
    static constexpr int Days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && IsLeapYear(year) ? 29 : Days[month - 1];
}

// Days from 1970-01-01 (after H. Hinnant's days_from_civil).
qint64 DaysFromCivil(int year, int month, int day)
{
    const int y = year - (month <= 2 ? 1 : 0);
    const qint64 era = (y >= 0 ? y : y - 399) / 400;
    const qint64 yearOfEra = y - era * 400;
    const qint64 dayOfYear = (153 * (month > 2 ? month - 3 : month + 9) + 2) / 5 + day - 1;
    const qint64 dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * 146097 + dayOfEra - 719468;
}

Civil CivilFromDays(qint64 days)
{
    days += 719468;
    const qint64 era = (days >= 0 ? days : days - 146096) / 146097;
    const qint64 dayOfEra = days - era * 146097;
    const qint64 yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const qint64 dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const qint64 monthIndex = (5 * dayOfYear + 2) / 153;
    const int day = static_cast<int>(dayOfYear - (153 * monthIndex + 2) / 5 + 1);
    const int month = static_cast<int>(monthIndex < 10 ? monthIndex + 3 : monthIndex - 9);
    return {static_cast<int>(yearOfEra + era * 400 + (month <= 2 ? 1 : 0)), month, day};
}

char32_t CodeAt(QStringView text, qsizetype i)
{
    return text[i].unicode();
}

char32_t CodeAt(QByteArrayView text, qsizetype i)
{
    return static_cast<unsigned char>(text[i]);
}

template <typename Text>
int Digits(const Text &text, qsizetype from, qsizetype count)
{
    int value = 0;
    for (qsizetype i = from; i < from + count; ++i) {
        const char32_t c = CodeAt(text, i);
        if (c < '0' || c > '9')
            return -1;
        value = value * 10 + static_cast<int>(c - '0');
    }
    return value;
}

template <typename Text>
std::optional<qint64> ReadSeconds(const Text &text)
{
    if (text.size() < 19)
        return std::nullopt;
    const int year = Digits(text, 0, 4);
    const int month = Digits(text, 5, 2);
    const int day = Digits(text, 8, 2);
    const int hour = Digits(text, 11, 2);
    const int minute = Digits(text, 14, 2);
    const int second = Digits(text, 17, 2);
    if (year < 1 || month < 1 || month > 12 || day < 1 || day > DaysInMonth(year, month) || hour < 0 || hour > 23
        || minute < 0 || minute > 59 || second < 0 || second > 59)
        return std::nullopt;
    return DaysFromCivil(year, month, day) * TimeText::SecondsPerDay + qint64{hour} * 3600 + qint64{minute} * 60 + second;
}

QString Formatted(qint64 seconds, char dateTimeSeparator, const char *suffix)
{
    const qint64 days = seconds >= 0 ? seconds / TimeText::SecondsPerDay : (seconds - TimeText::SecondsPerDay + 1) / TimeText::SecondsPerDay;
    const qint64 inDay = seconds - days * TimeText::SecondsPerDay;
    const Civil date = CivilFromDays(days);
    return QString::asprintf("%04d-%02d-%02d%c%02d:%02d:%02d%s", date.year, date.month, date.day, dateTimeSeparator,
                             static_cast<int>(inDay / 3600), static_cast<int>(inDay / 60 % 60), static_cast<int>(inDay % 60), suffix);
}

} // namespace

namespace TimeText {

std::optional<qint64> Seconds(QStringView text)
{
    return ReadSeconds(text);
}

std::optional<qint64> Seconds(QByteArrayView text)
{
    return ReadSeconds(text);
}

QString Format(qint64 seconds)
{
    return Formatted(seconds, ' ', "");
}

QString GpxFormat(qint64 seconds)
{
    return Formatted(seconds, 'T', "Z");
}

QString Normalized(QStringView text)
{
    const std::optional<qint64> seconds = Seconds(text);
    return seconds ? Format(*seconds) : QString();
}

QString FileStamp(const QString &text)
{
    const std::optional<qint64> seconds = Seconds(text);
    if (!seconds)
        return {};
    QString stamp = Format(*seconds);
    stamp.remove(u'-').remove(u':').replace(u' ', u'_');
    return stamp;
}

} // namespace TimeText

qint64 ZoneOffsetSeconds(double hours)
{
    const double whole = std::trunc(hours);
    const auto minutes = static_cast<qint64>(std::lround((hours - whole) * 60.0));
    return static_cast<qint64>(whole) * 3600 + minutes * 60;
}

QString GetDateWithSelectedTimeZone(QStringView utc, double hours)
{
    const std::optional<qint64> seconds = TimeText::Seconds(utc);
    return seconds ? TimeText::Format(*seconds + ZoneOffsetSeconds(hours)) : QString();
}
