#pragma once

#include <QList>
#include <QStringList>
#include <vector>

class AlbumDocument;

// What the records say of their files, read from the document in one quick pass so that the
// slow look at the folder can run away from it.
struct RecordedFile {
    QString file;
    QString size;
    QString modified;
    QString archived;
};
std::vector<RecordedFile> RecordedFiles(const AlbumDocument &document);

// What changed in an album's photo files folder while the program was not looking.
struct OutsideChanges {
    QList<int> changed;  // records whose file was rewritten
    QStringList added;   // photo files without a record, full paths, in folder order
    QList<int> missing;  // records whose file is gone
};

// A file is changed when its length differs from the record's "Size", or when its modified time
// differs from the record's "Modified" and lies more than 15 seconds after the record's
// "Archived": a photo touched just after its import (a tag write, say) is not taken as changed.
bool IsChangedOutside(const QString &recordSize, const QString &recordModified, const QString &recordArchived,
                      qint64 fileSize, const QString &fileModified);

// Matches the folder's visible photo files to the records by PhotoRecord::MatchNames. Records
// naming no bare file take no part.
// photoFolder is the album's photo files folder; records are indexed from 1 in their order.
OutsideChanges FindOutsideChanges(const QString &photoFolder, const std::vector<RecordedFile> &records, bool allowNonJpeg);

// The records whose existing file changed, by the same test.
QList<int> FindChangedFiles(const QString &photoFolder, const std::vector<RecordedFile> &records);
