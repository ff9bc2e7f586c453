#include "OutsideChanges.h"

#include "AlbumDocument.h"
#include "HiddenFiles.h"
#include "PhotoRecord.h"

#include <QDateTime>
#include <QDir>
#include <QHash>

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
    QHash<QString, int> records;
    for (int i = 1; i <= document.RecordCount(); ++i) {
        const QString file = document.Record(PhotoRecord::File, i);
        if (PhotoRecord::IsBareFileName(file))
            records.insert(file.toLower(), i);
    }
    const QString folder = GetPhotoFilesPath(document.Path());
    const QSet<QString> hidden = HiddenNames(folder);
    const bool allowNonJpeg = PhotoRecord::AllowNonJpeg();

    OutsideChanges changes;
    std::vector<bool> found(static_cast<std::size_t>(document.RecordCount()) + 1, false);
    const QFileInfoList files = QDir(folder).entryInfoList(QDir::Files, QDir::Name);
    for (const QFileInfo &file : files) {
        const QString name = file.fileName();
        if (hidden.contains(name) || !PhotoRecord::IsPhotoFile(name, allowNonJpeg))
            continue;
        const int index = records.value(name.toLower(), 0);
        if (index == 0) {
            changes.added << file.absoluteFilePath();
            continue;
        }
        found[static_cast<std::size_t>(index)] = true;
        if (RecordChanged(document, index, file))
            changes.changed << index;
    }
    for (int i = 1; i <= document.RecordCount(); ++i) {
        if (!found[static_cast<std::size_t>(i)] && PhotoRecord::IsBareFileName(document.Record(PhotoRecord::File, i)))
            changes.missing << i;
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
