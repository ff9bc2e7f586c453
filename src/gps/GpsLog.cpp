#include "gps/GpsLog.h"

GpsLog::GpsLog(QObject *parent) : QObject(parent) {}

void GpsLog::Adopt(GpsStore changed)
{
    store = std::move(changed);
    loaded = true;
    emit Changed();
}

void GpsLog::Change(const std::function<void(GpsStore &)> &change)
{
    change(store);
    emit Changed();
}
