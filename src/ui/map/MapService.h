#pragma once

#include "gps/MapLocatorUrls.h"

#include <QPointer>

class MapPageServer;

// The map of this run, shared by both map dialogs: the view they show (one state, as the user
// left it), the page addresses read at start, and Orvana's own page server while no map host is
// chosen. The server starts the first time a map is shown, so a run without maps opens no port.
class MapService {
public:
    static MapService &Instance();

    // Start-up: the chosen hosts are read once; the addresses follow from them.
    void LoadTemplates();
    MapTemplates Templates();
    MapState &State() { return state; }
    // The built-in server, started on demand; null while a map host is chosen or when it cannot
    // listen.
    MapPageServer *BuiltInServer();

private:
    MapService();
    bool loaded = false;
    QString chosenHost;
    QString sharedHost;
    MapState state;
    QPointer<MapPageServer> server;
};
