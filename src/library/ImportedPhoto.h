#pragma once

#include "imaging/PhotoReading.h"
#include "app/Result.h"

#include <QString>

enum class PlacedHow { Copy, Move, AlreadyThere };

// One photo brought into an album: placed in the photo files folder, given its thumbnail, its
// file facts and its tags, each with the reason when it could not be had. Safe to run for
// several photos at once.
struct ImportedPhoto : PhotoReading {
    Result placed;   // failed, with the reason: the file is not in the album, no record is made
    QString warning; // placed, but not all of it could be read (its thumbnail, say); "" when all was
};

ImportedPhoto PlaceAndReadPhoto(const QString &source, const QString &destination, PlacedHow how,
                                const QString &thumbnailPath, ThumbnailSource thumbnailSource);
