#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <utility>

class TagReader;

// The values of a photo's tags in the forms a photo record keeps. Every field is text; "" means
// the photo does not hold the value. Which tags fill which field is TagTable's business.
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
    QString compressedBitsPerPixel;
    QString caption;
    QString keywords;         // "a;b;"
    QString latitude;         // signed decimal degrees, "0.000000"
    QString longitude;

    // Fills every field from the photo's tags; a file without tags, or one that cannot be read,
    // leaves them all empty.
    void LoadExifTags(const QString &photoPath);
    void LoadExifTags(const TagReader &reader);

    // The photo record keys these values fill, in the record's order, as an imported record
    // takes them: the camera keys always, the others only when the photo holds a value.
    QList<std::pair<QString, QString>> RecordValues() const;
};

// The tags of many photos, read on every core; in the order of the paths.
QList<ImageTags> LoadExifTagsOfFiles(const QStringList &photoPaths);
