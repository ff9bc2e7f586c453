#include "library/OutsideChanges.h"

#include "library/AlbumDocument.h"
#include "library/HiddenFiles.h"
#include "library/PhotoRecord.h"

#include <QDateTime>
#include <QDir>

namespace {

constexpr qint64 ImportMarginSeconds = 15;
const QString RecordTimeFormat = QStringLiteral("yyyy-MM-dd HH:mm:ss");

QString FileTimeText(const QFileInfo &file)
{
    return file.lastModified().toString(RecordTimeFormat);
}

bool RecordChanged(const AlbumDocument &document, int index, const QFileInfo &file)
{
    return IsChangedOutside(document.Record(PhotoRecord::Size, index), document.Record(PhotoRecord::Modified, index),
                            document.Record(PhotoRecord::Archived, index), file.size(), FileTimeText(file));
}

} // namespace

bool IsChangedOutside(const QString &recordSize, const QString &recordModified, const QString &recordArchived,
                      qint64 fileSize, const QString &fileModified)
{
    if (recordSize != QString::number(fileSize))
        return true;
    if (fileModified == recordModified)
        return false;
    const QDateTime modified = QDateTime::fromString(fileModified, RecordTimeFormat);
    const QDateTime archived = QDateTime::fromString(recordArchived, RecordTimeFormat);
    // Without an import moment to measure from, a different time is a change.
    return !archived.isValid() || archived.secsTo(modified) > ImportMarginSeconds;
}

OutsideChanges FindOutsideChanges(const AlbumDocument &document)
{
    const QString folder = GetPhotoFilesPath(document.Path());
    const QSet<QString> hidden = HiddenNames(folder);
    const bool allowNonJpeg = PhotoRecord::AllowNonJpeg();
    QFileInfoList files;
    QStringList fileNames;
    for (const QFileInfo &file : QDir(folder).entryInfoList(QDir::Files, QDir::Name)) {
        if (!hidden.contains(file.fileName()) && PhotoRecord::IsPhotoFile(file.fileName(), allowNonJpeg)) {
            files << file;
            fileNames << file.fileName();
        }
    }
    // Records naming no bare file take no part; every other record looks for its file by the
    // one rule of names, so that a record is never taken for another record's file.
    QStringList recordNames = document.RecordFiles();
    for (QString &name : recordNames) {
        if (!PhotoRecord::IsBareFileName(name))
            name.clear();
    }
    const QList<int> fileOf = PhotoRecord::MatchNames(recordNames, fileNames);

    OutsideChanges changes;
    std::vector<bool> recorded(static_cast<std::size_t>(files.size()), false);
    for (int i = 1; i <= document.RecordCount(); ++i) {
        const int file = fileOf[i - 1];
        if (recordNames[i - 1].isEmpty())
            continue;
        if (file < 0) {
            changes.missing << i;
            continue;
        }
        recorded[static_cast<std::size_t>(file)] = true;
        if (RecordChanged(document, i, files[file]))
            changes.changed << i;
    }
    for (qsizetype f = 0; f < files.size(); ++f) {
        if (!recorded[static_cast<std::size_t>(f)])
            changes.added << files[f].absoluteFilePath();
    }
    return changes;
}

QList<int> FindChangedFiles(const AlbumDocument &document)
{
    QList<int> changed;
    for (int i = 1; i <= document.RecordCount(); ++i) {
        const QString path = document.PhotoFilePath(i);
        const QFileInfo file(path);
        if (!path.isEmpty() && file.exists() && RecordChanged(document, i, file))
            changed << i;
    }
    return changed;
}
