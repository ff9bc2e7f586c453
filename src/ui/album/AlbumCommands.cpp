#include "ui/album/AlbumCommands.h"

#include "ui/album/AlbumRoles.h"

#include "app/Language.h"
#include "app/ProgressSink.h"
#include "app/Prompter.h"
#include "library/AlbumDocument.h"
#include "library/AlbumFormat.h"
#include "library/AlbumOpening.h"
#include "library/InfoExchange.h"
#include "library/PhotoEditing.h"
#include "library/PhotoRecord.h"
#include "library/PhotoTransfer.h"
#include "library/RecordEdit.h"

#include <QStandardItemModel>

#include <functional>

namespace {

struct LibraryCommand {
    QString name;
    bool isLong;
    // Returns whether the album may have changed.
    std::function<bool(AlbumDocument &, Prompter &, const CommandTarget &)> run;
};

QList<int> Targets(const CommandTarget &target)
{
    if (target.detail)
        return target.current >= 1 ? QList<int>{target.current} : QList<int>{};
    return target.selected;
}

bool PasteKeywords(AlbumDocument &document)
{
    const std::optional<QString> keywords = ReadKeywordsExchange();
    if (!keywords)
        return false;
    document.ActionKeywordsPaste(*keywords);
    return true;
}

bool WriteMetadata(AlbumDocument &document, Prompter &prompter, const QList<int> &indices)
{
    NoProgress quiet;
    QStringList failures;
    const int written = WriteMetadataOfPhotos(document, indices, quiet, &failures);
    if (!failures.isEmpty())
        prompter.Error(GetLocalizedString(QStringLiteral("mnuWriteIPTC"), QStringLiteral("Menu")), failures.join(u'\n'));
    return written > 0;
}

// Long work runs here in the caller's thread for now, without progress; the task runner will
// give it a worker thread, the progress window and Cancel.
const QList<LibraryCommand> &Table()
{
    static const QList<LibraryCommand> table = {
        {QStringLiteral("mnuByTime"), false, [](AlbumDocument &d, Prompter &p, const CommandTarget &) { return d.ActionArrangeByTime(p); }},
        {QStringLiteral("mnuByTimeDesc"), false, [](AlbumDocument &d, Prompter &p, const CommandTarget &) { return d.ActionArrangeByTimeDesc(p); }},
        {QStringLiteral("mnuByFile"), false, [](AlbumDocument &d, Prompter &p, const CommandTarget &) { return d.ActionArrangeByFile(p); }},
        {QStringLiteral("mnuByFileDesc"), false, [](AlbumDocument &d, Prompter &p, const CommandTarget &) { return d.ActionArrangeByFileDesc(p); }},
        {QStringLiteral("mnuSetNotesForMultiselection"), false, [](AlbumDocument &d, Prompter &p, const CommandTarget &) { return d.ActionSetNoteForSelectedPhotos(p); }},
        {QStringLiteral("mnuKeywordsCopy"), false, [](AlbumDocument &d, Prompter &, const CommandTarget &) { return WriteKeywordsExchange(d.ActionKeywordsCopy(), nullptr); }},
        {QStringLiteral("mnuKeywordsCopy1"), false, [](AlbumDocument &d, Prompter &, const CommandTarget &) { return WriteKeywordsExchange(d.ActionKeywordsCopy(), nullptr); }},
        {QStringLiteral("mnuKeywordsPaste"), false, [](AlbumDocument &d, Prompter &, const CommandTarget &) { return PasteKeywords(d); }},
        {QStringLiteral("mnuKeywordsPaste1"), false, [](AlbumDocument &d, Prompter &, const CommandTarget &) { return PasteKeywords(d); }},
        {QStringLiteral("mnuEditCopy"), false, [](AlbumDocument &d, Prompter &, const CommandTarget &t) { return ActionCopy(d, Targets(t)); }},
        {QStringLiteral("mnuEditCut"), false, [](AlbumDocument &d, Prompter &, const CommandTarget &t) { return ActionCut(d, Targets(t)); }},
        {QStringLiteral("mnuEditPaste"), true, [](AlbumDocument &d, Prompter &, const CommandTarget &) { NoProgress quiet; ActionPaste(d, quiet); return true; }},
        {QStringLiteral("mnuMoveToTrash"), false, [](AlbumDocument &d, Prompter &p, const CommandTarget &) { return d.ActionDelete(p); }},
        {QStringLiteral("mnuRotateLeft"), true, [](AlbumDocument &d, Prompter &, const CommandTarget &) { NoProgress quiet; return ActionRotateLeft(d, quiet) > 0; }},
        {QStringLiteral("mnuRotateRight"), true, [](AlbumDocument &d, Prompter &, const CommandTarget &) { NoProgress quiet; return ActionRotateRight(d, quiet) > 0; }},
        {QStringLiteral("mnuCheckModified"), true, [](AlbumDocument &d, Prompter &p, const CommandTarget &) { NoProgress quiet; ActionCheckModified(d, p, quiet); return true; }},
        {QStringLiteral("mnuWriteIPTC"), true, [](AlbumDocument &d, Prompter &p, const CommandTarget &t) { return WriteMetadata(d, p, Targets(t)); }},
        {QStringLiteral("mnuWriteEXIFGPS"), true, [](AlbumDocument &d, Prompter &p, const CommandTarget &t) { return WriteMetadata(d, p, Targets(t)); }},
        {QStringLiteral("mnuStarOn"), false, [](AlbumDocument &d, Prompter &, const CommandTarget &) { d.ActionStar(true); return true; }},
        {QStringLiteral("mnuStarOff"), false, [](AlbumDocument &d, Prompter &, const CommandTarget &) { d.ActionStar(false); return true; }},
    };
    return table;
}

const LibraryCommand *Find(const QString &name)
{
    for (const LibraryCommand &command : Table()) {
        if (command.name == name)
            return &command;
    }
    return nullptr;
}

} // namespace

