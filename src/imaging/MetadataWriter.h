#pragma once

#include "imaging/ExifToolCommand.h"
#include "imaging/PhotoFileFacts.h"
#include "app/Result.h"

#include <QList>
#include <functional>

// How one photo's write went.
struct MetadataWriteReport {
    bool attempted = false;  // false: nothing to write, so nothing was run
    Result result;           // ExifTool's failure, or the first value that did not read back
    PhotoFileFacts facts;    // the file afterwards: the record's new "Size" and "Modified"
};

// Writes the values into the photo with one ExifTool run, then reads the file's tags back to
// check that every value arrived.
MetadataWriteReport WriteMetadata(const QString &photoPath, const PhotoMetadata &values);

struct MetadataWriteJob {
    QString photoPath;
    PhotoMetadata values;
};

// Told before each photo of a batch how many are done; returning false stops the batch there.
using WriteProgress = std::function<bool(qsizetype done, const QString &photoPath)>;

// Writes many photos through one ExifTool process, with the same arguments, checks and result
// per photo as WriteMetadata. The reports follow the jobs; when progress stops the batch they
// end with the last photo handled.
QList<MetadataWriteReport> WriteMetadataBatch(const QList<MetadataWriteJob> &jobs, const WriteProgress &progress = {});

// The program's long-standing entry: false only when there was nothing to write; the outcome of
// the run itself is not reported.
bool WriteMetadataWithExifTool(const QString &photoPath, const QString &description, const QString &keywords,
                               double longitude, double latitude, double elevation);

// Success when the photo's tags now hold the values as WriteMetadata writes them.
Result VerifyWrittenMetadata(const QString &photoPath, const PhotoMetadata &values);
