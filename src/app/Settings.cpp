#include "app/Settings.h"

#include "app/LenientNumber.h"
#include "app/Paths.h"
#include "app/ProfileFile.h"

#include <algorithm>
#include <cmath>
#include <limits>

QString ReadSetting(const QString &section, const QString &key)
{
    return ProfileFile::ReadString(SettingsFilePath(), section, key);
}

void WriteSetting(const QString &section, const QString &key, const QString &value)
{
    (void)ProfileFile::WriteString(SettingsFilePath(), section, key, value);
}

double SettingNumber(const QString &text)
{
    return LenientNumber(text);
}

int SettingInteger(const QString &text)
{
    // Halves go to even, as numeric settings have always been rounded.
    const double value = std::nearbyint(SettingNumber(text));
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(value, lowest, highest));
}
