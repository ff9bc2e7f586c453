#include "app/Degrees.h"

#include <array>
#include <charconv>
#include <cmath>

namespace {

double Limit(DegreesAxis axis)
{
    return axis == DegreesAxis::Latitude ? 90.0 : 180.0;
}

} // namespace

// Every point of a track log passes through here twice, so the number is read with from_chars
// on a small ASCII copy rather than QString's locale-aware reader, which costs a third of a
// million-point import.
std::optional<double> ReadDegrees(QStringView text, DegreesAxis axis)
{
    QStringView number = text.trimmed();
    if (number.startsWith(u'+') && !number.startsWith(u"+-"))
        number = number.sliced(1); // from_chars takes no leading '+'
    std::array<char, 64> ascii{};
    if (number.isEmpty() || number.size() > qsizetype(ascii.size()))
        return std::nullopt;
    for (qsizetype i = 0; i < number.size(); ++i) {
        if (number[i].unicode() > 127)
            return std::nullopt;
        ascii[size_t(i)] = static_cast<char>(number[i].unicode());
    }
    const char *end = ascii.data() + number.size();
    double value = 0.0;
    const auto [stop, error] = std::from_chars(ascii.data(), end, value);
    if (error != std::errc{} || stop != end || !std::isfinite(value) || std::abs(value) > Limit(axis))
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
