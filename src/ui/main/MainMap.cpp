#include "ui/main/MainWindow.h"

#include "ui/album/AlbumWindow.h"
#include "ui/map/MapLocatorDialog.h"

void MainWindow::mnuMapLocator_Click()
{
    AlbumWindow *album = ActiveAlbum();
    if (!album)
        return;
    auto *dialog = new MapLocatorDialog(Gps(), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->SetDocument(album->Document());
    dialog->show();
}
