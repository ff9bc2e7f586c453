#pragma once

#include "app/Result.h"

#include <QByteArray>
#include <QList>
#include <QString>

// A KMZ archive: the document as "doc.kml" at the root and each image under "files/".
struct KmzImage {
    QString name;   // the name inside "files/"
    QString source; // the file on disk
};

Result WriteKmz(const QString &path, const QByteArray &document, const QList<KmzImage> &images);
