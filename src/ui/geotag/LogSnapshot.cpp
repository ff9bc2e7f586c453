#include "ui/geotag/LogSnapshot.h"

#include "gps/GpsLog.h"

LogSnapshot::LogSnapshot(GpsLog *shared) : log(shared)
{
    load = !log || !log->IsLoaded();
    if (log)
        store = log->Copy();
}

Result LogSnapshot::Ready(Prompter &prompter)
{
    if (!load || loaded)
        return Result::Success();
    const Result read = store.Load(&prompter);
    loaded = read.ok;
    return read;
}

void LogSnapshot::HandBack()
{
    // Only a store read here: one copied from the log would replace changes made meanwhile.
    if (loaded && log && !log->IsLoaded())
        log->Adopt(store);
}
