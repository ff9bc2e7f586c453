#pragma once

#include <QDateTime>
#include <QString>
#include <QStringView>
#include <optional>

// Capture times are wall-clock values without a zone: "2024-03-31 02:30:00" is a valid photo time
// even where the machine's clock skipped that hour. They are held as a QDateTime in UTC used as a
// plain wall clock, so that neither parsing nor comparing ever consults the machine's zone.

// "yyyy-mm-dd", "yyyy-mm-dd hh" or "yyyy-mm-dd hh:mm:ss" with two-digit fields, read as far as it
// goes; nothing when the text has another form or names no real day or time.
std::optional<QDateTime> ReadWallClock(QStringView text);

// "yyyy-mm-dd hh:mm:ss" of a wall-clock value.
QString WallClockText(const QDateTime &moment);
