#pragma once

#include "gps/MapLocatorUrls.h"

#include <optional>

class OrvHTTPEngine;

// [System] MapServer: the map host the user chose; "" means Orvana's own pages on this computer.
QString ChosenMapServer();
// The page addresses for this run: the chosen map host, or `builtInHost` when none is chosen, and
// [System] SharedServer for the shared pointer page.
MapTemplates MapTemplatesFromSettings(const QString &builtInHost);

// Looks a typed place up the way the map dialogs do: a coordinate pair by the locally built reply,
// anything else through the HTTP engine at the search page. Waits for the server: for worker
// threads and the command line only.
std::optional<GeoPosition> SearchPlace(const MapTemplates &templates, const QString &typed, OrvHTTPEngine &engine);
