// Shows a folder of albums in the album manager (offscreen) and prints the time until every cell
// is there with its first thumbnail, then how late a 10 ms timer fires while the cells animate.
// Usage: bench_album_manager FOLDER [ANIMATE_MS]; prints JSON.
#include "BenchSupport.h"
#include "library/OpenAlbums.h"
#include "app/Prompter.h"
#include "ui/manager/AlbumCell.h"
#include "ui/manager/AlbumManagerWindow.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <algorithm>
#include <cstdio>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: bench_album_manager FOLDER [ANIMATE_MS]\n");
        return 2;
    }
    const QString folder = QString::fromLocal8Bit(argv[1]);
    const int animateMs = argc > 2 ? std::atoi(argv[2]) : 5000;
    NoQuestions prompter;
    NoOpenAlbums open;
    AlbumManagerWindow manager(prompter, open, [](const QString &) {});
    // Tall enough that every cell is in view: each must show its first picture.
    manager.resize(1280, 12000);
    manager.show();

    QElapsedTimer clock;
    qint64 cellsMs = -1, picturesMs = -1, worstLateMs = 0, ticks = 0;
    QTimer poll;
    QObject::connect(&manager, &AlbumManagerWindow::Loaded, [&] { cellsMs = clock.elapsed(); });
    QObject::connect(&poll, &QTimer::timeout, [&] {
        const QList<OrvAlbumCell *> cells = manager.Cells();
        if (clock.isValid() && picturesMs < 0 && cellsMs >= 0 && std::all_of(cells.begin(), cells.end(), [](OrvAlbumCell *c) { return c->HasImage() || c->PhotoCount() == 0; }))
            picturesMs = clock.elapsed();
    });
    poll.start(2);
    // Lateness of a 10 ms timer while the cells step through their photos.
    QElapsedTimer sinceTick;
    QTimer probe;
    QObject::connect(&probe, &QTimer::timeout, [&] {
        if (picturesMs < 0)
            return;
        if (sinceTick.isValid()) {
            worstLateMs = std::max(worstLateMs, sinceTick.elapsed() - 10);
            ++ticks;
        }
        sinceTick.restart();
        if (clock.elapsed() - picturesMs > animateMs)
            app.quit();
    });
    probe.setTimerType(Qt::PreciseTimer);
    probe.start(10);
    QTimer::singleShot(120000, &app, &QApplication::quit);
    // Asked once the window is up and painted: the program's own start is not the manager's time.
    QTimer::singleShot(500, &manager, [&] {
        clock.start();
        manager.SetRootFolder(folder);
    });
    app.exec();
    std::printf("{\"cells\": %lld, \"cells_ms\": %lld, \"pictures_ms\": %lld, \"ticks\": %lld, \"worst_late_ms\": %lld}\n",
                static_cast<long long>(manager.Cells().size()), cellsMs, picturesMs, ticks, worstLateMs);
    return picturesMs < 0 ? 1 : 0;
}
