#include "library/CalendarFlags.h"

#include "library/PhotoRecord.h"
#include "app/WallClock.h"
#include "datalist/DataList.h"

#include <algorithm>
#include <functional>
#include <optional>

namespace {

std::size_t MonthIndex(int month, int row, int weekday)
{
    return static_cast<std::size_t>(((month - 1) * 6 + (row - 1)) * 7 + (weekday - 1));
}

std::size_t WeekIndex(int weekday, int slot)
{
    return static_cast<std::size_t>((weekday - 1) * 24 + (slot - 1));
}

// The calendars are brought up to date on the interface thread after every change, so a list of
// 100,000 records must take milliseconds: the key is matched by its number, not its name, and
// only the values that `wanted` keeps by their text (wall-clock texts sort as their times do)
// are read as times.
void ForEachCapture(const DataList &list, const std::function<bool(const QString &)> &wanted,
                    const std::function<void(const QDateTime &)> &visit)
{
    std::optional<DataList::KeyId> captureKey;
    for (int i = 1; i <= list.ItemCount(); ++i) {
        for (const DataList::Entry &entry : list.ItemAt(i)) {
            if (!captureKey && list.KeyName(entry.key) == PhotoRecord::CaptureDate)
                captureKey = entry.key;
            if (captureKey != entry.key)
                continue;
            if (!wanted(entry.value))
                break;
            if (const std::optional<QDateTime> moment = ReadWallClock(entry.value))
                visit(*moment);
            break;
        }
    }
}

} // namespace

int WeekdayFromSunday(const QDate &day)
{
    return day.dayOfWeek() % 7 + 1; // Qt counts Monday = 1 .. Sunday = 7
}

int MonthGridRow(const QDate &day)
{
    const int firstWeekday = WeekdayFromSunday(QDate(day.year(), day.month(), 1));
    return (day.day() + firstWeekday - 1 + 6) / 7;
}

bool MonthFlags::At(int month, int row, int weekday) const
{
    if (month < 1 || month > 12 || row < 1 || row > 6 || weekday < 1 || weekday > 7)
        return false;
    return flags[MonthIndex(month, row, weekday)];
}

void MonthFlags::Set(int month, int row, int weekday)
{
    if (month >= 1 && month <= 12 && row >= 1 && row <= 6 && weekday >= 1 && weekday <= 7)
        flags[MonthIndex(month, row, weekday)] = true;
}

bool MonthFlags::Any() const
{
    return std::ranges::any_of(flags, [](bool on) { return on; });
}

bool WeekFlags::At(int weekday, int slot) const
{
    if (weekday < 1 || weekday > 7 || slot < 1 || slot > 24)
        return false;
    return flags[WeekIndex(weekday, slot)];
}

void WeekFlags::Set(int weekday, int slot)
{
    if (weekday >= 1 && weekday <= 7 && slot >= 1 && slot <= 24)
        flags[WeekIndex(weekday, slot)] = true;
}

bool WeekFlags::Any() const
{
    return std::ranges::any_of(flags, [](bool on) { return on; });
}

MonthFlags ComputeMonthFlags(const DataList &list, int year)
{
    MonthFlags marks;
    const QString prefix = QStringLiteral("%1-").arg(year, 4, 10, QLatin1Char('0'));
    const auto inYear = [&prefix](const QString &text) { return text.startsWith(prefix); };
    ForEachCapture(list, inYear, [&](const QDateTime &moment) {
        const QDate day = moment.date();
        if (day.year() == year)
            marks.Set(day.month(), MonthGridRow(day), WeekdayFromSunday(day));
    });
    return marks;
}

WeekFlags ComputeWeekFlags(const DataList &list, const QDate &firstDay)
{
    WeekFlags marks;
    const QDateTime begin(firstDay, QTime(0, 0), Qt::UTC);
    const QDateTime end = begin.addDays(7);
    const QString from = firstDay.toString(QStringLiteral("yyyy-MM-dd"));
    const QString to = firstDay.addDays(8).toString(QStringLiteral("yyyy-MM-dd"));
    const auto nearWeek = [&](const QString &text) { return text >= from && text < to; };
    ForEachCapture(list, nearWeek, [&](const QDateTime &moment) {
        if (moment >= begin && moment < end)
            marks.Set(WeekdayFromSunday(moment.date()), moment.time().hour() + 1);
    });
    return marks;
}

QDate LatestCaptureDay(const DataList &list)
{
    QDateTime latest;
    QString latestText;
    // Only a later text can be a later time.
    const auto later = [&latestText](const QString &text) { return text > latestText; };
    ForEachCapture(list, later, [&](const QDateTime &moment) {
        if (!latest.isValid() || moment > latest) {
            latest = moment;
            latestText = WallClockText(moment);
        }
    });
    return latest.date();
}
