#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringView>
#include <optional>

// Date-time texts. A photo's capture date is local time "yyyy-mm-dd hh:mm:ss"; a track point's
// time is the UTC text of its GPX file, normally "yyyy-mm-ddThh:mm:ssZ". Both are read by fixed
// character positions: year from the 1st character (4), month from the 6th (2), day from the 9th,
// hour from the 12th, minute from the 15th, second from the 18th. The separators are not looked
// at, and whatever follows the seconds (fractions, a zone suffix) is ignored.
namespace TimeText {

constexpr qint64 SecondsPerDay = 86400;

// Seconds since 1970-01-01 00:00:00 on the proleptic Gregorian calendar; nothing when the
// characters at those positions are not a valid date and time.
std::optional<qint64> Seconds(QStringView text);
std::optional<qint64> Seconds(QByteArrayView text);

// "yyyy-mm-dd hh:mm:ss".
QString Format(qint64 seconds);
// "yyyy-mm-ddThh:mm:ssZ".
QString GpxFormat(qint64 seconds);
// A time text re-read by its positions and written "yyyy-mm-dd hh:mm:ss"; "" when unreadable.
QString Normalized(QStringView text);
// "yyyymmdd_HHmmss" of a "yyyy-mm-dd hh:mm:ss" text; "" when unreadable.
QString FileStamp(const QString &text);

} // namespace TimeText

// The offset of a time zone given in hours: the whole hours, truncated toward zero, and then the
// remaining fraction of an hour as minutes rounded to a whole minute (+5.5 is +5 h +30 min,
// -3.5 is -3 h -30 min).
qint64 ZoneOffsetSeconds(double hours);

// A UTC time text as local time of the zone, "yyyy-mm-dd hh:mm:ss"; "" when unreadable.
QString GetDateWithSelectedTimeZone(QStringView utc, double hours);
