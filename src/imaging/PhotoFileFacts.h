#pragma once

#include <QDateTime>
#include <QString>

// The facts of a photo file that its record keeps and that change whenever the file is
// rewritten: the record's "Size" and "Modified", and after an edit "Width" and "Height".
struct PhotoFileFacts {
    qint64 size = -1;   // bytes; -1 when the file cannot be read
    QString modified;   // last change, local time, "yyyy-mm-dd hh:mm:ss"
    int width = 0;      // pixels; 0 where the operation did not decode the photo
    int height = 0;
};

PhotoFileFacts ReadPhotoFileFacts(const QString &path);

// A moment in the records' text form, "yyyy-mm-dd hh:mm:ss".
QString RecordDateTimeText(const QDateTime &moment);
