#pragma once

#include <QStringView>

// Numbers in settings, records and lists are read leniently: leading blanks, a sign, digits, a
// decimal part and an exponent are taken as far as they go; text that does not start with a
// number, and a number too large to hold, read as 0.
double LenientNumber(QStringView text);
