#pragma once

#include <QString>
#include <QStringView>

// Numbers in GPS texts are read leniently, as the settings are: leading blanks, a sign, digits,
// a decimal part and an exponent are taken as far as they go; text that does not start with a
// number is 0.
double LenientNumber(QStringView text);

// An elevation with one decimal, rounded half away from zero on its decimal digits (123.456 is
// "123.5", 1.45 is "1.5"); "0.0" for an empty or non-numeric text.
QString RoundedElevation(QStringView text);
