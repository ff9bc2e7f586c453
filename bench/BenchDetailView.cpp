// Times the detail view's pictures: a photo decoded to fit a 1920 x 1080 view from the request
// to the picture being ready, and the next photo once it was decoded ahead, best of N runs each.
// Usage: bench_detail_view PHOTO NEXT_PHOTO [RUNS]; prints JSON.
#include "ui/album/DetailPictures.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QSignalSpy>
#include <cstdio>

namespace {

// Milliseconds from the request until the picture is there.
double TimeToPicture(DetailPictures &pictures, const QString &photo, const QSize &box)
{
    QElapsedTimer clock;
    clock.start();
    if (pictures.Picture(photo, box).isNull()) {
        QSignalSpy ready(&pictures, &DetailPictures::Ready);
        while (ready.isEmpty())
            ready.wait(1000);
    }
    return clock.nsecsElapsed() / 1e6;
}

} // namespace

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);
    if (argc < 3) {
        std::fprintf(stderr, "usage: bench_detail_view PHOTO NEXT_PHOTO [RUNS]\n");
        return 2;
    }
    const QString photo = QString::fromLocal8Bit(argv[1]);
    const QString next = QString::fromLocal8Bit(argv[2]);
    const int runs = argc > 3 ? std::atoi(argv[3]) : 5;
    const QSize view(1920, 1080);
    double first = 1e18;
    double ahead = 1e18;
    for (int run = 0; run < runs; ++run) {
        DetailPictures pictures; // a fresh cache: nothing decoded before the request
        first = std::min(first, TimeToPicture(pictures, photo, view));
        pictures.Picture(next, view); // what the view asks for right after showing a photo
        pictures.WaitForDone();
        ahead = std::min(ahead, TimeToPicture(pictures, next, view));
    }
    std::printf("{\"first_ms\": %.1f, \"next_ms\": %.2f}\n", first, ahead);
    return 0;
}
