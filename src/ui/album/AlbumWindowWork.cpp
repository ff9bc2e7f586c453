// The album window's long work: commands and imports run on a worker thread through the task
// runner, while the window stays responsive and its commands wait.

#include "ui/album/AlbumWindow.h"

#include "ui/album/AlbumModel.h"
#include "ui/album/ExtraPanel.h"
#include "ui/album/ThumbnailView.h"
#include "ui/common/FileChooser.h"

#include <QDir>
#include "ui/common/DialogPrompter.h"
#include "ui/common/TaskRunner.h"

#include "app/Language.h"
#include "app/ProgressSink.h"
#include "library/AlbumDocument.h"
#include "library/AlbumOpening.h"
#include "library/PluginCall.h"
#include "ui/album/AlbumRoles.h"
#include "ui/common/PhotoDecode.h"
#include "ui/print/PrintWindow.h"
#include "app/Paths.h"
#include "app/Plugins.h"
#include "ui/album/AlbumCommands.h"
#include "library/CameraImport.h"
#include "library/OrvAlbumImporter.h"

#include <QMdiSubWindow>
#include <QMenu>

namespace {

QString GeneralText(const char *key)
{
    return GetLocalizedString(QString::fromLatin1(key), QStringLiteral("General"));
}

QString MenuText(const char *key)
{
    return GetLocalizedString(QString::fromLatin1(key), QStringLiteral("Menu"));
}


} // namespace

bool AlbumWindow::IsWorking() const
{
    return runner->Running();
}

bool AlbumWindow::StartWork(const QString &title, std::function<void(ProgressSink &)> work, std::function<void()> after,
                            bool progressOnlyForSteps)
{
    if (!runner->Start(title, std::move(work), progressOnlyForSteps ? TaskRunner::Shown::WhenStepLasts : TaskRunner::Shown::WhenLasting))
        return false;
    afterWork = std::move(after);
    photoMenu->setEnabled(false);
    emit WorkingChanged(true);
    return true;
}

Prompter &AlbumWindow::WorkPrompter()
{
    return *prompter;
}

void AlbumWindow::WorkFinished()
{
    photoMenu->setEnabled(true);
    if (const std::function<void()> after = std::exchange(afterWork, {}))
        after();
    emit WorkingChanged(false);
    if (std::exchange(closeWhenStopped, false) && CloseAlbum())
        CloseContainer();
}

void AlbumWindow::Open(bool listMade)
{
    struct Opening {
        DataList::LoadResult load;
        ImportReport imported;
    };
    auto outcome = std::make_shared<Opening>();
    AlbumDocument *album = document.get();
    Prompter *asking = prompter.get();
    loading = true;
    opening = true;
    SetAlbumFieldsEnabled(false);
    // The grid fills as the list is read and shows its own progress; a progress window comes only
    // for what follows (a drop folder's import, the outside-change check).
    StartWork(
        GeneralText("Processing"),
        [this, outcome, album, asking, listMade](ProgressSink &progress) {
            outcome->load = StreamAlbumRecords(*album, progress);
            if (!outcome->load || progress.Cancelled())
                return;
            progress.Apply([this] { ListRead(); });
            outcome->imported = CompleteOpening(*album, listMade, {}, *asking, progress);
        },
        [this, outcome] {
            opening = false;
            if (!outcome->load) {
                emit OpeningFailed(outcome->load.message);
                emit OpeningEnded(false);
                return;
            }
            if (!outcome->imported.Clean() && !closeWhenStopped)
                prompter->Inform(GetLocalizedString(QStringLiteral("OpenTitle"), QStringLiteral("OrvDocument")),
                                 outcome->imported.ProblemLines().join(u'\n'));
            emit OpeningEnded(!loading);
        },
        true);
}

// The first records are in: the window is worth showing, the list still filling behind it.
void AlbumWindow::FirstRecordsIn()
{
    if (!loading || std::exchange(announcedShown, true))
        return;
    grid->SetCurrentRecord(1);
    emit ReadyToShow();
}

void AlbumWindow::ListRead()
{
    loading = false;
    SetAlbumFieldsEnabled(true);
    if (!std::exchange(announcedShown, true)) {
        if (rows->rowCount() > 0)
            grid->SetCurrentRecord(1);
        emit ReadyToShow();
    }
}

bool AlbumWindow::CloseAlbum()
{
    if (IsWorking()) {
        // Never wait here for the worker: the interface thread answers its changes and questions.
        closeWhenStopped = true;
        runner->RequestStop();
        return false;
    }
    // Part of a list is never saved over the whole.
    if (loading)
        return true;
    panel->Commit();
    SetDataListByUI();
    if (!document->IsModified())
        return true;
    const Result saved = document->SaveDocumentToFile();
    if (!saved)
        prompter->Error(MenuText("mnuFileSave"), saved.message);
    return saved.ok;
}

