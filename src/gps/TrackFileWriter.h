#pragma once

#include "gps/GpsRecords.h"
#include "app/Result.h"

#include <QByteArrayView>
#include <QTemporaryFile>
#include <memory>

class DataListStreamWriter;

// Writes a track's point file while its points arrive: into a temporary file in the store
// folder, moved into place under the track's name (known only at the end) by Finish. A writer
// destroyed unfinished leaves nothing behind.
class TrackFileWriter {
public:
    TrackFileWriter();
    ~TrackFileWriter();
    TrackFileWriter(const TrackFileWriter &) = delete;
    TrackFileWriter &operator=(const TrackFileWriter &) = delete;

    Result Open();
    // UTF-8 texts of one point.
    void Add(QByteArrayView time, QByteArrayView lat, QByteArrayView lon, QByteArrayView ele);
    // Writes the track's own values after its points and moves the file to GpsStore's name for
    // it, keeping a file already there as its backup.
    Result Finish(const Track &track);

private:
    QTemporaryFile file;
    std::unique_ptr<DataListStreamWriter> writer;
};
