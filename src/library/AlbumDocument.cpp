#include "library/AlbumDocument.h"

#include "app/Language.h"
#include "library/PhotoRecord.h"
#include "app/Prompter.h"
#include "app/Settings.h"

#include <QCollator>
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
    return FindRecords({name}).front();
}

QList<int> AlbumDocument::FindRecords(const QStringList &names) const
{
    QList<int> found = PhotoRecord::MatchNames(names, RecordFiles());
    for (int &index : found)
        ++index; // -1, none, becomes 0
    return found;
}

QStringList AlbumDocument::RecordFiles() const
{
    QStringList files;
    files.reserve(RecordCount());
    for (int i = 1; i <= RecordCount(); ++i)
        files << Record(PhotoRecord::File, i);
    return files;
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
    if (noSave) {
        if (modified)
            result = Result::Failure(QStringLiteral("%1 could not be read, so it is not written over; the changes are not saved")
                                         .arg(AlbumFormat::StudioPlistPath(path)));
    } else {
        QString error;
        if (!list.Save(AlbumFormat::StudioPlistPath(path), &error))
            result = Result::Failure(error);
    }
    modified = false;
    return result;
}

Result AlbumDocument::SetAlbumTexts(const AlbumTexts &texts)
{
    if (const std::optional<QString> &id = texts.identification) {
        if (id->trimmed().isEmpty() || id->contains(u'/') || id->contains(u'\\') || *id == QLatin1String(".") || *id == QLatin1String(".."))
            return Result::Failure(QStringLiteral("\"%1\" cannot be an identification: it names the album's folder on publishing servers").arg(*id));
    }
    const std::pair<const char *, const std::optional<QString> &> fields[] = {
        {"Title", texts.title}, {"Identification", texts.identification}, {"Description", texts.description}};
    for (const auto &[key, value] : fields) {
        if (value && list.GetDocumentProperty(QLatin1String(key)) != *value) {
            list.SetDocumentProperty(QLatin1String(key), *value);
            DocumentWasModified();
        }
    }
    return Result::Success();
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
    if (key == PhotoRecord::File) {
        // File names in the order of a file manager: numbers by their value ("IMG_2" before
        // "IMG_10"), letters without regard to case, in the user's language; ties keep their order.
        // The C locale has no such order: English stands in for it.
        QCollator collator(QLocale().language() == QLocale::C ? QLocale(QLocale::English) : QLocale());
        collator.setNumericMode(true);
        collator.setCaseSensitivity(Qt::CaseInsensitive);
        list.SortItems(key, ascending ? 1 : 0, [&](const QString &a, const QString &b) { return collator.compare(a, b) < 0; });
    } else {
        list.SortItems(key, ascending ? 1 : 0);
    }
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
