#pragma once

#include "app/Result.h"

#include <QString>
#include <QStringList>

// What a photo record carries into its file: the note, the keywords (";"-separated) and the
// position. Longitude 0 with latitude 0 means the photo has no position.
struct PhotoMetadata {
    QString description;
    QString keywords;
    double longitude = 0;
    double latitude = 0;
    double elevation = 0;  // metres, negative below sea level

    bool HasText() const;
    bool HasPosition() const;
};

// ExifTool's arguments that write the values into the file, to the tags TagTable names for their
// record keys, in the order the program has always given them: caption and image description
// (and their XMP twins), keywords, then datum, longitude, latitude and altitude. Each argument reaches ExifTool as it is: no quoting, no escaping. When the text
// needs characters beyond Windows-1252, the IPTC record is switched to UTF-8 first, its other
// values carried over. Empty when there is nothing to write.
QStringList ExifToolArguments(const PhotoMetadata &values, const QString &photoPath);

// "0.0#####": at least one decimal, at most six, halves away from zero.
QString UpToSixDecimals(double value);
// "0.0": one decimal, halves away from zero.
QString OneDecimal(double value);

// "exiftool" in the program's Resources folder when it is there, else the one on the PATH.
QString ExifToolProgram();

// How a write went, judged by ExifTool's exit status and its count of files updated, never by
// words in its output (a folder may well be named "Errors"). The failure quotes its errors and
// warnings.
Result ExifToolOutcome(int exitStatus, const QString &output);
