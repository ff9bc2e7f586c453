#include "gps/TimeCorrection.h"

#include "library/AlbumDocument.h"
#include "app/Language.h"
#include "library/PhotoRecord.h"
#include "gps/TimeText.h"

#include <cmath>

namespace {

constexpr double LargestDifference = 25.0;

QString CalendarText(const char *key)
{
    return GetLocalizedString(QLatin1String(key), QStringLiteral("Calendar"));
}

QString DifferenceLabel(double hours)
{
    if (hours == 0)
        return CalendarText("NoChange");
    const double size = std::abs(hours);
    const auto whole = static_cast<int>(std::trunc(size));
    return (hours > 0 ? u'+' : u'-') + QString::number(whole) + u':' + (size == whole ? QStringLiteral("00") : QStringLiteral("30"))
        + u' ' + CalendarText(size == 1 ? "Hour" : "Hours");
}

// Moves each photo's readable capture time by seconds; others are left alone.
int ShiftCaptureDates(AlbumDocument &album, const QList<int> &photos, qint64 seconds)
{
    int changed = 0;
    for (const int photo : photos) {
        const QString before = album.Record(PhotoRecord::CaptureDate, photo);
        const std::optional<qint64> taken = TimeText::Seconds(before);
        const QString after = taken ? TimeText::Format(*taken + seconds) : before;
        if (after == before)
            continue;
        album.SetRecordValue(photo, PhotoRecord::CaptureDate, after);
        ++changed;
    }
    return changed;
}

} // namespace

QList<TimeDifferenceEntry> TimeDifferenceEntries()
{
    QList<TimeDifferenceEntry> entries;
    for (int halves = static_cast<int>(2 * LargestDifference); halves >= -static_cast<int>(2 * LargestDifference); --halves)
        entries.append({DifferenceLabel(halves / 2.0), halves / 2.0});
    return entries;
}

bool IsTimeDifference(double hours)
{
    return std::abs(hours) <= LargestDifference && std::fmod(hours * 2, 1.0) == 0;
}

int ApplyTimeDifference(AlbumDocument &album, const QList<int> &photos, double hours)
{
    // Whole hours first, then the rest as minutes: the same split as a time zone's offset.
    return ShiftCaptureDates(album, photos, ZoneOffsetSeconds(hours));
}

double CorrectorOffsetDays(double days, double hours, double minutes, double seconds, int sign)
{
    return (days + hours / 24 + minutes / (24 * 60) + seconds / (24 * 60 * 60)) * sign;
}

int ApplyTimeCorrection(AlbumDocument &album, const QList<int> &photos, double offsetDays)
{
    if (offsetDays == 0)
        return 0;
    return ShiftCaptureDates(album, photos, std::llround(offsetDays * TimeText::SecondsPerDay));
}
