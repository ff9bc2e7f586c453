#pragma once

#include <QList>

#include "imaging/ColourTables.h"
#include "imaging/PhotoEdits.h"

class AlbumDocument;
class ProgressSink;

// Edits of an album's photos: each file is rewritten in place with its tags kept, its thumbnail
// made again, and its record given the file's new size, time and pixel size. Records naming no
// bare file are left alone. Each returns how many photos were changed.
int RotatePhotos(AlbumDocument &document, const QList<int> &indices, Turn turn, ProgressSink &progress);
int ApplyEffectToPhotos(AlbumDocument &document, const QList<int> &indices, PhotoEffect effect, ProgressSink &progress);
int AdjustPhotos(AlbumDocument &document, const QList<int> &indices, const AdjustSliders &sliders, ProgressSink &progress);
int CropPhoto(AlbumDocument &document, int index, const CropRectangle &rectangle);
// The same as long work: the document reached only through progress.Apply.
int CropPhoto(AlbumDocument &document, int index, const CropRectangle &rectangle, ProgressSink &progress);

// Each edit above first keeps the photo's file as it was (KeptOriginals.h). This puts the kept
// file back in place of each photo that has one and gives the record the file's size, time and
// pixel size as an import reads them; its thumbnail is made again. Returns the photos reverted;
// failures are in the messages.
int RevertPhotos(AlbumDocument &document, const QList<int> &indices, ProgressSink &progress, QStringList *failures = nullptr);

// The menu's quarter turns of the photos a view chose. The document is read and changed only
// inside progress.Apply, the files are edited outside it.
int ActionRotateLeft(AlbumDocument &document, const QList<int> &indices, ProgressSink &progress);
int ActionRotateRight(AlbumDocument &document, const QList<int> &indices, ProgressSink &progress);

// Captions, keywords and positions of the records written into their files through one ExifTool
// process; each record then takes its file's new size and time. Returns the photos written;
// failures are in the messages.
int WriteMetadataOfPhotos(AlbumDocument &document, const QList<int> &indices, ProgressSink &progress,
                          QStringList *failures = nullptr);
