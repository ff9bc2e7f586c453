#include "AlbumDocument.h"

#include "Language.h"
#include "PhotoRecord.h"
#include "Prompter.h"
#include "Settings.h"

#include <QDir>
#include <QFileInfo>

namespace {

const QString OrvDocument = QStringLiteral("OrvDocument");

std::size_t Slot(int index)
{
    return static_cast<std::size_t>(index - 1);
}

} // namespace

AlbumDocument::AlbumDocument(const QString &folder)
    : path(QDir::cleanPath(folder))
{
}

AlbumDocument::OpenResult AlbumDocument::Open(const QString &path)
{
    OpenResult result;
    result.status = PrepareAlbumForOpening(path);
    if (result.status != OpenAlbumStatus::Ready)
        return result;
    result.document.reset(new AlbumDocument(path));
    AlbumDocument &document = *result.document;
    result.load = document.list.Load(AlbumFormat::StudioPlistPath(path));
    // A list that cannot be read must not be replaced by the empty one shown in its place.
    document.noSave = !result.load;
    document.ResetViewFlags();
    return result;
}

int AlbumDocument::FindRecord(const QString &name) const
{
    for (int i = 1; i <= RecordCount(); ++i) {
        if (Record(PhotoRecord::File, i) == name)
            return i;
    }
    return 0;
}

QString AlbumDocument::PhotoFilePath(int index) const
{
    const QString file = Record(PhotoRecord::File, index);
    return PhotoRecord::IsBareFileName(file) ? GetPhotoFilesPath(path) + u'/' + file : QString();
}

QString AlbumDocument::ThumbnailFilePath(int index) const
{
    const QString file = Record(PhotoRecord::File, index);
    return PhotoRecord::IsBareFileName(file)
        ? AlbumFormat::ThumbnailFolder(path) + u'/' + PhotoRecord::ThumbnailName(file)
        : QString();
}

QList<int> AlbumDocument::UnsafeRecords() const
{
    QList<int> unsafe;
    for (int i = 1; i <= RecordCount(); ++i) {
        if (!PhotoRecord::IsBareFileName(Record(PhotoRecord::File, i)))
            unsafe << i;
    }
    return unsafe;
}

void AlbumDocument::DocumentWasModified()
{
    modified = true;
}

Result AlbumDocument::SaveDocumentToFile()
{
    Result result;
    if (!noSave) {
        QString error;
        if (!list.Save(AlbumFormat::StudioPlistPath(path), &error))
            result = Result::Failure(error);
    }
    modified = false;
    return result;
}

void AlbumDocument::ResetViewFlags()
{
    selected.assign(static_cast<std::size_t>(RecordCount()), false);
    highlighted.assign(static_cast<std::size_t>(RecordCount()), false);
    current = RecordCount() > 0 ? 1 : 0;
}

void AlbumDocument::SetCurrentIndex(int index)
{
    if (index >= 1 && index <= RecordCount())
        current = index;
}

bool AlbumDocument::IsSelected(int index) const
{
    return index >= 1 && index <= RecordCount() && selected[Slot(index)];
}

void AlbumDocument::SetSelected(int index, bool on)
{
    if (index >= 1 && index <= RecordCount())
        selected[Slot(index)] = on;
}

QList<int> AlbumDocument::SelectedIndices() const
{
    QList<int> indices;
    for (int i = 1; i <= RecordCount(); ++i) {
        if (selected[Slot(i)])
            indices << i;
    }
    return indices;
}

bool AlbumDocument::IsHighlighted(int index) const
{
    return index >= 1 && index <= RecordCount() && highlighted[Slot(index)];
}

void AlbumDocument::SetHighlightItems(const QList<int> &indices)
{
    highlighted.assign(static_cast<std::size_t>(RecordCount()), false);
    for (const int index : indices) {
        if (index >= 1 && index <= RecordCount())
            highlighted[Slot(index)] = true;
    }
}

