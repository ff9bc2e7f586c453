#pragma once

#include "ImageTags.h"
#include "PhotoFileFacts.h"
#include "Result.h"
#include "Thumbnail.h"

#include <QString>

enum class PlacedHow { Copy, Move, AlreadyThere };

// One photo brought into an album: placed in the photo files folder, given its thumbnail, its
// file facts and its tags. Safe to run for several photos at once.
struct ImportedPhoto {
    Result placed;            // failed, with the reason: the file is not in the album, no record is made
    QString warning;          // placed, but not all of it could be read (its thumbnail, say); "" when all was
    PhotoFileFacts facts;     // size, modified, width, height
    QString created;          // "yyyy-mm-dd hh:mm:ss"
    QString compressedBitsPerPixel;
    ImageTags tags;
};

ImportedPhoto PlaceAndReadPhoto(const QString &source, const QString &destination, PlacedHow how,
                                const QString &thumbnailPath, ThumbnailSource thumbnailSource);
