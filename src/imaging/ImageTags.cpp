#include "ImageTags.h"

#include "ParallelWork.h"
#include "TagReader.h"
#include "TagRules.h"

void ImageTags::LoadExifTags(const QString &photoPath)
{
    LoadExifTags(TagReader::FromFile(photoPath));
}

void ImageTags::LoadExifTags(const TagReader &reader)
{
    const auto exif = [&reader](const char *name) { return reader.Text(TagFamily::Exif, QLatin1String(name)); };
    const auto gps = [&reader](const char *name) { return reader.Text(TagFamily::Gps, QLatin1String(name)); };

    cameraMaker = exif("Make");
    cameraModel = exif("Model");
    dateTaken = DateTakenText(exif("DateTimeOriginal"));
    aperture = exif("ApertureValue");
    if (aperture.isEmpty())
        aperture = exif("FNumber");
    focalLength = exif("FocalLength");
    subjectDistance = exif("SubjectDistance");
    shutterSpeed = exif("ShutterSpeedValue");
    flash = FlashState(exif("Flash"));
    isoSpeed = exif("ISOSpeedRatings");
    caption = reader.Text(TagFamily::Iptc, QStringLiteral("Caption/Abstract"));
    keywords = KeywordsText(reader.Text(TagFamily::Iptc, QStringLiteral("Keywords")));

    latitude.clear();
    longitude.clear();
    const QString latitudeReference = gps("GPSLatitudeRef");
    if (latitudeReference.isEmpty())
        return;
    const QString latitudeText = SignedDegreesText({latitudeReference, gps("GPSLatitude")}, GpsAxis::Latitude);
    const QString longitudeText = SignedDegreesText({gps("GPSLongitudeRef"), gps("GPSLongitude")}, GpsAxis::Longitude);
    if (latitudeText.isEmpty() || longitudeText.isEmpty())
        return;
    latitude = latitudeText;
    longitude = longitudeText;
}

QList<ImageTags> LoadExifTagsOfFiles(const QStringList &photoPaths)
{
    QList<ImageTags> tags(photoPaths.size());
    ImageTags *const photo = tags.data();
    RunInParallel(photoPaths.size(), [&](qsizetype index) { photo[index].LoadExifTags(photoPaths[index]); });
    return tags;
}
