#include "imaging/TagRules.h"

#include "app/LenientNumber.h"
#include "app/WallClock.h"

#include <QStringList>

QString DateTakenText(const QString &dateTimeOriginal)
{
    QString date = dateTimeOriginal.trimmed();
    if (date.size() != 19)
        return {};
    date[4] = u'-';
    date[7] = u'-';
    if (!ReadWallClock(date))
        return {};
    if (date == QLatin1String("0000-00-00 00:00:00"))
        return {};
    return date;
}

QString FlashState(const QString &flashText)
{
    if (flashText.isEmpty())
        return {};
    return flashText.contains(QLatin1String("Flash fired")) ? QStringLiteral("ON") : QStringLiteral("OFF");
}

QString KeywordsText(const QString &keywordsTag)
{
    if (keywordsTag.isEmpty())
        return {};
    QString keywords = keywordsTag;
    keywords.replace(u',', u';');
    return keywords + u';';
}

QString SignedDegreesText(const GpsCoordinateTags &coordinate, GpsAxis axis)
{
    const QStringList parts = coordinate.sexagesimal.split(u':');
    if (parts.size() != 3)
        return {};
    // A part that is not a number counts as 0.
    const double value = LenientNumber(parts[0]) + LenientNumber(parts[1]) / 60.0 + LenientNumber(parts[2]) / 3600.0;
    const QLatin1String positive(axis == GpsAxis::Latitude ? "N" : "E");
    const double signedValue = coordinate.reference == positive ? value : -value;
    // 0.0 and -0.0 are the same place; only one of them is printed.
    return QString::number(signedValue == 0.0 ? 0.0 : signedValue, 'f', 6);
}
