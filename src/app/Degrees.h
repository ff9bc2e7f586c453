#pragma once

#include <QString>
#include <QStringView>
#include <optional>

// Positions in decimal degrees, east and north positive. A position comes from outside (a
// typed value, a GPX attribute) as text; only a finite number within the axis' range is one.
enum class DegreesAxis { Latitude, Longitude };

// The value of a latitude (-90 to 90) or longitude (-180 to 180); nothing for "nan", "inf",
// a value out of range or text that is not a number.
std::optional<double> ReadDegrees(QStringView text, DegreesAxis axis);

// Why the text is not a position on the axis, for the user; "" when it is one.
QString DegreesProblem(QStringView text, DegreesAxis axis);
