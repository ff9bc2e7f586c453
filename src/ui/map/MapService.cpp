#include "ui/map/MapService.h"

#include "gps/MapPageServer.h"
#include "gps/MapSearch.h"
#include "app/Language.h"
#include "app/Settings.h"

#include <QCoreApplication>

MapService &MapService::Instance()
{
    static MapService service;
    return service;
}

// Until the user moves it, the map shows Greenwich at a town's scale.
MapService::MapService()
{
    state.latitude = 51.477928;
    state.longitude = -0.001545;
    state.level = 12;
}

void MapService::LoadTemplates()
{
    chosenHost = ChosenMapServer();
    sharedHost = ReadSetting(QStringLiteral("System"), QStringLiteral("SharedServer"));
    loaded = true;
}

MapTemplates MapService::Templates()
{
    if (!loaded)
        LoadTemplates();
    state.language = CurrentLanguage();
    if (!chosenHost.isEmpty())
        return MakeMapTemplates(chosenHost, sharedHost);
    // Without its server the pages cannot load, and the failure page says so.
    MapPageServer *own = BuiltInServer();
    return MakeMapTemplates(own ? own->Host() : QStringLiteral("127.0.0.1:0"), sharedHost);
}

MapPageServer *MapService::BuiltInServer()
{
    if (!chosenHost.isEmpty())
        return nullptr;
    if (!server) {
        // Owned by the application, so it closes with it on the interface thread.
        auto *own = new MapPageServer(MapPageSourcesFromSettings(), QCoreApplication::instance());
        if (!own->Listen()) {
            delete own;
            return nullptr;
        }
        server = own;
    }
    return server;
}
