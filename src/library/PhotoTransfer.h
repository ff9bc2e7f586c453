#pragma once

#include "library/ImportReport.h"

#include <QList>
#include <QString>

class AlbumDocument;
class ProgressSink;

// Copy, cut and paste of photos between albums through the information-exchange list: the
// photos' paths travel with their notes, keywords, dates, positions and stars.
bool ActionCopy(const AlbumDocument &document, const QList<int> &indices);
// As copy; the pasted photos then leave this album (their records, thumbnails and files).
bool ActionCut(const AlbumDocument &document, const QList<int> &indices);
// Imports every listed photo that still exists, with its values. After a cut the photos leave
// the album they came from and the list is emptied, so they cannot be pasted twice. Pasting cut
// photos back into their own album changes nothing; copied photos pasted into their own album
// are copies under free names. Returns what was done and what was not. The document is read and
// changed only inside progress.Apply, so a paste may run on a worker thread.
ImportReport ActionPaste(AlbumDocument &document, ProgressSink &progress);
