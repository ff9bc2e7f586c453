#include "publish/FolderCopy.h"

#include "app/ProgressSink.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

Result CopyFolder(const QString &source, const QString &target, ProgressSink &progress)
{
    const QDir from(source);
    if (!from.exists())
        return Result::Failure(QStringLiteral("%1 does not exist").arg(source));
    if (!QDir().mkpath(target))
        return Result::Failure(QStringLiteral("%1 could not be made").arg(target));
    QDirIterator entries(source, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDirIterator::Subdirectories);
    int done = 0;
    while (entries.hasNext() && !progress.Cancelled()) {
        const QFileInfo entry(entries.next());
        const QString copy = target + u'/' + from.relativeFilePath(entry.filePath());
        if (entry.isDir() ? !QDir().mkpath(copy) : !QFile::copy(entry.filePath(), copy))
            return Result::Failure(QStringLiteral("%1 could not be copied to %2").arg(entry.filePath(), copy));
        progress.Advance(++done);
    }
    return Result::Success();
}

QString FreeDataFolderName(const QString &folder, const QString &base, bool reuseFirst)
{
    const QString first = folder + u'/' + base + QStringLiteral(".data");
    if (reuseFirst || !QFileInfo::exists(first))
        return first;
    for (int n = 1;; ++n) {
        const QString candidate = folder + QStringLiteral("/%1 (%2).data").arg(base).arg(n);
        if (!QFileInfo::exists(candidate))
            return candidate;
    }
}
