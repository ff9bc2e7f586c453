#include "Settings.h"

#include "Paths.h"
#include "ProfileFile.h"

#include <QRegularExpression>
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
    static const QRegularExpression leadingNumber(
        QStringLiteral(R"(^\s*([+-]?(?:\d+\.?\d*|\.\d+)(?:[eE][+-]?\d+)?))"));
    const QRegularExpressionMatch match = leadingNumber.match(text);
    if (!match.hasMatch())
        return 0.0;
    const double value = match.captured(1).toDouble();
    return std::isfinite(value) ? value : 0.0;
}

int SettingInteger(const QString &text)
{
    // Halves go to even, as numeric settings have always been rounded.
    const double value = std::nearbyint(SettingNumber(text));
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(value, lowest, highest));
}
