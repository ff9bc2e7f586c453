#pragma once

#include "gps/PhotoMatching.h"

#include <QList>

class AlbumWindow;

// Matching on an open album, for the GPS window and the GPS locator alike: the tracks the period
// lists, matched against the photos (record indices: the selected ones, or every one for
// AllPhotos) on the album window's worker, under "Matching" with its Cancel, against a copy of
// the run's GPS log (read first when no window has loaded it yet). The report comes up when it is
// done. False when the album window was busy and nothing started.
bool RunTrackMatch(AlbumWindow &album, MatchScope scope, const QList<int> &photos, const MatchWindow &window);
