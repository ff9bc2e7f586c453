#pragma once

#include <Qt>

// What the album model gives each row (one photo record) beyond Qt::DisplayRole, the caption.
// The grid, the detail view and the side panel all read records through these.
enum AlbumRole {
    RecordIndexRole = Qt::UserRole + 1, // int: the record's index in the album's list, from 1
    FileRole,                           // QString: the record's "File"
    PhotoPathRole,                      // QString: the photo's full path, "" when it names no bare file
    ThumbnailPathRole,                  // QString: the thumbnail's full path
    StarRole,                           // bool
    HighlightRole,                      // bool: found by the last search or date find of this view
    DescriptionRole,                    // QString: the note
    KeywordsRole,                       // QString: "a;b;"
    CaptureDateRole,                    // QString: "CaptureDate" as stored
    RecordRole,                         // QVariantMap: every key of the record, for the detail view's facts
};
