#pragma once

#include "library/AlbumDocument.h"
#include "library/ImportedPhoto.h"
#include "library/ImportReport.h"

#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>
#include <vector>

class ProgressSink;

// Values that travel with a photo into its new record ("CaptureDate", "Description", ...).
using PhotoInfo = QMap<QString, QString>;

// Brings files into an open album: each photo is copied (or, from the album's drop folder,
// moved) into the photo files folder under a free name, gets its thumbnail and its tags, and is
// appended as a record. Thumbnails and tags are made on every core a few files at a time, while
// the records are appended in the order of the work list, so the list ends exactly as a
// one-thread run would leave it. A cancelled run keeps what it finished, and nothing half-done.
// The document is read and changed only inside ProgressSink::Apply, in list order, and the slow
// part (copies, thumbnails, tags) is done outside it, so a run may go on a worker thread while
// the document stays on the interface thread.
//
// One file, one record: a file that already lies in the photo files folder is taken in place
// only when no record names it (by PhotoRecord::MatchNames) and nothing earlier in the run took
// it. A file there that has its record (the album's own photo, a folder that holds it, photos
// copied and pasted into their own album) is imported as any other file is: copied
// under a free name with a record of its own, so the album never holds two records for a file.
class OrvAlbumImporter {
public:
    OrvAlbumImporter(); // reads [Layout] FastMakeThumbnail and [System] AllowNonJPEG, once
    void SetDocument(AlbumDocument *document);

    // Files as listed, folders by the files directly in them. The report names every file that
    // was not imported, with the reason.
    ImportReport ImportFiles(const QStringList &paths, ProgressSink &progress);
    // As ImportFiles; then every non-empty value of a path's information goes onto the records
    // made from that path, over what the tags gave.
    ImportReport ImportFilesWithInfo(const QStringList &paths, const std::vector<PhotoInfo> &infos, ProgressSink &progress);
    // Rebuilds the record from its file, keeping what the user gave (below).
    bool ReimportFile(int index, ProgressSink &progress);
    // Remakes the thumbnail and refreshes "Size", "Modified", "Height" and "Width".
    bool ReloadFile(int index, ProgressSink &progress);

private:
    struct Job;
    struct Names;
    ImportReport Import(const QStringList &paths, const std::vector<PhotoInfo> &infos, ProgressSink &progress);
    struct Layout;
    std::vector<Job> Plan(const QStringList &paths, const Layout &layout, ImportReport &report) const;
    void ProcessBatch(std::vector<Job> &batch, const Layout &layout) const;
    static RecordValues MakeRecord(const Job &job, const PhotoInfo &info);
    static void ClearDropFolder(const Layout &layout, ImportReport &report);
    ImportedPhoto ReadAgain(int index, ProgressSink &progress, QString *path = nullptr) const;

    AlbumDocument *document = nullptr;
    bool fastThumbnails = false;
    bool allowNonJpeg = false;
};
