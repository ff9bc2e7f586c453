#pragma once

#include "app/Language.h"

#include <QString>

// The texts of the GPS windows: captions of section "Form", messages of section "GPS".
namespace GpsUi {

inline QString GpsFormText(const char *key)
{
    return GetLocalizedString(QLatin1String(key), QStringLiteral("Form"));
}

inline QString GpsMessage(const QString &key)
{
    return GetLocalizedString(key, QStringLiteral("GPS"));
}

inline QString GpsMessage(const char *key)
{
    return GpsMessage(QLatin1String(key));
}

inline QString GpsGeneralText(const char *key)
{
    return GetLocalizedString(QLatin1String(key), QStringLiteral("General"));
}

} // namespace GpsUi
