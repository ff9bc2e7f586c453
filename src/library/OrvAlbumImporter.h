#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <vector>

class AlbumDocument;
class ProgressSink;

// Values that travel with a photo into its new record ("CaptureDate", "Description", ...).
using PhotoInfo = QMap<QString, QString>;

// Brings files into an open album: each photo is copied (or, from the album's drop folder,
// moved) into the photo files folder under a free name, gets its thumbnail and its tags, and is
// appended as a record. Thumbnails and tags are made on every core a few files at a time, while
// the records are appended in the order of the work list, so the list ends exactly as a
// one-thread run would leave it. A cancelled run keeps what it finished, and nothing half-done.
class OrvAlbumImporter {
public:
    OrvAlbumImporter(); // reads [Layout] FastMakeThumbnail
    void SetDocument(AlbumDocument *document);

    // Files as listed, folders by the files directly in them. Returns the new records' indices.
    QList<int> ImportFiles(const QStringList &paths, ProgressSink &progress);
    // As ImportFiles; then every non-empty value of a path's information goes onto the records
    // made from that path, over what the tags gave.
    QList<int> ImportFilesWithInfo(const QStringList &paths, const std::vector<PhotoInfo> &infos, ProgressSink &progress);
    // The source of each record the last run made, in the order of the returned indices.
    const QStringList &ImportedSources() const { return importedSources; }
    // Rebuilds the current record from its file, keeping what only the user gives (star,
    // elevation, and a note or keywords the file does not hold).
    bool ReimportCurrentFile();
    // Remakes the thumbnail and refreshes "Size", "Modified", "Height" and "Width".
    bool ReloadFile(int index);

private:
    struct Job;
    QList<int> Import(const QStringList &paths, const std::vector<PhotoInfo> &infos, ProgressSink &progress);
    std::vector<Job> Plan(const QStringList &paths) const;
    QString FreeName(const QString &name, const QSet<QString> &reserved) const;
    void ProcessBatch(std::vector<Job> &batch) const;
    void FillRecord(int index, const Job &job, const PhotoInfo &info);
    void ClearDropFolder();

    AlbumDocument *document = nullptr;
    bool fastThumbnails = false;
    QStringList importedSources;
};
