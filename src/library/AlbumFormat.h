#pragma once

#include "datalist/DataList.h"
#include "app/Result.h"

#include <QString>

// The album on disk. An album is a folder A holding the data folder "studio.data" with the
// property list "studio.plist" and the thumbnails; a package album ("*.album" made while
// DefaultAlbumFormat is 1) keeps its photos in "studio.data/size_full".
namespace AlbumFormat {

inline const QString StudioData = QStringLiteral("studio.data");
inline const QString StudioPlist = QStringLiteral("studio.plist");
inline const QString ThumbnailFolderName = QStringLiteral("size_thumbnail");
inline const QString FullFolderName = QStringLiteral("size_full");
inline const QString DropFolderName = QStringLiteral("raw.files");
inline const QString NonPhotoFolderName = QStringLiteral("non-photo.files");
inline const QString StudioFormat = QStringLiteral("com.veltrix.orvana.studio.datalist");

QString StudioDataPath(const QString &album);
QString StudioPlistPath(const QString &album);
QString ThumbnailFolder(const QString &album);
// The album's drop folder, "raw.files", whose photos the album takes in when it opens.
QString DropFolderPath(const QString &album);

} // namespace AlbumFormat

// True when the path's last six characters, in any case, are ".album".
bool IsAlbum(const QString &albumPath);
// The folder name less a trailing ".album".
QString AlbumTitleFromPath(const QString &albumPath);
// "studio.data/size_full" when it exists, else the album folder itself.
QString GetPhotoFilesPath(const QString &albumPath);
// The same, relative to the folder that holds the album.
QString GetPhotoFilesPathRelative(const QString &albumPath);

// A fresh time-based identifier: identifications name folders on publishing servers, so no two
// albums may ever share one.
QString NewAlbumIdentification();

// Makes the data folders and a fresh "studio.plist" for the album at albumPath.
Result CreateBlankStudioPackage(const QString &albumPath);

// Prepares a folder as an album folder (data folder, hidden when it should be, Desktop.ini for
// packages); errors are ignored.
void FormatNewDoc(const QString &path);
void WriteDesktopIni(const QString &albumPath);

// Makes a new album at path, as the windows' new album does: the folder and its data folder as
// FormatNewDoc prepares it. A package album ("*.album" while DefaultAlbumFormat is 1) then opens:
// its first opening makes the blank "studio.plist" and "studio.data/size_full" for its photos, and
// takes in the photos it already holds.
Result CreateNewAlbum(const QString &path);

enum class OpenAlbumStatus { Nothing, Ready, Refused };
// The opening rules applied to a folder before its list is loaded: an empty path does nothing,
// a missing folder or a package without its data folder is refused, a plain folder becomes a
// folder album, and a missing "studio.plist" is made blank.
OpenAlbumStatus PrepareAlbumForOpening(const QString &path);

enum class ConvertStatus { Converted, Missing, NonPhotoContained, AlreadyAlbum, TargetExists, MoveFailed };
struct ConvertResult {
    ConvertStatus status;
    QString albumPath; // the new album, when converted
};
// Turns a folder of photos into "<folder>.album": the folder itself is renamed, or, for package
// albums, a new package is made and the folder becomes its drop folder, so that opening imports
// every photo into "studio.data/size_full".
ConvertResult ConvertDoc(const QString &path);
