#include "ui/manager/CellGrid.h"

#include "ui/manager/AlbumCell.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>

namespace {

constexpr int Gap = 6;

QStringList DroppedFolders(const QMimeData *data)
{
    QStringList folders;
    for (const QUrl &url : data->urls()) {
        if (url.isLocalFile() && QFileInfo(url.toLocalFile()).isDir())
            folders << url.toLocalFile();
    }
    return folders;
}

} // namespace

CellGrid::CellGrid(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("AlbumCells"));
    setAcceptDrops(true);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);
}

QList<OrvAlbumCell *> CellGrid::Reset(const QStringList &albums)
{
    qDeleteAll(cells);
    cells.clear();
    for (const QString &album : albums) {
        auto *cell = new OrvAlbumCell(this);
        cell->SetAlbumPath(album);
        connect(cell, &OrvAlbumCell::Clicked, this, &CellGrid::Select);
        cells << cell;
        cell->show();
    }
    Arrange();
    emit SelectionChanged(nullptr);
    return cells;
}

OrvAlbumCell *CellGrid::Find(const QString &album) const
{
    for (OrvAlbumCell *cell : cells) {
        if (cell->GetAlbumPath() == album)
            return cell;
    }
    return nullptr;
}

OrvAlbumCell *CellGrid::Selected() const
{
    for (OrvAlbumCell *cell : cells) {
        if (cell->IsSelected())
            return cell;
    }
    return nullptr;
}

void CellGrid::Select(OrvAlbumCell *chosen)
{
    for (OrvAlbumCell *cell : cells)
        cell->SelectCell(cell == chosen);
    emit SelectionChanged(chosen);
}

void CellGrid::Arrange()
{
    const QSize size = OrvAlbumCell::CellSize();
    const int columns = std::max(1, (width() - Gap) / (size.width() + Gap));
    for (qsizetype i = 0; i < cells.size(); ++i) {
        const int row = static_cast<int>(i) / columns;
        const int column = static_cast<int>(i) % columns;
        cells[i]->move(Gap + column * (size.width() + Gap), Gap + row * (size.height() + Gap));
    }
    const int rows = (static_cast<int>(cells.size()) + columns - 1) / columns;
    setMinimumHeight(Gap + rows * (size.height() + Gap));
}

void CellGrid::resizeEvent(QResizeEvent *)
{
    Arrange();
}

void CellGrid::mousePressEvent(QMouseEvent *)
{
    Select(nullptr);
}

void CellGrid::dragEnterEvent(QDragEnterEvent *event)
{
    if (!DroppedFolders(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void CellGrid::dropEvent(QDropEvent *event)
{
    const QStringList folders = DroppedFolders(event->mimeData());
    if (folders.isEmpty())
        return;
    event->acceptProposedAction();
    emit FoldersDropped(folders);
}
