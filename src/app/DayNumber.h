#pragma once

#include <QDate>

// Dates as whole days since 30 December 1899, the day numbers kept in the settings file.
qint64 DayNumber(const QDate &date);
