// The document's actions on notes, keywords, searches and deletion.
#include "library/AlbumDocument.h"

#include "library/KeptOriginals.h"
#include "library/Keywords.h"
#include "app/Language.h"
#include "library/PhotoRecord.h"
#include "app/Prompter.h"
#include "library/Trash.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>

namespace {

QString Localized(const char *key, const char *section)
{
    return GetLocalizedString(QLatin1String(key), QLatin1String(section));
}

} // namespace

std::optional<QList<int>> AlbumDocument::ActionSearch(const QString &text) const
{
    if (text.isEmpty())
        return std::nullopt;
    QList<int> found;
    for (int i = 1; i <= RecordCount(); ++i) {
        for (const QString &key : {PhotoRecord::Description, PhotoRecord::Keywords, PhotoRecord::File}) {
            if (Record(key, i).contains(text, Qt::CaseInsensitive)) {
                found << i;
                break;
            }
        }
    }
    return found;
}

QList<int> AlbumDocument::ActionHighlightNotedPhotos() const
{
    QList<int> noted;
    for (int i = 1; i <= RecordCount(); ++i) {
        if (!Record(PhotoRecord::Description, i).isEmpty())
            noted << i;
    }
    return noted;
}

QString AlbumDocument::FoundLabel(int count)
{
    return count == 0 ? QStringLiteral("0 Item Found") : QString::number(count) + QStringLiteral(" Items Found");
}

void AlbumDocument::SetNoteForPhotos(const QList<int> &indices, const QString &note)
{
    SetValueOfRecords(indices, PhotoRecord::Description, note);
}

bool AlbumDocument::ActionSetNoteForSelectedPhotos(const QList<int> &indices, Prompter &prompter)
{
    if (indices.isEmpty())
        return false;
    const std::optional<QString> note = prompter.AskText(Localized("SetNoteForSelectedPhotos", "OrvDocument"),
                                                         Localized("MessageSetNoteForSelectedPhotos", "OrvDocument"),
                                                         Record(PhotoRecord::Description, indices.front()));
    if (!note)
        return false;
    SetNoteForPhotos(indices, *note);
    return true;
}

QString AlbumDocument::ActionKeywordsCopy(int index) const
{
    return Record(PhotoRecord::Keywords, index);
}

void AlbumDocument::ActionKeywordsPaste(const QList<int> &indices, const QString &keywords)
{
    for (const int index : indices) {
        if (Valid(index))
            SetRecordValue(index, PhotoRecord::Keywords, Keywords::Merge(Record(PhotoRecord::Keywords, index), keywords));
    }
}

// Each photo goes to the trash on its own, before its record goes: a photo the trash refuses (no
// trash on its volume, no permission) keeps its record and thumbnail, and the report says why.
AlbumDocument::DeleteReport AlbumDocument::DeleteItems(QList<int> indices)
{
    std::sort(indices.begin(), indices.end(), std::greater<>());
    indices.erase(std::unique(indices.begin(), indices.end()), indices.end());
    DeleteReport report;
    QList<int> removed;
    for (const int index : indices) {
        if (index < 1 || index > RecordCount())
            continue;
        const QString photo = PhotoFilePath(index);
        if (photo.isEmpty() && !Record(PhotoRecord::File, index).isEmpty()) {
            report.leftAlone.prepend(index);
            continue;
        }
        if (!photo.isEmpty() && QFileInfo::exists(photo)) {
            if (const Result trashed = MoveToTrash(photo); !trashed) {
                report.failures.prepend(FileProblem{photo, trashed.message});
                continue;
            }
        }
        if (!photo.isEmpty()) {
            QFile::remove(ThumbnailFilePath(index));
            // The kept original follows its photo to the trash, where the two can be restored
            // together. Left behind, it would later be taken for the original of another photo
            // given the same name, so when the trash refuses it, it goes for good.
            const QString original = KeptOriginals::PathOf(path, Record(PhotoRecord::File, index));
            if (!KeptOriginals::Trash(original))
                QFile::remove(original);
        }
        removed << index;
    }
    RemoveRecords(removed);
    return report;
}

bool AlbumDocument::ActionDelete(const QList<int> &indices, View shownIn, Prompter &prompter)
{
    if (indices.isEmpty())
        return false;
    const char *message = shownIn == View::Detail ? "MessageDeletePhotoInDetail" : "MessageDeletePhotoInThumbnail";
    if (!prompter.AskYesNo(Localized("MoveToTrash", "Form"), Localized(message, "OrvDocument")))
        return false;
    QStringList failures;
    for (const FileProblem &failure : DeleteItems(indices).failures)
        failures << failure.reason;
    if (!failures.isEmpty())
        prompter.Error(Localized("MoveToTrash", "Form"), failures.join(u'\n'));
    return true;
}
