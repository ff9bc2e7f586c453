#pragma once

#include <QString>

// Orvana offers itself for camera cards through a desktop entry handling x-content/image-dcf,
// which desktop environments list when a card with photos is attached; they start the program
// with "/ImportPhotos " and the card's folder.
QString AutoPlayEntryPath();
QString ExpectedAutoPlayCommand();   // the entry's Exec value

// Rewrites the entry when it is missing, when its command differs other than in letter case, or
// when its action text was written while no translation was available. Errors are ignored.
void EnsureAutoPlayHandler();
void RegisterAutoPlayHandler();
