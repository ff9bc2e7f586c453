#include "app/Degrees.h"

#include <cmath>

namespace {

double Limit(DegreesAxis axis)
{
    return axis == DegreesAxis::Latitude ? 90.0 : 180.0;
}

} // namespace

std::optional<double> ReadDegrees(QStringView text, DegreesAxis axis)
{
    bool ok = false;
    const double value = text.trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(value) || std::abs(value) > Limit(axis))
        return std::nullopt;
    return value;
}

QString DegreesProblem(QStringView text, DegreesAxis axis)
{
    if (ReadDegrees(text, axis))
        return {};
    return QStringLiteral("\"%1\" is not a %2 from -%3 to %3.")
        .arg(text.toString(), axis == DegreesAxis::Latitude ? QStringLiteral("latitude") : QStringLiteral("longitude"))
        .arg(Limit(axis));
}
