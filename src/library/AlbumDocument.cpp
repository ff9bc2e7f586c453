#include "library/AlbumDocument.h"

#include "app/Language.h"
#include "library/PhotoRecord.h"
#include "app/Prompter.h"
#include "app/Settings.h"

#include <QCollator>
#include <QDir>
#include <QFileInfo>
#include <numeric>

AlbumDocument::AlbumDocument(const QString &folder)
    : path(QDir::cleanPath(folder))
{
}

AlbumDocument::OpenResult AlbumDocument::Prepare(const QString &path)
{
    OpenResult result;
    result.status = PrepareAlbumForOpening(path);
    if (result.status != OpenAlbumStatus::Ready)
        return result;
    result.document.reset(new AlbumDocument(path));
    AlbumDocument &document = *result.document;
    // The layout is looked up once, after the opening rules made what they make: nothing that
    // asks for a path later (a grid painting, a search) touches the disk for it.
    document.photoFolder = GetPhotoFilesPath(path);
    document.package = document.photoFolder != document.path;
    document.thumbnailFolder = AlbumFormat::ThumbnailFolder(path);
    // Until the whole list is in, an empty or partial list must never replace the one on disk.
    document.noSave = true;
    return result;
}

AlbumDocument::OpenResult AlbumDocument::Open(const QString &path)
{
    OpenResult result = Prepare(path);
    if (!result.document)
        return result;
    DataList whole;
    result.load = whole.Load(AlbumFormat::StudioPlistPath(path));
    if (result.load)
        result.document->FinishLoading(std::move(whole));
    return result;
}

void AlbumDocument::TakeLoadedRecords(DataList &batch)
{
    const int first = RecordCount() + 1;
    list.TakeItemsOf(batch);
    if (RecordCount() >= first)
        emit RecordsInserted(first, RecordCount() - first + 1);
}

void AlbumDocument::FinishLoading(const DataList &properties)
{
    for (const QString &key : properties.DocumentKeys())
        list.SetDocumentProperty(key, properties.GetDocumentProperty(key));
    noSave = false;
    emit AlbumTextsChanged();
}

void AlbumDocument::FinishLoading(DataList &&whole)
{
    ForgetLoadedRecords();
    list = std::move(whole);
    noSave = false;
    if (RecordCount() > 0)
        emit RecordsInserted(1, RecordCount());
    emit AlbumTextsChanged();
}

void AlbumDocument::ForgetLoadedRecords()
{
    const int count = RecordCount();
    if (count == 0)
        return;
    list = DataList();
    emit RecordsRemoved(1, count);
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
    return PhotoRecord::IsBareFileName(file) ? photoFolder + u'/' + file : QString();
}

