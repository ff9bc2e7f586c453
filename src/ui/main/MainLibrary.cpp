#include "ui/main/MainWindow.h"

#include "ui/album/AlbumWindow.h"
#include "ui/common/FileChooser.h"
#include "ui/manager/AlbumManagerWindow.h"
#include "ui/manager/GlobalSearchWindow.h"
#include "ui/main/WelcomeWindow.h"

#include "library/OpenAlbums.h"

#include <QDir>
#include <QMdiArea>
#include <QMdiSubWindow>

namespace {

// Closes the album windows of an album, or of the albums inside a folder, before the library
// renames or removes it; an album that cannot save its changes refuses, and stops the command.
class MainOpenAlbums : public QObject, public OpenAlbums {
public:
    MainOpenAlbums(MainWindow &frame, QObject *parent) : QObject(parent), main(frame) {}

    bool CloseAlbumsUnder(const QString &given) override
    {
        const QString path = QDir::cleanPath(given);
        for (AlbumWindow *album : main.AlbumWindows()) {
            const QString albumPath = QDir::cleanPath(album->Path());
            if (albumPath != path && !albumPath.startsWith(path + u'/'))
                continue;
            auto *frame = qobject_cast<QMdiSubWindow *>(album->parentWidget());
            if (frame && !frame->close())
                return false;
        }
        return true;
    }

private:
    MainWindow &main;
};

template <typename Window>
Window *FindChild(QMdiArea *area)
{
    for (QMdiSubWindow *frame : area->subWindowList()) {
        if (auto *window = qobject_cast<Window *>(frame->widget())) {
            area->setActiveSubWindow(frame);
            return window;
        }
    }
    return nullptr;
}

QMdiSubWindow *AddChild(QMdiArea *area, QWidget *window, const QSize &size)
{
    QMdiSubWindow *frame = area->addSubWindow(window);
    frame->setAttribute(Qt::WA_DeleteOnClose);
    frame->resize(size.boundedTo(area->viewport()->size()));
    frame->show();
    area->setActiveSubWindow(frame);
    return frame;
}

} // namespace

AlbumManagerWindow *MainWindow::ShowAlbumManager()
{
    // The manager takes the welcome window's place, as an album does.
    if (welcome)
        welcome->close();
    if (auto *shown = FindChild<AlbumManagerWindow>(documents))
        return shown;
    auto *open = new MainOpenAlbums(*this, nullptr);
    auto *manager = new AlbumManagerWindow(*prompter, *open, [this](const QString &path) { OpenDoc(path, false); });
    open->setParent(manager);
    connect(manager, &AlbumManagerWindow::GlobalSearchWanted, this, &MainWindow::mnuGlobalSearch_Click);
    AddChild(documents, manager, {1080, 640});
    return manager;
}

void MainWindow::mnuAlbumManager_Click()
{
    ShowAlbumManager();
}

void MainWindow::mnuGlobalSearch_Click()
{
    if (welcome)
        welcome->close();
    if (FindChild<GlobalSearchWindow>(documents))
        return;
    auto *search = new GlobalSearchWindow(*prompter, *chooser, [this](const QString &path, std::function<void()> done) {
        OpenAlbum(path, [done](AlbumWindow *) { done(); });
    });
    AddChild(documents, search, {760, 600});
}

void MainWindow::mnuAMNewAlbum_Click()
{
    ShowAlbumManager()->ActionNewAlbum();
}

void MainWindow::mnuAMNewFolder_Click()
{
    ShowAlbumManager()->ActionNewFolder();
}

void MainWindow::mnuAMConvert_Click()
{
    ShowAlbumManager()->ActionConvertFolderToAlbum();
}

void MainWindow::mnuAMMoveAlbumToTrash_Click()
{
    ShowAlbumManager()->ActionMoveAlbumToTrash();
}

void MainWindow::mnuAMMoveToTrash_Click()
{
    ShowAlbumManager()->ActionMoveToTrash();
}

void MainWindow::mnuAMRefresh_Click()
{
    ShowAlbumManager()->ActionRefresh();
}

void MainWindow::mnuAMRename_Click()
{
    ShowAlbumManager()->ActionRename();
}

void MainWindow::mnuAMRenameAlbum_Click()
{
    ShowAlbumManager()->ActionRenameAlbum();
}

void MainWindow::mnuAMShowInShell_Click()
{
    ShowAlbumManager()->ActionShowInShell();
}
