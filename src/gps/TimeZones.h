#pragma once

#include <QList>
#include <QString>

// The time-zone list of the GPS window, built from the language file: two entries per zone of
// section "Calendar" ("TimeZone" + n with its offset "HoursFromGMT" + n), the plain one and the
// daylight-saving one, which is one hour further east.
struct TimeZoneEntry {
    QString label;
    double hours = 0;
};

QList<TimeZoneEntry> TimeZoneEntries();

// The entry chosen last ([GPS] TimeZone and TimeZoneDaylight). Without a saved choice: the plain
// entry of the first zone whose offset is the computer's standard-time offset, or, when no zone
// has exactly that offset, of the zone nearest to it. -1 only for an empty list.
int SavedTimeZoneEntry(const QList<TimeZoneEntry> &entries, int computerOffsetSeconds);
void SaveTimeZoneEntry(int position);

// The computer's own offset from UTC outside daylight-saving time.
int ComputerStandardOffsetSeconds();

// The offset in hours that matching and the lists use: the saved zone, else the computer's.
double SelectedTimeZoneHours();
