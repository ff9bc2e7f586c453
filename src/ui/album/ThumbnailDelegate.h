#pragma once

#include <QHash>
#include <QPersistentModelIndex>
#include <QStyledItemDelegate>

class ThumbnailCache;

// Paints one grid cell from the model's roles and the thumbnail cache: the thumbnail (or a
// neutral placeholder while it decodes), the star mark, the highlight frame and, when asked, the
// file name under the picture.
class ThumbnailDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    ThumbnailDelegate(ThumbnailCache &cache, bool showFileName, QObject *parent = nullptr);

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

    // The cell that asked for a thumbnail, to repaint when it is ready; invalid when none did.
    QModelIndex TakeWaitingCell(const QString &path);
    void ForgetWaitingCells();

private:
    void PaintStar(QPainter *painter, const QRectF &box) const;

    ThumbnailCache &cache;
    bool showFileName;
    mutable QHash<QString, QPersistentModelIndex> waiting;
};
