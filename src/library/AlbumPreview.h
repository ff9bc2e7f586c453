#pragma once

#include "app/Result.h"

#include <QDateTime>
#include <QString>

// What the album manager shows of an album without opening it: read straight from its list.
struct AlbumPreview {
    QString path;
    QString name;            // the folder name less ".album"
    QString title;           // document property "Title"
    QString identification;  // document property "Identification"
    int photos = 0;
    qint64 totalSize = 0;    // the sum of the records' "Size"
    QDateTime firstCapture;  // the earliest and latest "CaptureDate" (wall clock); invalid: none
    QDateTime lastCapture;
};

// Reads "studio.data/studio.plist" of the album; fails, saying why, when the list cannot be read.
Result ReadAlbumPreview(const QString &album, AlbumPreview &preview);

// "2024-05-01 09:30 AM": the preview's form of a capture time; "" for none.
QString PreviewDateText(const QDateTime &moment);
// "1,234,567": whole numbers grouped by thousands, whatever the locale.
QString GroupedNumber(qint64 number);
