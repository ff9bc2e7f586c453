#pragma once

#include "library/AlbumDocument.h"

class Prompter;
class ProgressSink;

struct OpenRequest {
    // Arrange the photos by capture time once open; this also forces the outside-change check.
    bool arrangeByTime = false;
};

// Opens an album the way its window does: the opening rules, the list (a damaged one opens in
// the no-save state), the import of a waiting drop folder, the outside-change check when the
// settings or a new package call for it, and the arrangement when asked. Changes are saved. What
// the opening imported, and what it could not, is in the result's report.
AlbumDocument::OpenResult OpenAlbumDocument(const QString &path, const OpenRequest &request, Prompter &prompter,
                                            ProgressSink &progress);

// The opening rules and the folder layout (AlbumDocument::Prepare), run by work on any thread: the
// document goes to the thread that applies the work's changes.
AlbumDocument::OpenResult PrepareAlbumDocument(const QString &path, ProgressSink &progress);

// Whether opening the album will make its list: a new package, or a folder opened the first time.
bool OpeningMakesList(const QString &path);

// Reads the list of a document made by AlbumDocument::Prepare into it, a batch of records at a
// time, each through progress.Apply, the first batch small: a window shows the first screen of a
// big album at once and the rest fills in behind it. Stops between batches when cancelled (the
// document then stays in the no-save state). A list that cannot be read leaves the document
// empty, in the no-save state, and says why.
DataList::LoadResult StreamAlbumRecords(AlbumDocument &document, ProgressSink &progress);

// What follows the list: the drop folder's import, the outside-change check, the arrangement and
// the save. Returns what was imported.
ImportReport CompleteOpening(AlbumDocument &document, bool listMade, const OpenRequest &request, Prompter &prompter,
                             ProgressSink &progress);

// Re-reads records whose files changed, imports photos that have no record, and asks whether to
// remove the records whose files are gone. Returns the import's report.
ImportReport ActionCheckModified(AlbumDocument &document, Prompter &prompter, ProgressSink &progress);
// Tells the user which existing files changed and re-reads their records.
int ActionCheckExistingPhotoFiles(AlbumDocument &document, Prompter &prompter, ProgressSink &progress);
