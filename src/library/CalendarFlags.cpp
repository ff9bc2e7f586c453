#include "library/CalendarFlags.h"

#include "library/PhotoRecord.h"
#include "app/WallClock.h"
#include "datalist/DataList.h"

#include <algorithm>
#include <functional>

namespace {

std::size_t MonthIndex(int month, int row, int weekday)
{
    return static_cast<std::size_t>(((month - 1) * 6 + (row - 1)) * 7 + (weekday - 1));
}

std::size_t WeekIndex(int weekday, int slot)
{
    return static_cast<std::size_t>((weekday - 1) * 24 + (slot - 1));
}

void ForEachCapture(const DataList &list, const std::function<void(const QDateTime &)> &visit)
{
    for (int i = 1; i <= list.ItemCount(); ++i) {
        const QString text = list.GetItemProperty(PhotoRecord::CaptureDate, i);
        if (text.isEmpty())
            continue;
        if (const std::optional<QDateTime> moment = ReadWallClock(text))
            visit(*moment);
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
    ForEachCapture(list, [&](const QDateTime &moment) {
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
    ForEachCapture(list, [&](const QDateTime &moment) {
        if (moment >= begin && moment < end)
            marks.Set(WeekdayFromSunday(moment.date()), moment.time().hour() + 1);
    });
    return marks;
}

QDate LatestCaptureDay(const DataList &list)
{
    QDateTime latest;
    ForEachCapture(list, [&](const QDateTime &moment) {
        if (!latest.isValid() || moment > latest)
            latest = moment;
    });
    return latest.date();
}
