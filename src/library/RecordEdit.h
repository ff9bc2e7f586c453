#pragma once

#include "app/Result.h"

#include <QString>

class AlbumDocument;

// A value typed into a record, as the information grid takes it: camera, exposure and file
// values are read-only; a position is written with six decimals, an elevation with one, a
// capture date as "yyyy-mm-dd hh:mm:ss"; an empty position clears it.
Result SetRecordValue(AlbumDocument &document, int index, const QString &key, const QString &text);

// Keys that may be typed, with their short names ("note", "keywords", "date", "lat", "lon",
// "ele", "star"); "" for anything else.
QString EditableKey(const QString &name);
