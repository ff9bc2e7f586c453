#pragma once

#include <QListView>
#include <QTimer>

class ThumbnailCache;
class ThumbnailDelegate;

// OrvThumbnailView: the album's grid. A list view in icon mode with cells of one size, laid out
// in batches so a large album opens at once; thumbnails are asked for only for the cells in
// view, and those still queued when their cells scroll away are dropped.
class OrvThumbnailView : public QListView {
    Q_OBJECT
public:
    OrvThumbnailView(ThumbnailCache &cache, bool showFileName, QWidget *parent = nullptr);

    void setModel(QAbstractItemModel *model) override;
    // Record indices (from 1) of the selected cells, in album order.
    QList<int> SelectedRecords() const;
    void SelectRecords(const QList<int> &records);
    int CurrentRecord() const;
    void SetCurrentRecord(int record);

signals:
    // Double-click or Enter on a cell: show that photo alone.
    void OpenRequested(const QModelIndex &index);
    // Files or folders dropped from a file manager, to be imported.
    void FilesDropped(const QStringList &paths);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void resizeEvent(QResizeEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void Repaint(const QString &path);
    void DropUnseen();

    ThumbnailCache &cache;
    ThumbnailDelegate *delegate;
    QTimer settle;
};
