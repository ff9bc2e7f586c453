#pragma once

#include <QString>

// Orvana offers itself for camera cards through a desktop entry handling x-content/image-dcf,
// which desktop environments list when a card with photos is attached; they start the program
// with "/ImportPhotos " and the card's folder.
QString AutoPlayEntryPath();
// Where an installed package keeps the same entry for every user: share/applications beside the
// installed program's bin/.
QString PackagedAutoPlayEntryPath();
QString ExpectedAutoPlayCommand();   // the entry's Exec value

// Rewrites the entry when it is missing, when its command differs other than in letter case, or
// when its action text was written while no translation was available. Errors are ignored.
// Where the package installed the entry system-wide, nothing is written, and an entry written
// by an earlier start is removed so that it cannot shadow the package's.
void EnsureAutoPlayHandler();
void RegisterAutoPlayHandler();
