#pragma once

#include "ui/edit/CropFrame.h"

#include <QDialog>

class CropPreview;
class QButtonGroup;
class QPushButton;

// The crop window: a rectangle of a chosen ratio over a preview of the photo that fits
// 640 x 480 pixels. Shown with open(); once accepted, Rectangle() is the crop in photo pixels.
class CropImageWindow : public QDialog {
    Q_OBJECT
public:
    explicit CropImageWindow(QWidget *parent = nullptr);

    // The photo is decoded on a worker; the preview shows when PreviewReady is emitted.
    void InitWithImageFile(const QString &path);
    CropRectangle Rectangle() const { return frame.Pixels(); }
    const CropFrame &Frame() const { return frame; }

signals:
    void PreviewReady();

private:
    double ChosenRatio() const;

    CropFrame frame;
    CropPreview *preview = nullptr;
    QButtonGroup *ratios = nullptr;
    QPushButton *ok = nullptr;
};
