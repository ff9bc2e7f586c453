#include "gps/StoreFiles.h"

#include "app/Language.h"
#include "app/Prompter.h"

#include <QFile>
#include <cstdio>

namespace StoreFiles {

QString BackupPath(const QString &path)
{
    return path + QStringLiteral(".bak");
}

Result SaveWithBackup(const QString &path, const std::function<bool(const QString &, QString *)> &write)
{
    if (QFile::exists(path)) {
        QFile::remove(BackupPath(path));
        if (!QFile::copy(path, BackupPath(path)))
            return Result::Failure(QStringLiteral("Cannot keep a backup of %1.").arg(path));
    }
    QString error;
    return write(path, &error) ? Result::Success() : Result::Failure(error);
}

Result ReplaceWithBackup(const QString &finished, const QString &path)
{
    if (QFile::exists(path)) {
        QFile::remove(BackupPath(path));
        if (!QFile::rename(path, BackupPath(path)))
            return Result::Failure(QStringLiteral("Cannot keep a backup of %1.").arg(path));
    }
    if (!QFile::rename(finished, path))
        return Result::Failure(QStringLiteral("Cannot write %1.").arg(path));
    return Result::Success();
}

DataList::LoadResult LoadWithBackup(const QString &path, const std::function<DataList::LoadResult(const QString &)> &load, Prompter *prompter)
{
    if (!QFile::exists(path))
        return {DataList::LoadStatus::Unreadable, QStringLiteral("%1 does not exist.").arg(path)};
    const DataList::LoadResult loaded = load(path);
    const QString backup = BackupPath(path);
    if (loaded || !QFile::exists(backup))
        return loaded;
    if (prompter) {
        prompter->Error(GetLocalizedString(QStringLiteral("GPSLogManager"), QStringLiteral("Form")),
                        GetLocalizedString(QStringLiteral("DataFileError"), QStringLiteral("System")));
    }
    const DataList::LoadResult restored = load(backup);
    if (!restored)
        return loaded;
    // The copy is made beside the file and renamed over it, so the damaged file stays until a
    // whole replacement is there.
    const QString copy = path + QStringLiteral(".restoring");
    QFile::remove(copy);
    if (QFile::copy(backup, copy) && std::rename(QFile::encodeName(copy).constData(), QFile::encodeName(path).constData()) != 0)
        QFile::remove(copy);
    return restored;
}

} // namespace StoreFiles
