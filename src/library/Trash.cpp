#include "library/Trash.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStorageInfo>

Result MoveToTrash(const QString &path)
{
    const QString failed = QStringLiteral("%1 could not be moved to the trash: %2");
    // Without the data folder that holds the home trash, Qt falls back to "files" and "info"
    // folders relative to the working folder: the photo would vanish into wherever the program
    // was started. The folder is made first; when it cannot be, a file that would go to the home
    // trash is not sent anywhere, and such a result of Qt's is undone.
    const QString dataHome = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    const bool homeTrash = QDir().mkpath(dataHome) && QFileInfo(dataHome).isDir();
    if (!homeTrash && QStorageInfo(QFileInfo(path).absolutePath()) == QStorageInfo(QDir::homePath()))
        return Result::Failure(failed.arg(path, QStringLiteral("there is no trash, as the folder %1 cannot be made").arg(dataHome)));
    QString inTrash;
    if (!QFile::moveToTrash(path, &inTrash)) {
        const QFileInfo folder(QFileInfo(path).absolutePath());
        return Result::Failure(failed.arg(path, folder.isWritable() ? QStringLiteral("there is no trash on its volume, or no permission to use it")
                                                                    : QStringLiteral("its folder %1 is not writable").arg(folder.filePath())));
    }
    if (QFileInfo(inTrash).isRelative()) {
        QFile::rename(inTrash, path);
        QFile::remove(QStringLiteral("info/%1.trashinfo").arg(QFileInfo(inTrash).fileName()));
        return Result::Failure(failed.arg(path, QStringLiteral("there is no trash on its volume")));
    }
    return Result::Success();
}
