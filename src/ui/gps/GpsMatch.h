#pragma once

#include "gps/PhotoMatching.h"

#include <optional>

class AlbumWindow;
class Prompter;

// The three ways CoolButtonMatch matches, in the order of its options.
enum class MatchOption { SelectedPhotosWithTracks, AllPhotosWithTracks, SelectedPhotosWithWaypoint };

// The whole Match command of the GPS window: without an album the user is told what matching
// needs (through `prompter`), as the library does for an album without photos or tracks.
void RunMatchOption(AlbumWindow *album, MatchOption option, const MatchWindow &window,
                    const std::optional<Waypoint> &waypoint, Prompter &prompter);
