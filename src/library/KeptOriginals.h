#pragma once

#include "app/Result.h"

#include <QString>

// The photo files as they were before their first edit, so that any edit can be taken back.
//
// They sit in the album's own data folder, "studio.data/originals", named as their photos:
// - inside the album, they travel with it when it is copied or moved, and their paths are
//   worked out from the album's path each time, never stored;
// - inside the data folder, which neither the photo listing, the outside-change check, the
//   importer nor any exporter or publisher looks into, they are never taken for photos;
// - on the album's own volume, a revert is a rename: atomic, and the file comes back with its
//   very bytes and modification time.
namespace KeptOriginals {

inline const QString FolderName = QStringLiteral("originals");

QString Folder(const QString &albumPath);
// Where the original of the photo file named `file` (a bare name) is kept.
QString PathOf(const QString &albumPath, const QString &file);

// Keeps a copy of the photo, with its modification time, unless one is kept already: only the
// first edit's photo is the original. `madeNow` tells whether this call made it, so that an edit
// that then fails can let it go again.
Result Keep(const QString &photoPath, const QString &keptPath, bool *madeNow = nullptr);
// Puts the kept original back in place of the photo; the kept copy is then gone.
Result Restore(const QString &keptPath, const QString &photoPath);
// Sends a kept original to the trash, as its photo goes there; nothing to do when none is kept.
Result Trash(const QString &keptPath);

// The bytes the album's kept originals take on disk, and letting them all go for good.
qint64 RoomTaken(const QString &albumPath);
Result LetGo(const QString &albumPath);

} // namespace KeptOriginals
