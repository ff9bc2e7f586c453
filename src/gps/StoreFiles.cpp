#include "StoreFiles.h"

#include "Language.h"
#include "Prompter.h"

#include <QFile>

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

DataList::LoadResult LoadWithBackup(const QString &path, const std::function<DataList::LoadResult()> &load, Prompter *prompter)
{
    if (!QFile::exists(path))
        return {DataList::LoadStatus::Unreadable, QStringLiteral("%1 does not exist.").arg(path)};
    DataList::LoadResult loaded = load();
    const QString backup = BackupPath(path);
    if (loaded || !QFile::exists(backup))
        return loaded;
    if (prompter) {
        prompter->Error(GetLocalizedString(QStringLiteral("GPSLogManager"), QStringLiteral("Form")),
                        GetLocalizedString(QStringLiteral("DataFileError"), QStringLiteral("System")));
    }
    QFile::remove(path);
    if (!QFile::copy(backup, path))
        return loaded;
    return load();
}

} // namespace StoreFiles
