#pragma once

#include "gps/PhotoMatching.h"

#include <optional>

class AlbumWindow;
class GpsStore;
class Prompter;

// The three ways CoolButtonMatch matches, in the order of its options.
enum class MatchOption { SelectedPhotosWithTracks, AllPhotosWithTracks, SelectedPhotosWithWaypoint };

// Matches the album window's photos (its selection, or all of them) with the tracks as the
// album's long work ("Matching", with progress and Cancel): the store is copied, since matching
// reads the points from their files on the worker, and the report comes through the album's
// prompter. False when the album is busy with other work.
bool MatchAlbumWithTracks(AlbumWindow &album, MatchScope scope, const GpsStore &store, const MatchWindow &window);

// The whole Match command of the GPS window: without an album the user is told what matching
// needs (through `prompter`), as the library does for an album without photos or tracks.
void RunMatchOption(AlbumWindow *album, MatchOption option, const GpsStore &store, const MatchWindow &window,
                    const std::optional<Waypoint> &waypoint, Prompter &prompter);
