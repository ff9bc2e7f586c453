#pragma once

#include <QDate>
#include <array>

class DataList;

// The marks of the album's calendars: which days of a year and which hours of a week hold at
// least one photo by its "CaptureDate". The flags carry no count.

// The weekday counted from Sunday = 1 to Saturday = 7.
int WeekdayFromSunday(const QDate &day);
// The row (1 to 6) of the day in its month's grid, whose rows begin on Sunday and whose first
// row holds day 1.
int MonthGridRow(const QDate &day);

class MonthFlags {
public:
    // month 1..12, row 1..6, weekday 1..7 (Sunday = 1); out of range reads false.
    bool At(int month, int row, int weekday) const;
    void Set(int month, int row, int weekday);
    bool Any() const;

private:
    std::array<bool, 12 * 6 * 7> flags{};
};

class WeekFlags {
public:
    // weekday 1..7 (Sunday = 1), slot 1..24 (slot h + 1 for the hour h).
    bool At(int weekday, int slot) const;
    void Set(int weekday, int slot);
    bool Any() const;

private:
    std::array<bool, 7 * 24> flags{};
};

// The day of the latest capture in the list; invalid when no record has one. A calendar opens on
// it, so an album shows its photos at once rather than an empty year.
QDate LatestCaptureDay(const DataList &list);

// The year's marks from every record of the list.
MonthFlags ComputeMonthFlags(const DataList &list, int year);
// The marks of the week that begins on firstDay: its first day up to, not including, the same
// time seven days later.
WeekFlags ComputeWeekFlags(const DataList &list, const QDate &firstDay);
