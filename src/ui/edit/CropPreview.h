#pragma once

#include "ui/edit/CropFrame.h"

#include <QImage>
#include <QWidget>

// The crop window's picture: the photo's preview with the crop rectangle over it, dragged by its
// inside and resized by its corner handles. The rectangle lives in photo pixels (CropFrame);
// this only maps the pointer onto the photo and paints.
class CropPreview : public QWidget {
    Q_OBJECT
public:
    CropPreview(CropFrame &frame, const QSize &box, QWidget *parent = nullptr);

    void SetPicture(const QImage &picture, const QSize &photoSize);
    // Where a point of the photo shows in the widget, and back.
    QPointF ToWidget(const QPointF &photoPoint) const;
    QPointF ToPhoto(const QPointF &widgetPoint) const;

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    QRectF PictureArea() const;
    // How near a corner, in photo pixels, a press takes its handle.
    double Reach() const;

    CropFrame &frame;
    QImage picture;
    QSize photo;
    bool dragging = false;
};
