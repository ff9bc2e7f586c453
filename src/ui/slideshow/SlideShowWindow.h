#pragma once

#include "ui/album/DetailPictures.h"

#include <QImage>
#include <QList>
#include <QString>
#include <QTimer>
#include <QVariantAnimation>
#include <QWidget>

// The slide show: the photos full screen, one after another on a timer, each decoded ahead at
// the screen's size on a worker, cross-faded into the next unless [SlideShow] NoAnimation, with
// its note under it unless NoPhotoDescription. Space pauses; the arrow and page keys step; Home
// and End go to the first and last; Escape (or a click) leaves.
class SlideShowWindow : public QWidget {
    Q_OBJECT
public:
    struct Slide {
        QString path;
        QString note;
    };
    struct Options {
        int intervalMs = 5000;
        bool animate = true;
        bool showNotes = true;
    };
    // [SlideShow] TimerInterval (seconds, 5 when unset or not a number), NoAnimation, NoPhotoDescription.
    static Options ReadOptions();

    SlideShowWindow(QList<Slide> slides, const Options &options, QWidget *parent = nullptr);

    int Current() const { return current; }
    bool IsPaused() const { return paused; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    QSize Box() const;
    void Request(int index);
    void ShowSlide(int index);
    void PictureReady(const QString &path);
    void Step(int by);

    QList<Slide> slides;
    Options options;
    DetailPictures pictures;
    QTimer timer;
    QVariantAnimation fade;
    QImage shown;
    QImage leaving;
    int current = -1;
    int wanted = 0; // the slide asked for, shown once its picture is ready
    bool paused = false;
};
