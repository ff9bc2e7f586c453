#pragma once

#include "imaging/ImageTags.h"
#include "imaging/PhotoFileFacts.h"
#include "app/Result.h"
#include "imaging/Thumbnail.h"

#include <QString>

// Everything an import learns from one photo file, with the reason for each part it could not
// learn, so that the importer can tell the user which photos came in damaged.
struct PhotoReading {
    PhotoFileFacts facts;  // size, modified, and the picture's width and height
    QString created;       // "yyyy-mm-dd hh:mm:ss"
    ImageTags tags;
    Result thumbnail;      // failure: no thumbnail was made (most often: the photo does not decode)
    Result tagsRead;       // failure: the tags are damaged beyond reading (a photo without tags is fine)
    Result pixelSize;      // failure: neither the tags nor the picture's header give its size
};

// Makes the photo's thumbnail, reads its file facts, its tags and its size in pixels. The size
// is the tags' where they state it, else the decoder's reading of the picture's header (which
// decodes no pixels). Safe to run for several photos at once.
PhotoReading ReadPhoto(const QString &photoPath, const QString &thumbnailPath, ThumbnailSource thumbnailSource);