AlbumCommands::AlbumCommands(AlbumDocument &album, Prompter &questions) : document(album), prompter(questions) {}

const QStringList &AlbumCommands::Names()
{
    static const QStringList names = [] {
        QStringList all;
        for (const LibraryCommand &command : Table())
            all << command.name;
        return all;
    }();
    return names;
}

bool AlbumCommands::IsLong(const QString &name)
{
    const LibraryCommand *command = Find(name);
    return command && command->isLong;
}

bool AlbumCommands::Run(const QString &name, const CommandTarget &target)
{
    const LibraryCommand *command = Find(name);
    if (!command)
        return false;
    Point(target);
    return command->run(document, prompter, target);
}

// The document still keeps a view's selection, current photo and view kind, and its actions
// work on those: the view's own are handed over before each command.
void AlbumCommands::Point(const CommandTarget &target)
{
    document.SetView(target.detail ? AlbumDocument::View::Detail : AlbumDocument::View::Thumbnails);
    document.SetCurrentIndex(target.current);
    for (int index = 1; index <= document.RecordCount(); ++index)
        document.SetSelected(index, false);
    for (const int index : target.selected)
        document.SetSelected(index, true);
}

QString AlbumCommands::Path() const
{
    return document.Path();
}

bool AlbumCommands::IsModified() const
{
    return document.IsModified();
}

int AlbumCommands::RecordCount() const
{
    return document.RecordCount();
}

QString AlbumCommands::PhotoPath(int index) const
{
    return index >= 1 && index <= document.RecordCount() ? document.PhotoFilePath(index) : QString();
}

QString AlbumCommands::NonPhotoFolder() const
{
    return document.Path() + u'/' + AlbumFormat::NonPhotoFolderName;
}

AlbumCommands::Texts AlbumCommands::AlbumTexts() const
{
    const DataList &list = document.List();
    return {list.GetDocumentProperty(QStringLiteral("Title")), list.GetDocumentProperty(QStringLiteral("Identification")),
            list.GetDocumentProperty(QStringLiteral("Description"))};
}

Result AlbumCommands::SetAlbumTexts(const Texts &texts)
{
    const Texts stored = AlbumTexts();
    AlbumDocument::AlbumTexts changed;
    if (texts.title != stored.title)
        changed.title = texts.title;
    if (texts.identification != stored.identification)
        changed.identification = texts.identification;
    if (texts.description != stored.description)
        changed.description = texts.description;
    if (!changed.title && !changed.identification && !changed.description)
        return Result::Success();
    return document.SetAlbumTexts(changed);
}

int AlbumCommands::Search(const QString &text)
{
    return document.ActionSearch(text);
}

int AlbumCommands::HighlightNotedPhotos()
{
    return document.ActionHighlightNotedPhotos();
}

QString AlbumCommands::FoundLabel(int count)
{
    return AlbumDocument::FoundLabel(count);
}

Result AlbumCommands::SetRecordValue(int index, const QString &key, const QString &text)
{
    return ::SetRecordValue(document, index, key, text);
}

void AlbumCommands::FillRows(QStandardItemModel &rows) const
{
    const QStringList &keys = PhotoRecord::AllKeys();
    // Rows keep their place while their number does, so a star or a note repaints one cell and
    // the view keeps its selection; records come and go only with a new set of rows.
    const bool inPlace = rows.rowCount() == document.RecordCount();
    QList<QStandardItem *> items;
    for (int index = 1; index <= document.RecordCount(); ++index) {
        QStandardItem *item = inPlace ? rows.item(index - 1) : new QStandardItem;
        item->setEditable(false);
        item->setText(document.Record(PhotoRecord::File, index));
        item->setData(index, RecordIndexRole);
        item->setData(document.Record(PhotoRecord::File, index), FileRole);
        item->setData(document.PhotoFilePath(index), PhotoPathRole);
        item->setData(document.ThumbnailFilePath(index), ThumbnailPathRole);
        item->setData(document.Record(PhotoRecord::Star, index) == QLatin1String("1"), StarRole);
        item->setData(document.IsHighlighted(index), HighlightRole);
        item->setData(document.Record(PhotoRecord::Description, index), DescriptionRole);
        item->setData(document.Record(PhotoRecord::Keywords, index), KeywordsRole);
        item->setData(document.Record(PhotoRecord::CaptureDate, index), CaptureDateRole);
        QVariantMap record;
        for (const QString &key : keys)
            record.insert(key, document.Record(key, index));
        item->setData(record, RecordRole);
        items << item;
    }
    if (inPlace)
        return;
    rows.clear();
    rows.invisibleRootItem()->appendRows(items);
}
