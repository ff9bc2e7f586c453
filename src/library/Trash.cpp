#include "Trash.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

Result MoveToTrash(const QString &path)
{
    // Without the data folder that holds the home trash, Qt falls back to "files" and "info"
    // folders relative to the working folder: the photo would vanish into wherever the program
    // was started. The folder is made first, and such a result is undone.
    QDir().mkpath(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
    QString inTrash;
    if (!QFile::moveToTrash(path, &inTrash))
        return Result::Failure(QStringLiteral("%1 could not be moved to the trash.").arg(path));
    if (QFileInfo(inTrash).isRelative()) {
        QFile::rename(inTrash, path);
        return Result::Failure(QStringLiteral("There is no trash for %1.").arg(path));
    }
    return Result::Success();
}
