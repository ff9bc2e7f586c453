#pragma once

#include <QTimer>
#include <QWidget>

// The about window shown while the program starts: it fades in on a timer until NormalShow.
class SplashWindow : public QWidget {
    Q_OBJECT
public:
    explicit SplashWindow(QWidget *parent = nullptr);
    void NormalShow();

private:
    QTimer fade;
};
