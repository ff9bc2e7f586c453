#pragma once

#include "cli/CliCommand.h"

// The gps verbs that work on an album, for the group's table.
std::vector<CliVerb> GpsAlbumVerbs();

// "geocode TEXT": a place found as the map dialogs find it.
CliVerb GpsGeocodeVerb();