QString AlbumDocument::ThumbnailFilePath(int index) const
{
    const QString file = Record(PhotoRecord::File, index);
    return PhotoRecord::IsBareFileName(file) ? thumbnailFolder + u'/' + PhotoRecord::ThumbnailName(file) : QString();
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

void AlbumDocument::SetModified(bool on)
{
    if (modified == on)
        return;
    modified = on;
    emit ModifiedChanged(on);
}

void AlbumDocument::DocumentWasModified()
{
    SetModified(true);
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
    SetModified(false);
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
    bool changed = false;
    for (const auto &[key, value] : fields) {
        if (value && list.GetDocumentProperty(QLatin1String(key)) != *value) {
            list.SetDocumentProperty(QLatin1String(key), *value);
            changed = true;
        }
    }
    if (changed) {
        DocumentWasModified();
        emit AlbumTextsChanged();
    }
    return Result::Success();
}

void AlbumDocument::SetDocumentProperties(const RecordValues &properties)
{
    bool changed = false;
    for (const auto &[key, value] : properties) {
        if (list.GetDocumentProperty(key) != value) {
            list.SetDocumentProperty(key, value);
            changed = true;
        }
    }
    if (changed)
        DocumentWasModified();
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
    std::function<bool(const QString &, const QString &)> less = [](const QString &a, const QString &b) { return a < b; };
    if (key == PhotoRecord::File) {
        // File names in the order of a file manager: numbers by their value ("IMG_2" before
        // "IMG_10"), letters without regard to case, in the user's language; ties keep their order.
        // The C locale has no such order: English stands in for it.
        auto collator = std::make_shared<QCollator>(QLocale().language() == QLocale::C ? QLocale(QLocale::English) : QLocale());
        collator->setNumericMode(true);
        collator->setCaseSensitivity(Qt::CaseInsensitive);
        less = [collator](const QString &a, const QString &b) { return collator->compare(a, b) < 0; };
    }
    // The list sorts stably by the same texts and order, so this is the order it ends in: the
    // views learn where each record went without reading the list again.
    QStringList texts;
    for (int i = 1; i <= RecordCount(); ++i)
        texts << Record(key, i);
    QList<int> oldIndexOfNew(RecordCount());
    std::iota(oldIndexOfNew.begin(), oldIndexOfNew.end(), 1);
    std::stable_sort(oldIndexOfNew.begin(), oldIndexOfNew.end(), [&](int a, int b) {
        return ascending ? less(texts[a - 1], texts[b - 1]) : less(texts[b - 1], texts[a - 1]);
    });
    list.SortItems(key, ascending ? 1 : 0, less);
    DocumentWasModified();
    emit RecordsReordered(oldIndexOfNew);
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

QList<int> AlbumDocument::FindItemsWithDate(const QDateTime &date, const QString &format) const
{
    QString pattern;
    if (format == QLatin1String("yyyy-mm-dd hh"))
        pattern = date.date().toString(QStringLiteral("yyyy-MM-dd")) + date.time().toString(QStringLiteral(" HH"));
    else if (format == QLatin1String("yyyy-mm-dd"))
        pattern = date.date().toString(QStringLiteral("yyyy-MM-dd"));
    else
        return {};
    QList<int> found;
    for (int i = 1; i <= RecordCount(); ++i) {
        if (Record(PhotoRecord::CaptureDate, i).left(pattern.size()) == pattern)
            found << i;
    }
    return found;
}

void AlbumDocument::ActionStar(const QList<int> &indices, bool on)
{
    SetValueOfRecords(indices, PhotoRecord::Star, on ? QStringLiteral("1") : QStringLiteral("0"));
}

QList<int> AlbumDocument::ActionSelectHighlightPhotos(const QList<int> &highlighted) const
{
    QList<int> selected;
    for (const int index : highlighted) {
        if (Valid(index) && !selected.contains(index))
            selected << index;
    }
    std::sort(selected.begin(), selected.end());
    return selected;
}

QList<int> AlbumDocument::ActionSelectStarPhotos() const
{
    QList<int> starred;
    for (int i = 1; i <= RecordCount(); ++i) {
        if (Record(PhotoRecord::Star, i) == QLatin1String("1"))
            starred << i;
    }
    return starred;
}

QList<int> AlbumDocument::ActionSelectAllPhotos() const
{
    QList<int> all(RecordCount());
    std::iota(all.begin(), all.end(), 1);
    return all;
}

QList<int> AlbumDocument::ActionInverseSelection(const QList<int> &selected) const
{
    std::vector<bool> was(static_cast<std::size_t>(RecordCount()) + 1, false);
    for (const int index : selected) {
        if (Valid(index))
            was[static_cast<std::size_t>(index)] = true;
    }
    QList<int> inverse;
    for (int i = 1; i <= RecordCount(); ++i) {
        if (!was[static_cast<std::size_t>(i)])
            inverse << i;
    }
    return inverse;
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
    return TotalPhotoBytesIn(photoFolder);
}

qint64 AlbumDocument::TotalPhotoBytesIn(const QString &photoFolder)
{
    const bool allowNonJpeg = PhotoRecord::AllowNonJpeg();
    qint64 total = 0;
    const QFileInfoList files = QDir(photoFolder).entryInfoList(QDir::Files | QDir::Hidden);
    for (const QFileInfo &file : files) {
        if (PhotoRecord::IsPhotoFile(file.fileName(), allowNonJpeg))
            total += file.size();
    }
    return total;
}
