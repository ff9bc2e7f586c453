#pragma once

#include <QList>
#include <QString>
#include <QStringList>

class TagReader;

// The values of a photo's tags in the forms a photo record keeps. Every field is text; "" means
// the photo does not hold the value.
class ImageTags {
public:
    QString cameraMaker;
    QString cameraModel;
    QString dateTaken;        // "yyyy-mm-dd hh:mm:ss"
    QString aperture;         // "F2.8"
    QString focalLength;      // "35.0 mm"
    QString subjectDistance;
    QString shutterSpeed;     // "1/60 s"
    QString flash;            // "ON", "OFF"
    QString isoSpeed;
    QString caption;
    QString keywords;         // "a;b;"
    QString latitude;         // signed decimal degrees, "0.000000"
    QString longitude;

    // Fills every field from the photo's tags; a file without tags, or one that cannot be read,
    // leaves them all empty.
    void LoadExifTags(const QString &photoPath);
    void LoadExifTags(const TagReader &reader);
};

// The tags of many photos, read on every core; in the order of the paths.
QList<ImageTags> LoadExifTagsOfFiles(const QStringList &photoPaths);
