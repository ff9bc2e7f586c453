// The document's actions on notes, keywords, searches and deletion.
#include "library/AlbumDocument.h"

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

int AlbumDocument::AppendRecord()
{
    list.AddItem(RecordCount() + 1);
    selected.push_back(false);
    highlighted.push_back(false);
    if (current == 0)
        current = 1;
    return RecordCount();
}

void AlbumDocument::RemoveRecord(int index)
{
    if (index < 1 || index > RecordCount())
        return;
    list.RemoveItem(index);
    selected.erase(selected.begin() + (index - 1));
    highlighted.erase(highlighted.begin() + (index - 1));
    if (current > RecordCount() || current > index)
        --current;
    if (current == 0 && RecordCount() > 0)
        current = 1;
}

QList<int> AlbumDocument::TargetIndices() const
{
    if (view == View::Detail)
        return current >= 1 ? QList<int>{current} : QList<int>{};
    return SelectedIndices();
}

int AlbumDocument::ActionSearch(const QString &text)
{
    if (text.isEmpty())
        return -1;
    QList<int> found;
    for (int i = 1; i <= RecordCount(); ++i) {
        for (const QString &key : {PhotoRecord::Description, PhotoRecord::Keywords, PhotoRecord::File}) {
            if (Record(key, i).contains(text, Qt::CaseInsensitive)) {
                found << i;
                break;
            }
        }
    }
    SetHighlightItems(found);
    return static_cast<int>(found.size());
}

int AlbumDocument::ActionHighlightNotedPhotos()
{
    QList<int> noted;
    for (int i = 1; i <= RecordCount(); ++i) {
        if (!Record(PhotoRecord::Description, i).isEmpty())
            noted << i;
    }
    SetHighlightItems(noted);
    return static_cast<int>(noted.size());
}

QString AlbumDocument::FoundLabel(int count)
{
    return count == 0 ? QStringLiteral("0 Item Found") : QString::number(count) + QStringLiteral(" Items Found");
}

void AlbumDocument::SetNoteForPhotos(const QList<int> &indices, const QString &note)
{
    for (const int index : indices)
        list.SetItemProperty(PhotoRecord::Description, note, index);
    if (!indices.isEmpty())
        DocumentWasModified();
}

bool AlbumDocument::ActionSetNoteForSelectedPhotos(Prompter &prompter)
{
    const QList<int> indices = SelectedIndices();
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

QString AlbumDocument::ActionKeywordsCopy() const
{
    return Record(PhotoRecord::Keywords, current);
}

void AlbumDocument::ActionKeywordsPaste(const QString &keywords)
{
    bool changed = false;
    for (const int index : TargetIndices()) {
        const QString merged = Keywords::Merge(Record(PhotoRecord::Keywords, index), keywords);
        if (merged != Record(PhotoRecord::Keywords, index)) {
            list.SetItemProperty(PhotoRecord::Keywords, merged, index);
            changed = true;
        }
    }
    if (changed)
        DocumentWasModified();
}

// Each photo goes to the trash on its own, before its record goes: a photo the trash refuses (no
// trash on its volume, no permission) keeps its record and thumbnail, and the report says why.
AlbumDocument::DeleteReport AlbumDocument::DeleteItems(QList<int> indices)
{
    std::sort(indices.begin(), indices.end(), std::greater<>());
    indices.erase(std::unique(indices.begin(), indices.end()), indices.end());
    DeleteReport report;
    bool removed = false;
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
        if (!photo.isEmpty())
            QFile::remove(ThumbnailFilePath(index));
        RemoveRecord(index);
        removed = true;
    }
    if (removed)
        DocumentWasModified();
    return report;
}

bool AlbumDocument::ActionDelete(Prompter &prompter)
{
    const QList<int> indices = TargetIndices();
    if (indices.isEmpty())
        return false;
    const char *message = view == View::Detail ? "MessageDeletePhotoInDetail" : "MessageDeletePhotoInThumbnail";
    if (!prompter.AskYesNo(Localized("MoveToTrash", "Form"), Localized(message, "OrvDocument")))
        return false;
    QStringList failures;
    for (const FileProblem &failure : DeleteItems(indices).failures)
        failures << failure.reason;
    if (!failures.isEmpty())
        prompter.Error(Localized("MoveToTrash", "Form"), failures.join(u'\n'));
    return true;
}
