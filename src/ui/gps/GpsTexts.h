#pragma once

#include "app/Language.h"

#include <QString>

// The texts of the GPS windows: captions of section "Form", messages of section "GPS".
namespace GpsUi {

inline QString FormText(const char *key)
{
    return GetLocalizedString(QLatin1String(key), QStringLiteral("Form"));
}

inline QString Message(const QString &key)
{
    return GetLocalizedString(key, QStringLiteral("GPS"));
}

inline QString Message(const char *key)
{
    return Message(QLatin1String(key));
}

inline QString GeneralText(const char *key)
{
    return GetLocalizedString(QLatin1String(key), QStringLiteral("General"));
}

} // namespace GpsUi
