#pragma once

#include <QString>
#include <QStringList>

// Which folders the library shows as albums. A subfolder is an album when it is not hidden, its
// path ends in ".album" in any letter case, and it holds the data folder "studio.data".
bool IsShownAlbum(const QString &path);
// The albums directly inside the folder, in name order, as full paths.
QStringList FindAlbums(const QString &folder);
// The subfolders of the folder that are not albums and not hidden, in name order: the folders a
// library tree shows beneath it.
QStringList FindPlainSubfolders(const QString &folder);
// A tree node's caption: the folder name, followed by " (n)" when it holds n albums (n > 0).
QString TreeNodeCaption(const QString &name, int albums);

// The albums a search goes through inside a domain: the album folders (extension "album", with
// "studio.data/studio.plist") in it and in its plain subfolders at any depth, since a library is
// commonly sorted into folders of albums; hidden folders are left out. Name order.
QStringList FindSearchableAlbums(const QString &domain);

// The album's thumbnails that a cell steps through: the JPEG files of
// "studio.data/size_thumbnail", never those whose names begin with "._" (copies of resource forks
// that only look like photos). Name order, full paths.
QStringList AlbumThumbnailFiles(const QString &album);
