#include "ui/main/AlbumSubWindow.h"

#include "ui/album/AlbumWindow.h"

#include <QCloseEvent>

AlbumSubWindow::AlbumSubWindow(AlbumWindow *shown, QWidget *parent) : QMdiSubWindow(parent), album(shown)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWidget(album);
    setWindowTitle(album->windowTitle());
    setWindowIcon(album->windowIcon());
    connect(album, &AlbumWindow::CaptionChanged, this, &QWidget::setWindowTitle);
}

void AlbumSubWindow::closeEvent(QCloseEvent *event)
{
    if (!album->CloseAlbum()) {
        event->ignore();
        return;
    }
    QMdiSubWindow::closeEvent(event);
}
