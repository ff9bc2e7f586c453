#pragma once

#include <QWidget>
#include <functional>
#include <memory>

class AlbumCommands;
class AlbumDocument;
class AlbumModel;
struct ImportReport;
class DialogPrompter;
class FileChooser;
class GpsLog;
class ProgressSink;
class Prompter;
class TaskRunner;
class OrvDetailView;
class OrvExtraPanel;
class OrvThumbnailView;
class QLabel;
class QLineEdit;
class QMenu;
class QStackedWidget;
class ThumbnailCache;
struct CommandTarget;

// frmDocument: one open album in the main window's document area. The main window routes the
// album commands of its menus here by their command names ("mnuByTime", "mnuRotateRight", ...).
class AlbumWindow : public QWidget {
    Q_OBJECT
public:
    // The document holds its records already, or gets them from Open.
    AlbumWindow(std::unique_ptr<AlbumDocument> document, QWidget *parent = nullptr);
    ~AlbumWindow() override;

    // Reads the list of a document made by AlbumDocument::Prepare into the window and finishes
    // opening the album (drop folder, outside-change check), as long work: ReadyToShow comes with
    // the first records, long before the last; OpeningEnded when it is all done. `listMade`: the
    // opening made the list (OpeningMakesList).
    void Open(bool listMade);
    // Open has not ended yet.
    bool IsOpening() const { return opening; }

    // The album folder, by which the main window finds an album that is already open.
    QString Path() const;
    AlbumDocument &Document();
    // The photos selected in the grid (indices from 1, in album order), for commands of other
    // windows that work on the selection.
    QList<int> SelectedRecords() const;

    // The commands this window carries out; the main window enables its album commands by them.
    bool HasCommand(const QString &name) const;
    // Carries out one command; false when this window has no such command, or while long work
    // of this album runs (its commands wait for it).
    bool RunCommand(const QString &name);
    // Long work of this album runs on a worker thread; its commands are refused meanwhile.
    bool IsWorking() const;
    // Starts long work on this album (other windows' commands too, matching for one); `after` runs
    // on the interface thread when it has ended. False while other work runs.
    bool StartWork(const QString &title, std::function<void(ProgressSink &)> work, std::function<void()> after,
                   bool progressOnlyForSteps = false);
    // Asks and tells the user over this window, from its work's worker thread too.
    Prompter &WorkPrompter();

    // Brings the files and folders into the album as long work; the report follows when not clean.
    void ImportPaths(const QStringList &paths);
    // Copies the photos of a camera or card into the album and brings them in, as long work.
    void ImportCardPhotos(const QStringList &photos);
    // The print window for the selected photos (the current one in the detail view), once they
    // are decoded on a worker.
    void PrintPhotos();
    // Runs a plug-in on this album and its selection as long work; an importer's files come in.
    void LaunchPlugin(const QString &name);
    // The pickers of the import commands.
    void SetFileChooser(std::unique_ptr<FileChooser> chooser);

    // The GPS work on this album (matching, time shifts, Earth output) runs from other files
    // through StartWork and WorkPrompter, with the run's shared GPS log (null for an album shown
    // on its own), the photo in the view and the window's pickers.
    void SetGpsLog(GpsLog *log) { gpsLog = log; }
    GpsLog *Gps() const { return gpsLog; }
    int CurrentRecord() const;
    FileChooser &Chooser() { return *chooser; }

    // Saves a modified album; false keeps the window open (saving failed). While long work runs
    // it asks the work to stop and returns false: once the work has stopped at the photo in hand,
    // the window saves and closes its sub-window itself.
    bool CloseAlbum();

signals:
    // The folder name, with "*" while there are unsaved changes.
    void CaptionChanged(const QString &caption);
    // Long work began or ended: the main window disables or enables this album's commands.
    void WorkingChanged(bool working);
    // Open: the window has its first records (or the whole list, an empty one): time to show it.
    void ReadyToShow();
    // Open: the list could not be read. Nothing was written; the window has nothing to show and
    // closes without saving.
    void OpeningFailed(const QString &reason);
    // Open has ended: `opened` when the whole list is in (false when it failed or was stopped).
    void OpeningEnded(bool opened);

private:
    struct Command {
        QString name;
        bool isLong;
        std::function<void()> run;
    };
    void BuildCommands();
    void BuildLayout(bool showFileNames);
    void BuildPhotoMenu();
    void RunLibraryCommand(const QString &name);
    void AfterLibraryCommand(const QString &name, int current, int countBefore);
    void FirstRecordsIn();
    void ListRead();
    void SetAlbumFieldsEnabled(bool enabled);
    void WorkFinished();
    void CloseContainer();
    // The edits whose settings a window asks for (AlbumWindowEdits.cpp).
    using PhotoEdit = std::function<void(AlbumCommands &, int index, ProgressSink &)>;
    template <typename Window>
    void EditCurrentPhoto(const QString &name, PhotoEdit (*editOf)(const Window &));
    void AdjustCurrentPhoto();
    void CropCurrentPhoto();
    void ImportChosenFiles();
    void ImportChosenFolder();
    void RunImport(std::function<ImportReport(ProgressSink &)> import);
    CommandTarget Target() const;
    void SelectRows(const std::function<bool(int row)> &wanted);
    void ShowDetail(int row);
    void ShowGrid();
    void CurrentRowChanged(int row);
    void Search();
    void SetUIByDataList();
    void SetDataListByUI();
    void ShowHighlights(const QList<int> &found);
    void RefreshNumberLabel(const QString &found = QString());
    void RefreshCaption();
    QString CurrentPhotoPath() const;

    std::unique_ptr<AlbumDocument> document;
    // Beside the window rather than its child: it outlives the views while stopping work.
    std::unique_ptr<TaskRunner> runner;
    std::unique_ptr<DialogPrompter> prompter;
    std::unique_ptr<FileChooser> chooser;
    GpsLog *gpsLog = nullptr;
    std::function<void()> afterWork;
    bool closeWhenStopped = false;
    // Open has not read the whole list: the window shows part of it, and never saves it.
    bool loading = false;
    bool announcedShown = false;
    bool opening = false;
    std::unique_ptr<AlbumCommands> commands;
    std::vector<Command> table;
    AlbumModel *rows;
    ThumbnailCache *thumbnails;
    OrvThumbnailView *grid = nullptr;
    OrvDetailView *detail = nullptr;
    OrvExtraPanel *panel = nullptr;
    QStackedWidget *views = nullptr;
    QLineEdit *title = nullptr;
    QLineEdit *identification = nullptr;
    QLineEdit *description = nullptr;
    QLineEdit *search = nullptr;
    QLabel *number = nullptr;
    QMenu *photoMenu = nullptr;
    QString caption;
};
