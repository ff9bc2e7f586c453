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

// A GPS coordinate as signed decimal degrees with six decimals ("0.000000"), from its reference
// ("N", "S", "E" or "W") and its "degrees:minutes:seconds" text. positiveReference is "N" for a
// latitude and "E" for a longitude; any other reference negates the value. Empty when the text
// does not split into three parts.
QString SignedDegreesText(const QString &reference, const QString &sexagesimal, const QString &positiveReference);
