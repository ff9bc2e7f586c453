#include "app/DayNumber.h"

qint64 DayNumber(const QDate &date)
{
    static const QDate epoch(1899, 12, 30);
    return epoch.daysTo(date);
}