bool AlbumDocument::ArrangePhotos(const QString &key, bool ascending, bool confirm, Prompter *prompter)
{
    if (confirm && prompter) {
        const QString shown = GetLocalizedString(key, QStringLiteral("InfoList"));
        const QString text = GetLocalizedString(QStringLiteral("MessageArrangePhotos"), QStringLiteral("OrvDocument")).replace(QStringLiteral("%1"), shown);
        const QString title = GetLocalizedString(QStringLiteral("ArrangePhotos"), QStringLiteral("OrvDocument")).replace(QStringLiteral("%1"), shown);
        if (!prompter->AskYesNo(title, text))
            return false;
    }
    list.SortItems(key, ascending ? 1 : 0);
    ResetViewFlags();
    DocumentWasModified();
    return true;
}

bool AlbumDocument::ActionArrangeByTime(Prompter &prompter)
{
    return ArrangePhotos(PhotoRecord::CaptureDate, true, true, &prompter);
}

bool AlbumDocument::ActionArrangeByTimeDesc(Prompter &prompter)
{
    return ArrangePhotos(PhotoRecord::CaptureDate, false, true, &prompter);
}

bool AlbumDocument::ActionArrangeByFile(Prompter &prompter)
{
    return ArrangePhotos(PhotoRecord::File, true, true, &prompter);
}

bool AlbumDocument::ActionArrangeByFileDesc(Prompter &prompter)
{
    return ArrangePhotos(PhotoRecord::File, false, true, &prompter);
}

int AlbumDocument::FindItemsWithDate(const QDateTime &date, const QString &format)
{
    QString pattern;
    if (format == QLatin1String("yyyy-mm-dd hh"))
        pattern = date.date().toString(QStringLiteral("yyyy-MM-dd")) + date.time().toString(QStringLiteral(" HH"));
    else if (format == QLatin1String("yyyy-mm-dd"))
        pattern = date.date().toString(QStringLiteral("yyyy-MM-dd"));
    else
        return 0;
    int found = 0;
    int first = 0;
    for (int i = RecordCount(); i >= 1; --i) {
        const bool match = Record(PhotoRecord::CaptureDate, i).left(pattern.size()) == pattern;
        selected[Slot(i)] = match;
        if (match) {
            ++found;
            first = i;
        }
    }
    if (found > 0)
        current = first;
    return found;
}

void AlbumDocument::ActionStar(bool on)
{
    const QString value = on ? QStringLiteral("1") : QStringLiteral("0");
    for (const int index : TargetIndices())
        list.SetItemProperty(PhotoRecord::Star, value, index);
    DocumentWasModified();
}

void AlbumDocument::ActionSelectHighlightPhotos()
{
    selected = highlighted;
}

void AlbumDocument::ActionSelectStarPhotos()
{
    for (int i = 1; i <= RecordCount(); ++i)
        selected[Slot(i)] = Record(PhotoRecord::Star, i) == QLatin1String("1");
}

void AlbumDocument::ActionSelectAllPhotos()
{
    selected.assign(static_cast<std::size_t>(RecordCount()), true);
}

void AlbumDocument::ActionInverseSelection()
{
    selected.flip();
}

qint64 AlbumDocument::GetTotalBytesByDatalist() const
{
    qint64 total = 0;
    for (int i = 1; i <= RecordCount(); ++i)
        total += static_cast<qint64>(SettingNumber(Record(PhotoRecord::Size, i)));
    return total;
}

qint64 AlbumDocument::GetTotalBytesByFileSystem() const
{
    const bool allowNonJpeg = PhotoRecord::AllowNonJpeg();
    qint64 total = 0;
    const QFileInfoList files = QDir(GetPhotoFilesPath(path)).entryInfoList(QDir::Files | QDir::Hidden);
    for (const QFileInfo &file : files) {
        if (PhotoRecord::IsPhotoFile(file.fileName(), allowNonJpeg))
            total += file.size();
    }
    return total;
}
