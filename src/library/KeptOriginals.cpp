#include "library/KeptOriginals.h"

#include "library/AlbumFormat.h"
#include "library/Trash.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace KeptOriginals {

QString Folder(const QString &albumPath)
{
    return AlbumFormat::StudioDataPath(albumPath) + u'/' + FolderName;
}

QString PathOf(const QString &albumPath, const QString &file)
{
    return Folder(albumPath) + u'/' + file;
}

Result Keep(const QString &photoPath, const QString &keptPath, bool *madeNow)
{
    if (madeNow)
        *madeNow = false;
    if (QFileInfo::exists(keptPath))
        return Result::Success();
    const QFileInfo photo(photoPath);
    if (!photo.isFile())
        return Result::Failure(QStringLiteral("%1: the photo is missing").arg(photoPath));
    if (!QDir().mkpath(QFileInfo(keptPath).absolutePath()))
        return Result::Failure(QStringLiteral("%1: the folder cannot be made").arg(QFileInfo(keptPath).absolutePath()));
    // Copied under a passing name and renamed: a copy cut short never passes for the original.
    const QString partial = keptPath + QStringLiteral(".part");
    QFile::remove(partial);
    QFile source(photoPath);
    if (!source.copy(partial))
        return Result::Failure(QStringLiteral("%1 cannot be kept: %2").arg(photoPath, source.errorString()));
    QFile copy(partial);
    const bool timed = copy.open(QIODevice::ReadWrite) &&
                       copy.setFileTime(photo.lastModified(), QFileDevice::FileModificationTime);
    copy.close();
    if (!timed || !QFile::rename(partial, keptPath)) {
        QFile::remove(partial);
        return Result::Failure(QStringLiteral("%1 cannot be kept").arg(photoPath));
    }
    if (madeNow)
        *madeNow = true;
    return Result::Success();
}

Result Restore(const QString &keptPath, const QString &photoPath)
{
    if (!QFileInfo(keptPath).isFile())
        return Result::Failure(QStringLiteral("%1: no original is kept").arg(photoPath));
    // rename() replaces the photo in one step: it is the edited file or the original, never half.
    if (std::rename(QFile::encodeName(keptPath).constData(), QFile::encodeName(photoPath).constData()) != 0)
        return Result::Failure(QStringLiteral("%1: %2").arg(photoPath, QString::fromLocal8Bit(std::strerror(errno))));
    return Result::Success();
}

Result Trash(const QString &keptPath)
{
    return QFileInfo::exists(keptPath) ? MoveToTrash(keptPath) : Result::Success();
}

qint64 RoomTaken(const QString &albumPath)
{
    qint64 bytes = 0;
    QDirIterator files(Folder(albumPath), QDir::Files | QDir::Hidden | QDir::System);
    while (files.hasNext())
        bytes += files.nextFileInfo().size();
    return bytes;
}

Result LetGo(const QString &albumPath)
{
    QDir folder(Folder(albumPath));
    if (folder.exists() && !folder.removeRecursively())
        return Result::Failure(QStringLiteral("%1 cannot be removed").arg(folder.path()));
    return Result::Success();
}

} // namespace KeptOriginals
