#include "gps/TimeZones.h"

#include "app/Language.h"
#include "app/Settings.h"

#include <QDateTime>
#include <QTimeZone>
#include <cmath>

namespace {

const QString Calendar = QStringLiteral("Calendar");
const QString Gps = QStringLiteral("GPS");
const QString TimeZoneKey = QStringLiteral("TimeZone");
const QString DaylightKey = QStringLiteral("TimeZoneDaylight");

} // namespace

QList<TimeZoneEntry> TimeZoneEntries()
{
    QList<TimeZoneEntry> entries;
    const QString daylight = GetLocalizedString(QStringLiteral("Daylight"), Calendar);
    for (int n = 1;; ++n) {
        const QString labelKey = QStringLiteral("TimeZone%1").arg(n);
        const QString label = GetLocalizedString(labelKey, Calendar);
        if (label == labelKey) // a missing key reads as itself: the list has ended
            break;
        const double hours = SettingNumber(GetLocalizedString(QStringLiteral("HoursFromGMT%1").arg(n), Calendar));
        entries.append({label, hours});
        entries.append({label + QStringLiteral(" (") + daylight + u')', hours + 1});
    }
    return entries;
}

int SavedTimeZoneEntry(const QList<TimeZoneEntry> &entries, int computerOffsetSeconds)
{
    if (entries.isEmpty())
        return -1;
    const QString zone = ReadSetting(Gps, TimeZoneKey);
    if (!zone.trimmed().isEmpty()) {
        const int daylight = SettingInteger(ReadSetting(Gps, DaylightKey)) != 0 ? 1 : 0;
        const int position = 2 * SettingInteger(zone) + daylight;
        if (position >= 0 && position < entries.size())
            return position;
    }
    int nearest = 0;
    for (int position = 0; position < entries.size(); position += 2) {
        const double seconds = entries[position].hours * 3600;
        if (seconds == computerOffsetSeconds)
            return position;
        if (std::abs(seconds - computerOffsetSeconds) < std::abs(entries[nearest].hours * 3600 - computerOffsetSeconds))
            nearest = position;
    }
    return nearest;
}

void SaveTimeZoneEntry(int position)
{
    WriteSetting(Gps, TimeZoneKey, QString::number(position / 2));
    WriteSetting(Gps, DaylightKey, QString::number(position % 2));
}

int ComputerStandardOffsetSeconds()
{
    return QTimeZone::systemTimeZone().standardTimeOffset(QDateTime::currentDateTime());
}

double SelectedTimeZoneHours()
{
    const QList<TimeZoneEntry> entries = TimeZoneEntries();
    const int computer = ComputerStandardOffsetSeconds();
    const int position = SavedTimeZoneEntry(entries, computer);
    return position < 0 ? computer / 3600.0 : entries[position].hours;
}
