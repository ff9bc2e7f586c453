#include "ui/edit/CropPreview.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace {

constexpr double HandleReach = 8; // widget pixels around a corner that take its handle

Qt::CursorShape CursorFor(CropFrame::Grip grip)
{
    switch (grip) {
    case CropFrame::Grip::Move:
        return Qt::SizeAllCursor;
    case CropFrame::Grip::TopLeft:
    case CropFrame::Grip::BottomRight:
        return Qt::SizeFDiagCursor;
    case CropFrame::Grip::TopRight:
    case CropFrame::Grip::BottomLeft:
        return Qt::SizeBDiagCursor;
    case CropFrame::Grip::None:
        break;
    }
    return Qt::ArrowCursor;
}

} // namespace

CropPreview::CropPreview(CropFrame &shaped, const QSize &box, QWidget *parent) : QWidget(parent), frame(shaped)
{
    setObjectName(QStringLiteral("PicturePreview"));
    setFixedSize(box);
    setMouseTracking(true);
}

void CropPreview::SetPicture(const QImage &shown, const QSize &photoSize)
{
    picture = shown;
    photo = photoSize;
    update();
}

QRectF CropPreview::PictureArea() const
{
    const QSizeF size = picture.size();
    return {(width() - size.width()) / 2, (height() - size.height()) / 2, size.width(), size.height()};
}

double CropPreview::Reach() const
{
    return HandleReach * photo.width() / std::max(1.0, PictureArea().width());
}

QPointF CropPreview::ToWidget(const QPointF &photoPoint) const
{
    const QRectF area = PictureArea();
    if (photo.isEmpty())
        return area.topLeft();
    return area.topLeft() + QPointF(photoPoint.x() * area.width() / photo.width(), photoPoint.y() * area.height() / photo.height());
}

QPointF CropPreview::ToPhoto(const QPointF &widgetPoint) const
{
    const QRectF area = PictureArea();
    if (area.isEmpty())
        return {};
    const QPointF inside = widgetPoint - area.topLeft();
    return {inside.x() * photo.width() / area.width(), inside.y() * photo.height() / area.height()};
}

void CropPreview::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().window());
    if (picture.isNull())
        return;
    const QRectF area = PictureArea();
    painter.drawImage(area.topLeft(), picture);
    const QRectF crop(ToWidget(frame.Rect().topLeft()), ToWidget(frame.Rect().bottomRight()));
    // What the crop leaves out is dimmed; the rectangle and its handles drawn over it.
    QPainterPath outside;
    outside.addRect(area);
    outside.addRect(crop);
    painter.fillPath(outside, QColor(0, 0, 0, 128));
    painter.setPen(QPen(Qt::white, 1, Qt::DashLine));
    painter.drawRect(crop);
    painter.setPen(Qt::black);
    painter.setBrush(Qt::white);
    for (const QPointF &corner : {crop.topLeft(), crop.topRight(), crop.bottomLeft(), crop.bottomRight()})
        painter.drawRect(QRectF(corner - QPointF(4, 4), QSizeF(8, 8)));
}

void CropPreview::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || picture.isNull())
        return;
    const CropFrame::Grip grip = frame.GripAt(ToPhoto(event->position()), Reach());
    dragging = grip != CropFrame::Grip::None;
    frame.Begin(grip, ToPhoto(event->position()));
}

void CropPreview::mouseMoveEvent(QMouseEvent *event)
{
    if (!dragging) {
        setCursor(CursorFor(frame.GripAt(ToPhoto(event->position()), Reach())));
        return;
    }
    frame.DragTo(ToPhoto(event->position()));
    update();
}

void CropPreview::mouseReleaseEvent(QMouseEvent *event)
{
    if (dragging)
        frame.DragTo(ToPhoto(event->position()));
    dragging = false;
    frame.Begin(CropFrame::Grip::None, {});
    update();
}
