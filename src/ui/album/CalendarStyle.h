#pragma once

#include "app/Language.h"

#include <QFont>
#include <QString>

// The calendars' captions and fonts come from section "Calendar" of the language file: a
// language names the font that draws its own script.
inline QString CalendarText(const QString &key)
{
    return GetLocalizedString(key, QStringLiteral("Calendar"));
}

inline QFont CalendarFont(const char *key, int points, bool bold = false)
{
    QFont font(CalendarText(QString::fromLatin1(key)));
    font.setPointSize(points);
    font.setBold(bold);
    return font;
}
