#pragma once

#include "publish/AlbumExportArguments.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <utility>

class AlbumDocument;

// One photo to export, with everything the export needs from its record.
struct ExportPhoto {
    QString file;          // the record's bare "File" name
    QString photoPath;
    QString thumbnailPath;
    QList<std::pair<QString, QString>> values; // the exported keys, in their order
    QString Value(const QString &key) const;
};

// What an export reads from the album, taken at once so that the work that follows never touches
// the document again: the album's folders, its texts and the photos chosen.
struct ExportSource {
    QString albumPath;
    QString identification;
    QString title;
    QList<std::pair<QString, QString>> albumTexts; // "Language", "Title", "Identification", "Description", "Keywords"
    QList<ExportPhoto> photos;
    QStringList unsafe; // records naming no bare file, left out
};

// The record keys an exported item carries, in their order.
const QStringList &ExportedItemKeys();

// The photos in album order: with OnlySelected those of `selected` (indices from 1), with
// OnlyNoted those whose note is not empty. Positions are left out when the arguments say so.
ExportSource TakeExportSource(const AlbumDocument &document, const AlbumExportArguments &arguments,
                              const QList<int> &selected);
