#include "ui/edit/CropFrame.h"

#include <QLineF>

#include <algorithm>
#include <cmath>

void CropFrame::Reset(const QSizeF &photo, double wanted)
{
    bounds = photo;
    ratio = wanted > 0 ? wanted : 1;
    rect = Fitted({bounds.width() / 2, bounds.height() / 2}, bounds.width());
}

QRectF CropFrame::Fitted(const QPointF &centre, double width) const
{
    // As wide as asked, no wider than the photo allows at the ratio, then moved inside.
    const double widest = std::min(bounds.width(), bounds.height() * ratio);
    const double w = std::clamp(width, std::min(SmallestSide, widest), widest);
    const double h = w / ratio;
    const double left = std::clamp(centre.x() - w / 2, 0.0, bounds.width() - w);
    const double top = std::clamp(centre.y() - h / 2, 0.0, bounds.height() - h);
    return {left, top, w, h};
}

void CropFrame::SetRatio(double wanted)
{
    if (wanted <= 0)
        return;
    const double area = rect.width() * rect.height();
    ratio = wanted;
    rect = Fitted(rect.center(), std::sqrt(area * ratio));
}

CropFrame::Grip CropFrame::GripAt(const QPointF &point, double reach) const
{
    const std::pair<Grip, QPointF> corners[] = {{Grip::TopLeft, rect.topLeft()},
                                                {Grip::TopRight, rect.topRight()},
                                                {Grip::BottomLeft, rect.bottomLeft()},
                                                {Grip::BottomRight, rect.bottomRight()}};
    for (const auto &[grip, corner] : corners) {
        if (QLineF(point, corner).length() <= reach)
            return grip;
    }
    return rect.contains(point) ? Grip::Move : Grip::None;
}

void CropFrame::Begin(Grip grip, const QPointF &at)
{
    held = grip;
    start = at;
    startRect = rect;
}

void CropFrame::DragTo(const QPointF &at)
{
    const QPointF moved = at - start;
    if (held == Grip::None)
        return;
    if (held == Grip::Move) {
        rect = Fitted(startRect.center() + moved, startRect.width());
        return;
    }
    // The corner opposite the handle stays put; the handle's corner follows the pointer along
    // the ratio's diagonal, as far as the photo's edges on that side allow.
    const bool left = held == Grip::TopLeft || held == Grip::BottomLeft;
    const bool top = held == Grip::TopLeft || held == Grip::TopRight;
    const QPointF anchor(left ? startRect.right() : startRect.left(), top ? startRect.bottom() : startRect.top());
    const QPointF corner(left ? startRect.left() : startRect.right(), top ? startRect.top() : startRect.bottom());
    const QPointF pointer = corner + moved;
    const double wantedWidth = std::max(std::abs(pointer.x() - anchor.x()), std::abs(pointer.y() - anchor.y()) * ratio);
    const double roomX = left ? anchor.x() : bounds.width() - anchor.x();
    const double roomY = top ? anchor.y() : bounds.height() - anchor.y();
    const double widest = std::min(roomX, roomY * ratio);
    const double w = std::clamp(wantedWidth, std::min(SmallestSide, widest), widest);
    const double h = w / ratio;
    rect = QRectF(left ? anchor.x() - w : anchor.x(), top ? anchor.y() - h : anchor.y(), w, h);
}

CropRectangle CropFrame::Pixels() const
{
    const auto whole = [](double value) { return static_cast<int>(std::lround(value)); };
    return {whole(rect.left()), whole(rect.top()), whole(rect.right()), whole(rect.bottom())};
}
