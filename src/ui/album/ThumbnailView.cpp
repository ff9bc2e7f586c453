#include "ui/album/ThumbnailView.h"

#include "ui/album/AlbumRoles.h"
#include "ui/album/ThumbnailCache.h"
#include "ui/album/ThumbnailDelegate.h"

#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QUrl>
#include <QSet>

#include <algorithm>

OrvThumbnailView::OrvThumbnailView(ThumbnailCache &thumbnails, bool showFileName, QWidget *parent)
    : QListView(parent), cache(thumbnails), delegate(new ThumbnailDelegate(thumbnails, showFileName, this))
{
    setObjectName(QStringLiteral("OrvThumbnailView"));
    setViewMode(QListView::IconMode);
    setMovement(QListView::Static);
    setResizeMode(QListView::Adjust);
    setUniformItemSizes(true);
    setLayoutMode(QListView::Batched);
    setBatchSize(200);
    setSpacing(4);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setSelectionRectVisible(true);
    setWordWrap(false);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    setItemDelegate(delegate);
    // Only files from outside are taken: the cells themselves are never dragged.
    setDragDropMode(QAbstractItemView::DropOnly);
    // Drops are delivered to the viewport, which takes them only when it says so itself.
    viewport()->setAcceptDrops(true);

    // Scrolling settles before queued thumbnails of cells gone by are dropped.
    settle.setSingleShot(true);
    settle.setInterval(150);
    connect(&settle, &QTimer::timeout, this, &OrvThumbnailView::DropUnseen);
    connect(&cache, &ThumbnailCache::ThumbnailReady, this, &OrvThumbnailView::Repaint);
    connect(this, &QAbstractItemView::doubleClicked, this, &OrvThumbnailView::OpenRequested);
}

void OrvThumbnailView::setModel(QAbstractItemModel *rows)
{
    QListView::setModel(rows);
    connect(rows, &QAbstractItemModel::modelReset, delegate, &ThumbnailDelegate::ForgetWaitingCells);
    connect(rows, &QAbstractItemModel::layoutChanged, delegate, &ThumbnailDelegate::ForgetWaitingCells);
}

QList<int> OrvThumbnailView::SelectedRecords() const
{
    QList<int> records;
    if (!selectionModel())
        return records;
    for (const QModelIndex &index : selectionModel()->selectedIndexes())
        records << index.data(RecordIndexRole).toInt();
    std::sort(records.begin(), records.end());
    return records;
}

void OrvThumbnailView::SelectRecords(const QList<int> &records)
{
    QItemSelection selection;
    for (const int record : records) {
        const QModelIndex index = model()->index(record - 1, 0);
        if (index.isValid())
            selection.select(index, index);
    }
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

int OrvThumbnailView::CurrentRecord() const
{
    return currentIndex().isValid() ? currentIndex().data(RecordIndexRole).toInt() : 0;
}

void OrvThumbnailView::SetCurrentRecord(int record)
{
    const QModelIndex index = model()->index(record - 1, 0);
    if (!index.isValid())
        return;
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    scrollTo(index);
}

void OrvThumbnailView::keyPressEvent(QKeyEvent *event)
{
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && currentIndex().isValid()) {
        emit OpenRequested(currentIndex());
        return;
    }
    QListView::keyPressEvent(event);
}

void OrvThumbnailView::scrollContentsBy(int dx, int dy)
{
    QListView::scrollContentsBy(dx, dy);
    settle.start();
}

void OrvThumbnailView::resizeEvent(QResizeEvent *event)
{
    QListView::resizeEvent(event);
    settle.start();
}

namespace {

QStringList LocalPaths(const QMimeData *data)
{
    QStringList paths;
    if (!data || !data->hasUrls())
        return paths;
    for (const QUrl &url : data->urls()) {
        if (url.isLocalFile())
            paths << url.toLocalFile();
    }
    return paths;
}

} // namespace

void OrvThumbnailView::dragEnterEvent(QDragEnterEvent *event)
{
    if (LocalPaths(event->mimeData()).isEmpty())
        return event->ignore();
    event->acceptProposedAction();
}

void OrvThumbnailView::dragMoveEvent(QDragMoveEvent *event)
{
    if (LocalPaths(event->mimeData()).isEmpty())
        return event->ignore();
    event->acceptProposedAction();
}

void OrvThumbnailView::dropEvent(QDropEvent *event)
{
    const QStringList paths = LocalPaths(event->mimeData());
    if (paths.isEmpty())
        return event->ignore();
    event->acceptProposedAction();
    emit FilesDropped(paths);
}

void OrvThumbnailView::Repaint(const QString &path)
{
    const QModelIndex cell = delegate->TakeWaitingCell(path);
    if (cell.isValid())
        update(cell);
}

void OrvThumbnailView::DropUnseen()
{
    if (!model())
        return;
    // Cells of one size: the rows in view are those whose rectangles meet the viewport.
    QSet<QString> seen;
    const QRect shown = viewport()->rect();
    for (int row = 0; row < model()->rowCount(); ++row) {
        const QModelIndex index = model()->index(row, 0);
        if (visualRect(index).intersects(shown))
            seen.insert(index.data(ThumbnailPathRole).toString());
    }
    cache.KeepOnly(seen);
}
