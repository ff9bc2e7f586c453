#pragma once

#include <QString>

// How the texts of a photo's tags become the values of its record. Each rule takes the text the
// tag reader gives (empty when the tag is missing) and returns the stored form.

// "2008:07:14 09:30:00 " -> "2008-07-14 09:30:00". Any text that does not make a valid date and
// time of 19 characters, and the all-zero date, give "".
QString DateTakenText(const QString &dateTimeOriginal);

// "ON" when the flash text says it fired, "OFF" for any other text, "" when there is none.
QString FlashState(const QString &flashText);

// "a,b" -> "a;b;"; "" stays "".
QString KeywordsText(const QString &keywordsTag);

// One coordinate as the GPS tags hold it: its reference letter ("N", "S", "E" or "W") and its
// "degrees:minutes:seconds" text.
struct GpsCoordinateTags {
    QString reference;
    QString sexagesimal;
};

// Latitudes are positive towards "N", longitudes towards "E".
enum class GpsAxis { Latitude, Longitude };

// The coordinate as signed decimal degrees with six decimals ("0.000000"); any reference but
// the positive one negates it. Empty when the text does not split into three parts.
QString SignedDegreesText(const GpsCoordinateTags &coordinate, GpsAxis axis);
