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

bool RecordChanged(const RecordedFile &record, const QFileInfo &file)
{
    return IsChangedOutside(record.size, record.modified, record.archived, file.size(), FileTimeText(file));
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

std::vector<RecordedFile> RecordedFiles(const AlbumDocument &document)
{
    std::vector<RecordedFile> records;
    records.reserve(static_cast<std::size_t>(document.RecordCount()));
    for (int i = 1; i <= document.RecordCount(); ++i) {
        records.push_back({document.Record(PhotoRecord::File, i), document.Record(PhotoRecord::Size, i),
                           document.Record(PhotoRecord::Modified, i), document.Record(PhotoRecord::Archived, i)});
    }
    return records;
}

OutsideChanges FindOutsideChanges(const QString &folder, const std::vector<RecordedFile> &records, bool allowNonJpeg)
{
    const QSet<QString> hidden = HiddenNames(folder);
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
    QStringList recordNames;
    for (const RecordedFile &record : records)
        recordNames << (PhotoRecord::IsBareFileName(record.file) ? record.file : QString());
    const QList<int> fileOf = PhotoRecord::MatchNames(recordNames, fileNames);

    OutsideChanges changes;
    std::vector<bool> recorded(static_cast<std::size_t>(files.size()), false);
    for (int i = 1; i <= static_cast<int>(records.size()); ++i) {
        const int file = fileOf[i - 1];
        if (recordNames[i - 1].isEmpty())
            continue;
        if (file < 0) {
            changes.missing << i;
            continue;
        }
        recorded[static_cast<std::size_t>(file)] = true;
        if (RecordChanged(records[static_cast<std::size_t>(i - 1)], files[file]))
            changes.changed << i;
    }
    for (qsizetype f = 0; f < files.size(); ++f) {
        if (!recorded[static_cast<std::size_t>(f)])
            changes.added << files[f].absoluteFilePath();
    }
    return changes;
}

QList<int> FindChangedFiles(const QString &folder, const std::vector<RecordedFile> &records)
{
    QList<int> changed;
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (!PhotoRecord::IsBareFileName(records[i].file))
            continue;
        const QFileInfo file(folder + u'/' + records[i].file);
        if (file.exists() && RecordChanged(records[i], file))
            changed << static_cast<int>(i + 1);
    }
    return changed;
}
