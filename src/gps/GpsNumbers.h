#pragma once

#include <QString>
#include <QStringView>

#include "app/LenientNumber.h"

// An elevation with one decimal, rounded half away from zero on its decimal digits (123.456 is
// "123.5", 1.45 is "1.5"); "0.0" for an empty or non-numeric text.
QString RoundedElevation(QStringView text);
