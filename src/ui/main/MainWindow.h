#pragma once

#include "gps/GpsLog.h"
#include "library/AlbumDocument.h"

#include <QHash>
#include <QMainWindow>
#include <QPointer>
#include <functional>
#include <memory>

class AlbumManagerWindow;
class AlbumWindow;
class FileChooser;
class GpsWindow;
class InterfaceCalls;
class Prompter;
class QAction;
class QMdiArea;
class QMdiSubWindow;
class QMenu;
class QToolBar;
class TaskRunner;
class WelcomeWindow;

// frmMain: the frame that holds the album windows and routes the menu commands. Its menus, tool
// bar and shortcuts are built from the routing table (CommandTable.h).
// Opens the update check page in the browser; false when the installation names none.
bool OpenUpdatePage();

class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit MainWindow(QWidget *parent = nullptr);
    ~MainWindow() override;

    // Tests answer the pickers and message boxes with scripts.
    void UseChooser(std::unique_ptr<FileChooser> chooser);
    void UsePrompter(std::unique_ptr<Prompter> prompter);

    int MDIChildren() const;
    GpsLog &Gps() { return gpsLog; }
    bool HasActiveDoc() const;
    AlbumWindow *ActiveAlbum() const;
    // Every album shown in the document area.
    QList<AlbumWindow *> AlbumWindows() const;
    // Shows the album commands the active album window has, enables those that need an album.
    void EnableDocMenus();
    // The action of a command of the routing table, or of a recent document ("mnuRecentDoc1"...).
    QAction *Command(const QString &name) const;

    void OpenDoc(const QString &path, bool askForFolder);
    // While an album is being opened (its list read, its drop folder imported, outside changes
    // looked for, all on worker threads); its window appears with its first records.
    bool IsOpening() const;
    void NewDoc();
    void ConvertDoc();
    void ShowWelcomeWindow();
    // The camera-import window over the main window: the photos of `device`, or of every card,
    // camera and phone found mounted when it is "".
    void CameraImportToAlbum(const QString &device = {});
    // Photos from outside any album: the user picks the album (in the library folder by
    // default), which opens and imports them.
    void ImportPhotosIntoAlbum(const QStringList &photos);
    // Whether the albums show as tabs (else as separate windows), from the settings file.
    void ApplyDocumentMode();

    // The handlers of the routing table.
    void mnuFileNew_Click();
    void mnuFileOpen_Click();
    void mnuFileOpenFolder_Click();
    void mnuFileConvert_Click();
    void mnuFileSave_Click();
    void mnuFileClose_Click();
    void mnuFileExit_Click();
    void mnuClearRecentDocs_Click();
    void mnuCameraImport_Click();
    void mnuArrangeAllByTime_Click();
    void mnuWindowCascade_Click();
    void mnuWindowTileHorizontal_Click();
    void mnuWindowTileVertical_Click();
    void mnuWindowArrangeIcons_Click();
    void mnuOptions_Click();
    void mnuHelpContents_Click();
    void mnuInfoOnWeb_Click();
    void mnuVersionUpdater_Click();
    void mnuHelpAbout_Click();
    void mnuWebReady_Click();
    void mnuWebSync_Click();
    void mnuOrvServerWebSync_Click();
    void mnuLightboxMaker_Click();
    void mnuAlbumManager_Click();
    void mnuAMNewAlbum_Click();
    void mnuAMNewFolder_Click();
    void mnuAMConvert_Click();
    void mnuAMMoveAlbumToTrash_Click();
    void mnuAMMoveToTrash_Click();
    void mnuAMRefresh_Click();
    void mnuAMRename_Click();
    void mnuAMRenameAlbum_Click();
    void mnuAMShowInShell_Click();
    void mnuGlobalSearch_Click();
    void mnuGPSLocator_Click();
    void mnuMapLocator_Click();
    void mnuGPSLog_Click();
    // The GPS log manager, shown and brought to the front (made when there is none).
    GpsWindow *ShowGpsWindow();
    // The album manager, shown and brought to the front (made when there is none).
    AlbumManagerWindow *ShowAlbumManager();

protected:
    void closeEvent(QCloseEvent *event) override;
    void AlbumWindowGone();

private:
    void BuildPluginMenus();
    void BuildCommands();
    QMenu *MenuFor(const QString &name);
    void RebuildRecentDocsMenu();
    // `opened` learns the album's window once the album has opened (its whole list read and its
    // drop folder imported), or null when it did not open.
    void OpenAlbum(const QString &path, const std::function<void(AlbumWindow *)> &opened = {});
    void StartOpenedAlbum(const QString &path, AlbumDocument::OpenResult &prepared, bool listMade,
                          const std::function<void(AlbumWindow *)> &opened);
    void ShowAlbumWindow(AlbumWindow *album);
    void AlbumOpened(const QString &path);
    QMdiSubWindow *FindAlbumWindow(const QString &path) const;
    void FailToOpen(const QString &reason = {});
    // Quitting: true once the GPS log is saved; else its saving has begun and closes this window
    // again when done.
    bool GpsLogSettled();

    QMdiArea *documents;
    QToolBar *toolBar;
    QHash<QString, QMenu *> menus;
    QList<QAction *> pluginActions;
    QHash<QString, QAction *> commands;
    QList<QAction *> recentEntries;
    std::unique_ptr<FileChooser> chooser;
    std::unique_ptr<InterfaceCalls> calls; // the prompter's way onto the interface thread
    std::unique_ptr<Prompter> prompter;
    std::unique_ptr<TaskRunner> opener;
    // An album window reading its list, not shown yet (it shows with its first records).
    QPointer<AlbumWindow> unshown;
    // The user asked to quit while albums had work running: they close as their work stops, and
    // the program quits when the last has gone.
    bool quitWhenWorkStops = false;
    QPointer<WelcomeWindow> welcome;
    // The GPS log every GPS window and dialog of this run shares.
    GpsLog gpsLog;
    QPointer<GpsWindow> gpsWindow;
    bool gpsSavedForQuit = false;
};
