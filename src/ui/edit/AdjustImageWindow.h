#pragma once

#include "imaging/ColourTables.h"
#include "imaging/Picture.h"

#include <QDialog>

class QCheckBox;
class QLabel;
class QSlider;

// The adjust window: contrast and colour balance of one photo, tried on a preview that fits
// 480 x 480 pixels. Shown with open(); once accepted, Sliders() holds what the edit applies.
class AdjustImageWindow : public QDialog {
    Q_OBJECT
public:
    explicit AdjustImageWindow(QWidget *parent = nullptr);

    // The photo is decoded on a worker; the preview shows when PreviewReady is emitted.
    void InitWithImageFile(const QString &path);
    AdjustSliders Sliders() const;

    // Contrast runs from none to double (factor 0 to 2); each colour may move its channel
    // 100 levels either way, which already turns any photo to a tint.
    static constexpr int ContrastMinimum = 0, ContrastMaximum = 200;
    static constexpr int ColourMinimum = 50, ColourMaximum = 250;

signals:
    void PreviewReady();

private:
    QSlider *AddSlider(const QString &name, int minimum, int maximum, int neutral);
    void ColourMoved(QSlider *moved);
    void BalanceToggled(bool on);
    void Revert();
    void Redraw();

    QSlider *contrast = nullptr;
    QSlider *red = nullptr;
    QSlider *green = nullptr;
    QSlider *blue = nullptr;
    QCheckBox *keepBalance = nullptr;
    QLabel *preview = nullptr;
    Picture source; // the preview as decoded: every redraw starts again from it
    bool coupling = false;
};
