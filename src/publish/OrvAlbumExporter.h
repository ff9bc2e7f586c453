#pragma once

#include "publish/AlbumExportArguments.h"
#include "publish/ExportSource.h"
#include "app/Result.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <functional>

class AlbumDocument;
class ProgressSink;
class Prompter;

// What a generation of the export folder did.
struct ExportFolderReport {
    Result result;          // failure: the folder could not be made, or the work was cancelled
    bool cancelled = false;
    QString folder;         // "<album>/album.data"
    int photos = 0;         // items in "album.plist"
    QStringList problems;   // photos whose images could not be made, and records left out
};

// How a web sync ended.
struct WebSyncReport {
    bool failed = false;
    bool cancelled = false;
    QString message;         // what the user was told
    QStringList uploaded;    // the remote paths written, in order
    int photosUploaded = 0;
    QString albumAddress;    // the published album, from the shared service
    QStringList problems;    // photos that could not be rendered, left for the next sync
};

// Turns an album into a web album: the folder "album.data" inside the album folder with up to
// four sizes of each photo, "album.plist" and "album.html"; copies it to the desktop; publishes
// it to an FTP server. Long work: each operation reports progress and stops when cancelled. It
// reads the document only through the progress's Apply, once, at its start.
class OrvAlbumExporter {
public:
    void SetDocument(AlbumDocument &document) { this->document = &document; }
    void SetArguments(const AlbumExportArguments &value) { arguments = value; }
    const AlbumExportArguments &Arguments() const { return arguments; }
    // The photos chosen in the album's view (indices from 1), for OnlySelected.
    void SetSelection(const QList<int> &indices) { selection = indices; }

    // Builds "album.data" anew: the size folders chosen, every photo rendered, then
    // "album.plist" and "album.html". A cancelled or failed generation leaves no "album.data".
    ExportFolderReport GenerateExportFolder(ProgressSink &progress);

    // Generates the export folder and copies it to the desktop as "<identification>.data",
    // asking before it replaces a copy already there. Returns the copy's path, "" when none was
    // made; `openFolder` is called with it once the user has been told.
    QString ExportAlbum(Prompter &prompter, ProgressSink &progress, const std::function<void(const QString &)> &openFolder);

    // Publishes the album by its arguments' server choice: only the photos new or changed since
    // the list on the server are rendered and uploaded, and the list last. `openAddress` is
    // called with the published album's address when the shared service gives one.
    WebSyncReport WebSync(Prompter &prompter, ProgressSink &progress, const std::function<void(const QString &)> &openAddress);

    // The web album page: generates the export folder and returns the path of its "album.html",
    // "" when the generation failed.
    QString LightboxMaker(ProgressSink &progress);

private:
    ExportSource TakeSource(ProgressSink &progress) const;
    // Makes "album.data" with its size folders, list and page; renders the photos when asked.
    ExportFolderReport Generate(const ExportSource &source, ProgressSink &progress, bool render);

    AlbumDocument *document = nullptr;
    AlbumExportArguments arguments;
    QList<int> selection;
};

// The export folder of an album.
QString ExportFolderPath(const QString &albumPath);
