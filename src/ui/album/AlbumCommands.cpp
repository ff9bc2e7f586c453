#include "ui/album/AlbumCommands.h"

#include "app/Language.h"
#include "app/ProgressSink.h"
#include "app/Prompter.h"
#include "library/AlbumDocument.h"
#include "library/AlbumFormat.h"
#include "library/AlbumOpening.h"
#include "library/InfoExchange.h"
#include "library/PhotoEditing.h"
#include "library/PhotoTransfer.h"
#include "library/RecordEdit.h"

#include <functional>

namespace {

struct LibraryCommand {
    QString name;
    bool isLong;
    // Returns whether the album may have changed.
    std::function<bool(AlbumDocument &, Prompter &, const CommandTarget &, ProgressSink &)> run;
};

QList<int> Targets(const CommandTarget &target)
{
    if (target.detail)
        return target.current >= 1 ? QList<int>{target.current} : QList<int>{};
    return target.selected;
}

bool PasteKeywords(AlbumDocument &document, const QList<int> &indices)
{
    const std::optional<QString> keywords = ReadKeywordsExchange();
    if (!keywords || indices.isEmpty())
        return false;
    document.ActionKeywordsPaste(indices, *keywords);
    return true;
}

bool CopyKeywords(const AlbumDocument &document, const CommandTarget &target)
{
    return target.current >= 1 && WriteKeywordsExchange(document.ActionKeywordsCopy(target.current), nullptr);
}

AlbumDocument::View ViewOf(const CommandTarget &target)
{
    return target.detail ? AlbumDocument::View::Detail : AlbumDocument::View::Thumbnails;
}

bool Revert(AlbumDocument &document, Prompter &prompter, const QList<int> &indices, ProgressSink &progress)
{
    QStringList failures;
    const int reverted = RevertPhotos(document, indices, progress, &failures);
    if (!failures.isEmpty())
        prompter.Error(GetLocalizedString(QStringLiteral("mnuRevertOriginal"), QStringLiteral("Menu")), failures.join(u'\n'));
    return reverted > 0;
}

bool WriteMetadata(AlbumDocument &document, Prompter &prompter, const QList<int> &indices, ProgressSink &progress)
{
    QStringList failures;
    const int written = WriteMetadataOfPhotos(document, indices, progress, &failures);
    if (!failures.isEmpty())
        prompter.Error(GetLocalizedString(QStringLiteral("mnuWriteIPTC"), QStringLiteral("Menu")), failures.join(u'\n'));
    return written > 0;
}

// Long commands rewrite many photo files or check the whole folder: the window runs them on a
// worker thread, where they reach the document only through the progress link.
const QList<LibraryCommand> &Table()
{
    using D = AlbumDocument;
    using T = CommandTarget;
    using S = ProgressSink;
    static const QList<LibraryCommand> table = {
        {QStringLiteral("mnuByTime"), false, [](D &d, Prompter &p, const T &, S &) { return d.ActionArrangeByTime(p); }},
        {QStringLiteral("mnuByTimeDesc"), false, [](D &d, Prompter &p, const T &, S &) { return d.ActionArrangeByTimeDesc(p); }},
        {QStringLiteral("mnuByFile"), false, [](D &d, Prompter &p, const T &, S &) { return d.ActionArrangeByFile(p); }},
        {QStringLiteral("mnuByFileDesc"), false, [](D &d, Prompter &p, const T &, S &) { return d.ActionArrangeByFileDesc(p); }},
        {QStringLiteral("mnuSetNotesForMultiselection"), false,
         [](D &d, Prompter &p, const T &t, S &) { return d.ActionSetNoteForSelectedPhotos(Targets(t), p); }},
        {QStringLiteral("mnuKeywordsCopy"), false, [](D &d, Prompter &, const T &t, S &) { return CopyKeywords(d, t); }},
        {QStringLiteral("mnuKeywordsCopy1"), false, [](D &d, Prompter &, const T &t, S &) { return CopyKeywords(d, t); }},
        {QStringLiteral("mnuKeywordsPaste"), false, [](D &d, Prompter &, const T &t, S &) { return PasteKeywords(d, Targets(t)); }},
        {QStringLiteral("mnuKeywordsPaste1"), false, [](D &d, Prompter &, const T &t, S &) { return PasteKeywords(d, Targets(t)); }},
        {QStringLiteral("mnuEditCopy"), false, [](D &d, Prompter &, const T &t, S &) { return ActionCopy(d, Targets(t)); }},
        {QStringLiteral("mnuEditCut"), false, [](D &d, Prompter &, const T &t, S &) { return ActionCut(d, Targets(t)); }},
        {QStringLiteral("mnuEditPaste"), true, [](D &d, Prompter &, const T &, S &s) { return !ActionPaste(d, s).imported.isEmpty(); }},
        {QStringLiteral("mnuMoveToTrash"), false, [](D &d, Prompter &p, const T &t, S &) { return d.ActionDelete(Targets(t), ViewOf(t), p); }},
        {QStringLiteral("mnuRotateLeft"), true, [](D &d, Prompter &, const T &t, S &s) { return ActionRotateLeft(d, Targets(t), s) > 0; }},
        {QStringLiteral("mnuRotateRight"), true, [](D &d, Prompter &, const T &t, S &s) { return ActionRotateRight(d, Targets(t), s) > 0; }},
        {QStringLiteral("mnuEnhanceImage"), true,
         [](D &d, Prompter &, const T &t, S &s) { return ApplyEffectToPhotos(d, Targets(t), PhotoEffect::Enhance, s) > 0; }},
        {QStringLiteral("mnuBWEffect"), true,
         [](D &d, Prompter &, const T &t, S &s) { return ApplyEffectToPhotos(d, Targets(t), PhotoEffect::BlackAndWhite, s) > 0; }},
        {QStringLiteral("mnuSepiaEffect"), true,
         [](D &d, Prompter &, const T &t, S &s) { return ApplyEffectToPhotos(d, Targets(t), PhotoEffect::Sepia, s) > 0; }},
        {QStringLiteral("mnuRevertOriginal"), true, [](D &d, Prompter &p, const T &t, S &s) { return Revert(d, p, Targets(t), s); }},
        {QStringLiteral("mnuCheckModified"), true, [](D &d, Prompter &p, const T &, S &s) { ActionCheckModified(d, p, s); return true; }},
        {QStringLiteral("mnuWriteIPTC"), true, [](D &d, Prompter &p, const T &t, S &s) { return WriteMetadata(d, p, Targets(t), s); }},
        {QStringLiteral("mnuWriteEXIFGPS"), true, [](D &d, Prompter &p, const T &t, S &s) { return WriteMetadata(d, p, Targets(t), s); }},
        {QStringLiteral("mnuStarOn"), false, [](D &d, Prompter &, const T &t, S &) { d.ActionStar(Targets(t), true); return true; }},
        {QStringLiteral("mnuStarOff"), false, [](D &d, Prompter &, const T &t, S &) { d.ActionStar(Targets(t), false); return true; }},
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

bool AlbumCommands::Run(const QString &name, const CommandTarget &target, ProgressSink &progress)
{
    const LibraryCommand *command = Find(name);
    return command && command->run(document, prompter, target, progress);
}

bool AlbumCommands::Adjust(int index, const AdjustSliders &sliders, ProgressSink &progress)
{
    return AdjustPhotos(document, {index}, sliders, progress) > 0;
}

bool AlbumCommands::Crop(int index, const CropRectangle &rectangle, ProgressSink &progress)
{
    return CropPhoto(document, index, rectangle, progress) > 0;
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

std::optional<QList<int>> AlbumCommands::Search(const QString &text) const
{
    return document.ActionSearch(text);
}

QList<int> AlbumCommands::NotedPhotos() const
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
