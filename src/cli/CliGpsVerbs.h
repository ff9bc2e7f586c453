#pragma once

#include "cli/CliCommand.h"

// The gps verbs that work on an album, for the group's table.
std::vector<CliVerb> GpsAlbumVerbs();
