#include "ui/album/ThumbnailDelegate.h"

#include "ui/album/AlbumRoles.h"
#include "ui/album/ThumbnailCache.h"

#include <QApplication>
#include <QPainter>
#include <QPainterPath>
#include <QtMath>

namespace {

constexpr int Margin = 8;

int CaptionHeight(const QStyleOptionViewItem &option)
{
    return option.fontMetrics.height() + 4;
}

} // namespace

ThumbnailDelegate::ThumbnailDelegate(ThumbnailCache &thumbnails, bool fileNames, QObject *parent)
    : QStyledItemDelegate(parent), cache(thumbnails), showFileName(fileNames)
{
}

QSize ThumbnailDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &) const
{
    const int side = ThumbnailCache::Box + 2 * Margin;
    return {side, side + (showFileName ? CaptionHeight(option) : 0)};
}

void ThumbnailDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const QPalette &palette = option.palette;
    const QRectF cell = QRectF(option.rect).adjusted(2, 2, -2, -2);
    if (option.state & QStyle::State_Selected) {
        painter->setPen(Qt::NoPen);
        painter->setBrush(palette.color(QPalette::Highlight));
        painter->drawRoundedRect(cell, 6, 6);
    }
    if (index.data(HighlightRole).toBool()) {
        // Found by a search or a date: a frame of its own, seen with or without the selection.
        painter->setPen(QPen(QColor(255, 170, 0), 3));
        painter->setBrush(Qt::NoBrush);
        painter->drawRoundedRect(cell.adjusted(1.5, 1.5, -1.5, -1.5), 6, 6);
    }

    const QRect box(option.rect.x() + (option.rect.width() - ThumbnailCache::Box) / 2, option.rect.y() + Margin,
                    ThumbnailCache::Box, ThumbnailCache::Box);
    const QString path = index.data(ThumbnailPathRole).toString();
    const QImage image = cache.Thumbnail(path);
    if (image.isNull()) {
        painter->setPen(Qt::NoPen);
        painter->setBrush(palette.color(QPalette::Mid));
        painter->setOpacity(0.35);
        const QSize placeholder = QSize(4, 3).scaled(box.size(), Qt::KeepAspectRatio);
        painter->drawRoundedRect(QRect(QPoint(box.x() + (box.width() - placeholder.width()) / 2,
                                              box.y() + (box.height() - placeholder.height()) / 2),
                                       placeholder),
                                 4, 4);
        painter->setOpacity(1);
        if (!path.isEmpty()) {
            waiting.insert(path, index);
            cache.Request(path);
        }
    } else {
        const QSize shown = image.size().scaled(box.size(), Qt::KeepAspectRatio).boundedTo(image.size());
        const QRect target(QPoint(box.x() + (box.width() - shown.width()) / 2, box.y() + (box.height() - shown.height()) / 2),
                           shown);
        painter->drawImage(target, image);
    }

    if (index.data(StarRole).toBool())
        PaintStar(painter, QRectF(box.right() - 22, box.y() + 2, 20, 20));

    if (showFileName) {
        const QRect caption(option.rect.x() + 4, box.bottom() + 4, option.rect.width() - 8, CaptionHeight(option));
        painter->setPen(palette.color(option.state & QStyle::State_Selected ? QPalette::HighlightedText : QPalette::Text));
        painter->setFont(option.font);
        painter->drawText(caption, Qt::AlignHCenter | Qt::AlignTop,
                          option.fontMetrics.elidedText(index.data(FileRole).toString(), Qt::ElideMiddle, caption.width()));
    }
    if (option.state & QStyle::State_HasFocus) {
        painter->setPen(QPen(palette.color(QPalette::Highlight).darker(130), 1, Qt::DotLine));
        painter->setBrush(Qt::NoBrush);
        painter->drawRoundedRect(cell, 6, 6);
    }
    painter->restore();
}

void ThumbnailDelegate::PaintStar(QPainter *painter, const QRectF &box) const
{
    QPainterPath star;
    const QPointF centre = box.center();
    const qreal outer = box.width() / 2;
    const qreal inner = outer * 0.45;
    for (int point = 0; point < 10; ++point) {
        const qreal radius = point % 2 ? inner : outer;
        const qreal angle = qDegreesToRadians(-90.0 + point * 36.0);
        const QPointF corner(centre.x() + radius * qCos(angle), centre.y() + radius * qSin(angle));
        if (point == 0)
            star.moveTo(corner);
        else
            star.lineTo(corner);
    }
    star.closeSubpath();
    painter->setPen(QPen(QColor(120, 80, 0), 1));
    painter->setBrush(QColor(255, 200, 0));
    painter->drawPath(star);
}

QModelIndex ThumbnailDelegate::TakeWaitingCell(const QString &path)
{
    const QPersistentModelIndex cell = waiting.take(path);
    return cell;
}

void ThumbnailDelegate::ForgetWaitingCells()
{
    waiting.clear();
}