// The main window shows the album in a sub-window of its document area; on its own (tests, a
// window of its own) the album window closes itself.
void AlbumWindow::CloseContainer()
{
    if (auto *sub = qobject_cast<QMdiSubWindow *>(parentWidget()))
        sub->close();
    else
        close();
}

void AlbumWindow::SetFileChooser(std::unique_ptr<FileChooser> picker)
{
    chooser = std::move(picker);
}

void AlbumWindow::ImportChosenFiles()
{
    ImportPaths(chooser->ChooseFiles(this, MenuText("mnuFileImport"), QDir::homePath()));
}

void AlbumWindow::ImportChosenFolder()
{
    const QString folder = chooser->ChooseFolder(this, MenuText("mnuFolderImport"), QDir::homePath());
    if (!folder.isEmpty())
        ImportPaths({folder});
}

void AlbumWindow::ImportPaths(const QStringList &paths)
{
    if (paths.isEmpty())
        return;
    // Made here: the importer reads its settings once, on the interface thread.
    auto importer = std::make_shared<OrvAlbumImporter>();
    importer->SetDocument(document.get());
    RunImport([importer, paths](ProgressSink &progress) { return importer->ImportFiles(paths, progress); });
}

void AlbumWindow::ImportCardPhotos(const QStringList &photos)
{
    if (photos.isEmpty())
        return;
    AlbumDocument *album = document.get();
    RunImport([album, photos](ProgressSink &progress) { return ::ImportCardPhotos(*album, photos, progress); });
}

void AlbumWindow::PrintPhotos()
{
    // Large enough for one photo on a page at 150 dpi, small enough that a long selection fits
    // in memory.
    constexpr int PrintBox = 1600;
    const CommandTarget target = Target();
    const QList<int> records = target.detail || target.selected.isEmpty() ? QList<int>{target.current} : target.selected;
    QList<std::pair<QString, QString>> chosen; // path, note
    for (const int record : records) {
        const QModelIndex index = rows->index(record - 1, 0);
        if (const QString path = index.data(PhotoPathRole).toString(); !path.isEmpty())
            chosen.append({path, index.data(DescriptionRole).toString()});
    }
    if (chosen.isEmpty())
        return;
    const QString title = MenuText("mnuPrint");
    auto photos = std::make_shared<QList<PrintedPhoto>>();
    auto complete = std::make_shared<bool>(false);
    StartWork(
        title,
        [chosen, photos, complete, title](ProgressSink &progress) {
            progress.Begin(title, static_cast<int>(chosen.size()));
            for (qsizetype i = 0; i < chosen.size(); ++i) {
                if (progress.Cancelled())
                    return;
                if (QImage image = DecodePhotoToFit(chosen[i].first, QSize(PrintBox, PrintBox)); !image.isNull())
                    photos->append({std::move(image), chosen[i].second});
                progress.Advance(static_cast<int>(i + 1));
            }
            *complete = true;
        },
        [this, photos, complete] {
            if (!*complete || photos->isEmpty() || closeWhenStopped)
                return;
            auto *window = new PrintWindow(std::move(*photos), this);
            window->setAttribute(Qt::WA_DeleteOnClose);
            window->open();
        });
}

void AlbumWindow::LaunchPlugin(const QString &name)
{
    const CommandTarget target = Target();
    const quint64 handle = window()->winId();
    const PluginValues values = PluginValuesFor(*document, target.current, target.selected, handle, handle);
    QString title = GetPluginValue(PluginsFolder(), name, QStringLiteral("Menu"));
    if (title.isEmpty())
        title = name;
    auto outcome = std::make_shared<PluginOutcome>();
    AlbumDocument *album = document.get();
    StartWork(
        title, [outcome, album, name, values](ProgressSink &progress) { *outcome = ::LaunchPlugin(*album, PluginsFolder(), name, values, progress); },
        [this, outcome, title] {
            if (document->IsModified()) {
                if (const Result saved = document->SaveDocumentToFile(); !saved)
                    prompter->Error(MenuText("mnuFileSave"), saved.message);
            }
            if (closeWhenStopped)
                return;
            if (!outcome->run)
                prompter->Error(title, outcome->run.message);
            else if (!outcome->imported.Clean())
                prompter->Inform(title, outcome->imported.ProblemLines().join(u'\n'));
        });
}

void AlbumWindow::RunImport(std::function<ImportReport(ProgressSink &)> import)
{
    auto report = std::make_shared<ImportReport>();
    StartWork(
        GeneralText("Importing"),
        [import = std::move(import), report](ProgressSink &progress) { *report = import(progress); },
        [this, report] {
            // Every photo brought in keeps its record, even when the run was cancelled.
            if (document->IsModified()) {
                if (const Result saved = document->SaveDocumentToFile(); !saved)
                    prompter->Error(MenuText("mnuFileSave"), saved.message);
            }
            // A window closing when the work has stopped goes without further questions.
            if (!report->Clean() && !closeWhenStopped)
                prompter->Inform(GeneralText("Importing"), report->ProblemLines().join(u'\n'));
        });
}
