#pragma once

#include "PhotoReading.h"

#include <QString>

enum class PlacedHow { Copy, Move, AlreadyThere };

// One photo brought into an album: placed in the photo files folder, given its thumbnail, its
// file facts and its tags, each with the reason when it could not be had. Safe to run for
// several photos at once.
struct ImportedPhoto : PhotoReading {
    bool ok = false;  // false: the file could not be placed, so no record is made
};

ImportedPhoto PlaceAndReadPhoto(const QString &source, const QString &destination, PlacedHow how,
                                const QString &thumbnailPath, ThumbnailSource thumbnailSource);
