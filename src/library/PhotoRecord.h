#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <functional>

// The keys of a photo record, the classification of files into photos and other files, and the
// rules that keep record file names inside their album.
namespace PhotoRecord {

inline const QString File = QStringLiteral("File");
inline const QString Size = QStringLiteral("Size");
inline const QString Modified = QStringLiteral("Modified");
inline const QString Created = QStringLiteral("Created");
inline const QString Archived = QStringLiteral("Archived");
inline const QString Width = QStringLiteral("Width");
inline const QString Height = QStringLiteral("Height");
inline const QString CameraMaker = QStringLiteral("CameraMaker");
inline const QString CameraModel = QStringLiteral("CameraModel");
inline const QString CaptureDate = QStringLiteral("CaptureDate");
inline const QString Aperture = QStringLiteral("Aperture");
inline const QString FocalLength = QStringLiteral("FocalLength");
inline const QString FocusDistance = QStringLiteral("FocusDistance");
inline const QString ShutterSpeed = QStringLiteral("ShutterSpeed");
inline const QString Flash = QStringLiteral("Flash");
inline const QString ISOSpeed = QStringLiteral("ISOSpeed");
inline const QString CPU = QStringLiteral("CPU");
inline const QString Longitude = QStringLiteral("Longitude");
inline const QString Latitude = QStringLiteral("Latitude");
inline const QString Elevation = QStringLiteral("Elevation");
inline const QString Description = QStringLiteral("Description");
inline const QString Keywords = QStringLiteral("Keywords");
inline const QString Star = QStringLiteral("Star");

// All record keys in their documented order.
const QStringList &AllKeys();

// Photos by extension, without regard to case: JPEG only, or with AllowNonJPEG the other
// formats the image library loads.
bool IsPhotoFile(const QString &fileName, bool allowNonJpeg);
bool IsJpegFile(const QString &fileName);
// [System] AllowNonJPEG, read from the settings each time.
bool AllowNonJpeg();

// A thumbnail is always a JPEG: a JPEG photo's under its own name, any other's with ".jpg" added.
QString ThumbnailName(const QString &fileName);

// A record's "File" must be a bare name: no folder separators, no "." or "..", no NUL. Anything
// else could reach outside the album when joined to its folder, and is left alone.
bool IsBareFileName(const QString &fileName);

// The one rule by which a file name finds its photo, wherever a name meets a record or a file
// (a record's file in the outside-change check, a FILE of the command line, a photo pasted back,
// a free name for an import): names that are equal match; names that differ only in letter case
// ("IMG_0001.JPG", "img_0001.jpg") match only when neither side holds another name of that
// spelling in any case, so an album made on a system that ignores case still finds its files,
// while two files whose names differ only in case stay two photos.
// For each left name, the index of the right name it matches, -1 for none.
QList<int> MatchNames(const QStringList &left, const QStringList &right);
// The index of the right name that one name matches, -1 for none.
int MatchName(const QString &name, const QStringList &right);
// A name for a new file is taken when any name there equals it in any letter case: the rule
// above could pair it with that one, and a system that ignores case could not keep both.
QString FoldedName(const QString &name);
// The name itself when it is not taken, else the first free "base(n).ext" from n = 1.
QString FreeName(const QString &name, const std::function<bool(const QString &)> &taken);

} // namespace PhotoRecord
