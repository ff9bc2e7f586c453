#pragma once

#include "imaging/ColourTables.h"
#include "imaging/PhotoFileFacts.h"
#include "imaging/Picture.h"
#include "app/Result.h"

#include <QString>

// The editing commands on photo files. Each rewrites the file in place, whole or not at all, and
// keeps its EXIF, IPTC and XMP tags. The outcome carries what the photo's record must take over:
// the file's new size and time and the picture's new width and height. When a thumbnail path is
// given, that thumbnail is made again from the edited photo. An edit that would lose part of the
// file (pages, frames, sample depth, compression, tags) is refused and the file left as it was.
struct EditOutcome {
    Result result;     // success: the file now holds the edited photo
    PhotoFileFacts facts;
    Result thumbnail;  // the thumbnail made again; its failure does not undo the edit
};

enum class PhotoEffect { Enhance, BlackAndWhite, Sepia };

// A JPEG is never re-encoded to turn it: its blocks move when its size allows, else its
// orientation tag turns (see RotatePhotoFile); any other photo is decoded, turned and written again.
EditOutcome RotatePhotoFile(const QString &photoPath, Turn turn, const QString &thumbnailPath = {});
EditOutcome AdjustPhotoFile(const QString &photoPath, const ColourTables &tables, const QString &thumbnailPath = {});
EditOutcome ApplyEffectToPhotoFile(const QString &photoPath, PhotoEffect effect, const QString &thumbnailPath = {});
EditOutcome CropPhotoFile(const QString &photoPath, const CropRectangle &rectangle, const QString &thumbnailPath = {});

// The JPEG quality of an edited photo: high enough that one edit leaves no visible trace.
constexpr int EditedJpegQuality = 90;
