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

// Re-reads records whose files changed, imports photos that have no record, and asks whether to
// remove the records whose files are gone. Returns the import's report.
ImportReport ActionCheckModified(AlbumDocument &document, Prompter &prompter, ProgressSink &progress);
// Tells the user which existing files changed and re-reads their records.
int ActionCheckExistingPhotoFiles(AlbumDocument &document, Prompter &prompter, ProgressSink &progress);
