// Times the adjust window's live preview: a slider move, from the slider's new value to the
// 480-pixel preview repainted with the new tables, over many moves of every slider.
// Usage: bench_adjust_preview PHOTO [MOVES]; prints JSON (milliseconds: median, 95th percentile,
// worst, best).
#include "ui/edit/AdjustImageWindow.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QSignalSpy>
#include <QSlider>

#include <algorithm>
#include <cstdio>
#include <vector>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: bench_adjust_preview PHOTO [MOVES]\n");
        return 2;
    }
    const int moves = argc > 2 ? std::max(1, std::atoi(argv[2])) : 200;
    AdjustImageWindow window;
    QSignalSpy ready(&window, &AdjustImageWindow::PreviewReady);
    window.InitWithImageFile(QString::fromLocal8Bit(argv[1]));
    window.show();
    while (ready.isEmpty())
        ready.wait(1000);
    auto *preview = window.findChild<QLabel *>(QStringLiteral("PicturePreview"));
    const QList<QSlider *> sliders = {window.findChild<QSlider *>(QStringLiteral("SliderContrast")),
                                      window.findChild<QSlider *>(QStringLiteral("SliderRed")),
                                      window.findChild<QSlider *>(QStringLiteral("SliderGreen")),
                                      window.findChild<QSlider *>(QStringLiteral("SliderBlue"))};
    std::vector<double> times;
    for (int move = 0; move < moves; ++move) {
        QSlider *slider = sliders[move % sliders.size()];
        const int value = slider->minimum() + (move * 7) % (slider->maximum() - slider->minimum() + 1);
        QElapsedTimer clock;
        clock.start();
        slider->setValue(value == slider->value() ? value + 1 : value);
        preview->repaint();
        times.push_back(clock.nsecsElapsed() / 1e6);
    }
    std::sort(times.begin(), times.end());
    std::printf("{\"preview\": \"%dx%d\", \"median_ms\": %.2f, \"p95_ms\": %.2f, \"worst_ms\": %.2f, \"best_ms\": %.2f}\n",
                preview->pixmap().width(), preview->pixmap().height(), times[times.size() / 2], times[times.size() * 95 / 100],
                times.back(), times.front());
    return 0;
}
