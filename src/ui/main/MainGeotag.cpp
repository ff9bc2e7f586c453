// The main window's GPS commands that open a window of their own over the active album.

#include "ui/main/MainWindow.h"

#include "ui/album/AlbumWindow.h"
#include "ui/geotag/GpsLocatorDialog.h"

void MainWindow::mnuGPSLocator_Click()
{
    AlbumWindow *album = ActiveAlbum();
    if (!album)
        return;
    auto *dialog = new GpsLocatorDialog(*album, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->show();
}
