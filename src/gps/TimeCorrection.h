#pragma once

#include <QList>
#include <QString>

class AlbumDocument;

// Shifting the capture times of photos whose camera clock was wrong. Only the records'
// CaptureDate changes; the photo files are not touched. Photos are record indices.

// The time-difference list: 101 entries from +25 down to -25 hours in half hours, labelled
// "+5:30 Hours", "+1:00 Hour", the localised "NoChange", "-0:30 Hours", ...
struct TimeDifferenceEntry {
    QString label;
    double hours = 0;
};
QList<TimeDifferenceEntry> TimeDifferenceEntries();
// True for a difference the list offers: whole or half hours from -25 to +25.
bool IsTimeDifference(double hours);

// Adds the whole hours of the difference (truncated toward zero), then the rest as minutes, to
// each photo's capture time. Returns the number of photos changed.
int ApplyTimeDifference(AlbumDocument &album, const QList<int> &photos, double hours);

// The time corrector's offset in days: days + hours / 24 + minutes / 1440 + seconds / 86400,
// each a decimal number (fractions and negative values allowed), times the sign (+1 or -1).
double CorrectorOffsetDays(double days, double hours, double minutes, double seconds, int sign);
// Adds the offset, to the nearest second, to each photo's capture time; nothing for a zero
// offset. Returns the number of photos changed.
int ApplyTimeCorrection(AlbumDocument &album, const QList<int> &photos, double offsetDays);
