#include "library/AlbumDiscovery.h"

#include "library/AlbumFormat.h"
#include "library/HiddenFiles.h"

#include <QDir>
#include <QFileInfo>

namespace {

const QDir::Filters Subfolders = QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden;

bool IsHiddenIn(const QFileInfo &entry, const QSet<QString> &hiddenNames)
{
    return entry.fileName().startsWith(u'.') || hiddenNames.contains(entry.fileName());
}

bool IsJpegName(const QString &name)
{
    const QString suffix = QFileInfo(name).suffix().toLower();
    return suffix == QLatin1String("jpg") || suffix == QLatin1String("jpeg") || suffix == QLatin1String("jpe");
}

void CollectSearchable(const QString &folder, QStringList &albums)
{
    const QSet<QString> hidden = HiddenNames(folder);
    for (const QFileInfo &entry : QDir(folder).entryInfoList(Subfolders, QDir::Name)) {
        if (IsHiddenIn(entry, hidden))
            continue;
        if (entry.suffix().compare(QLatin1String("album"), Qt::CaseInsensitive) == 0) {
            if (QFileInfo::exists(AlbumFormat::StudioPlistPath(entry.filePath())))
                albums << entry.filePath();
        } else if (!entry.isSymLink()) {
            // Links are not followed: a link back up the tree would never end.
            CollectSearchable(entry.filePath(), albums);
        }
    }
}

} // namespace

bool IsShownAlbum(const QString &path)
{
    const QFileInfo entry(path);
    return entry.isDir() && IsAlbum(path) && !IsHidden(path) && QFileInfo(AlbumFormat::StudioDataPath(path)).isDir();
}

QStringList FindAlbums(const QString &folder)
{
    QStringList albums;
    const QSet<QString> hidden = HiddenNames(folder);
    for (const QFileInfo &entry : QDir(folder).entryInfoList(Subfolders, QDir::Name)) {
        if (!IsHiddenIn(entry, hidden) && IsAlbum(entry.filePath())
            && QFileInfo(AlbumFormat::StudioDataPath(entry.filePath())).isDir())
            albums << entry.filePath();
    }
    return albums;
}

QStringList FindPlainSubfolders(const QString &folder)
{
    QStringList folders;
    const QSet<QString> hidden = HiddenNames(folder);
    for (const QFileInfo &entry : QDir(folder).entryInfoList(Subfolders, QDir::Name)) {
        if (!IsHiddenIn(entry, hidden) && !IsAlbum(entry.filePath()))
            folders << entry.filePath();
    }
    return folders;
}

QString TreeNodeCaption(const QString &name, int albums)
{
    return albums > 0 ? name + QStringLiteral(" (") + QString::number(albums) + u')' : name;
}

QStringList FindSearchableAlbums(const QString &domain)
{
    QStringList albums;
    if (IsAlbum(domain) && QFileInfo::exists(AlbumFormat::StudioPlistPath(domain)))
        albums << domain; // a domain may name one album
    else
        CollectSearchable(domain, albums);
    return albums;
}

QStringList AlbumThumbnailFiles(const QString &album)
{
    QStringList files;
    const QDir folder(AlbumFormat::ThumbnailFolder(album));
    for (const QString &name : folder.entryList(QDir::Files | QDir::Hidden, QDir::Name)) {
        if (!name.startsWith(QLatin1String("._")) && IsJpegName(name))
            files << folder.filePath(name);
    }
    return files;
}
