#pragma once

#include "imaging/Picture.h"

#include <QPointF>
#include <QRectF>
#include <QSizeF>

// The crop rectangle as the user shapes it, in pixels of the photo: it always keeps the chosen
// ratio of width to height and stays inside the photo, whatever the pointer does.
class CropFrame {
public:
    // What a press at a point takes hold of.
    enum class Grip { None, Move, TopLeft, TopRight, BottomLeft, BottomRight };

    // The largest rectangle of the ratio, centred in the photo.
    void Reset(const QSizeF &photo, double ratio);
    // A new ratio keeps the centre and the area as far as the photo allows.
    void SetRatio(double ratio);

    Grip GripAt(const QPointF &point, double reach) const;
    // Follows the pointer from where the grip was taken to where it is now.
    void Begin(Grip grip, const QPointF &at);
    void DragTo(const QPointF &at);

    const QRectF &Rect() const { return rect; }
    double Ratio() const { return ratio; }
    // Whole pixels, right and bottom the first column and row left out.
    CropRectangle Pixels() const;

    // The smallest side the rectangle may shrink to, so that a handle never vanishes.
    static constexpr double SmallestSide = 16;

private:
    QRectF Fitted(const QPointF &centre, double width) const;

    QSizeF bounds;
    double ratio = 1;
    QRectF rect;
    Grip held = Grip::None;
    QPointF start;
    QRectF startRect;
};
