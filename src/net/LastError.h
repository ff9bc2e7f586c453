#pragma once

#include "app/Result.h"

#include <QString>

// Where an engine's internal result meets its public boolean-plus-LastError interface: a failure
// leaves its reason in `lastError`, a success leaves the previous text standing.
inline bool ReportInto(QString &lastError, const Result &result)
{
    if (!result)
        lastError = result.message;
    return result.ok;
}
