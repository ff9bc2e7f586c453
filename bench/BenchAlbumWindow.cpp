// Opens a big album in the real main window (offscreen) and times what a photographer sees:
// the first screen of thumbnails, the whole list in the grid, then scrolling from top to bottom
// page by page while thumbnails stream in; and the process's peak memory. Against loading the
// list alone. Usage: bench_album_window ALBUM [--load-only]; prints JSON. Loading alone runs in a
// process of its own, so that its memory does not count in the window's.
#include "ui/album/AlbumRoles.h"
#include "ui/album/AlbumWindow.h"
#include "ui/album/ThumbnailCache.h"
#include "ui/main/MainWindow.h"
#include "datalist/DataList.h"
#include "library/AlbumFormat.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QListView>
#include <QScrollBar>
#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

// Whether every cell in view shows its thumbnail (none is waiting for its file).
bool ScreenComplete(QListView &view, ThumbnailCache &cache)
{
    const QRect shown = view.viewport()->rect();
    int cells = 0;
    for (int row = 0; row < view.model()->rowCount(); ++row) {
        const QModelIndex index = view.model()->index(row, 0);
        const QRect cell = view.visualRect(index);
        if (!cell.intersects(shown)) {
            if (cells > 0 && cell.top() > shown.bottom())
                break;
            continue;
        }
        ++cells;
        if (cache.Thumbnail(index.data(ThumbnailPathRole).toString()).isNull())
            return false;
    }
    return cells > 0;
}

long PeakMemoryKb()
{
    QFile status(QStringLiteral("/proc/self/status"));
    status.open(QIODevice::ReadOnly);
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').first().toLong();
    }
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: bench_album_window ALBUM [--load-only]\n");
        return 2;
    }
    const QString album = QString::fromLocal8Bit(argv[1]);

    QElapsedTimer clock;
    clock.start();
    if (argc > 2) {
        DataList list;
        list.Load(AlbumFormat::StudioPlistPath(album));
        std::printf("{\"rows\": %d, \"load_ms\": %.0f}\n", list.ItemCount(), clock.nsecsElapsed() / 1e6);
        return 0;
    }
    // The count the grid ends with, read the quick way, outside the timing.
    int records = 0;
    {
        QFile file(AlbumFormat::StudioPlistPath(album));
        file.open(QIODevice::ReadOnly);
        records = static_cast<int>(file.readAll().count("<dict>")) - 1;
    }

    MainWindow main;
    main.resize(1280, 900);
    main.show();
    QApplication::processEvents();
    clock.restart();
    main.OpenDoc(album, false);
    double listedMs = -1;
    double firstScreenMs = -1;
    double longestStallMs = 0; // the longest the event loop was away: how long input would wait
    QListView *view = nullptr;
    ThumbnailCache *cache = nullptr;
    // Keeps the event loop turning as the program's own would, and notes when each stage is seen.
    while ((firstScreenMs < 0 || listedMs < 0) && clock.elapsed() < 30000) {
        const double before = clock.nsecsElapsed() / 1e6;
        QApplication::processEvents(QEventLoop::AllEvents, 5);
        longestStallMs = std::max(longestStallMs, clock.nsecsElapsed() / 1e6 - before);
        if (!view && main.ActiveAlbum()) {
            view = main.ActiveAlbum()->findChild<QListView *>();
            cache = main.ActiveAlbum()->findChild<ThumbnailCache *>();
        }
        if (view && listedMs < 0 && view->model()->rowCount() == records)
            listedMs = clock.nsecsElapsed() / 1e6;
        if (view && cache && firstScreenMs < 0 && ScreenComplete(*view, *cache)) {
            view->viewport()->repaint();
            firstScreenMs = clock.nsecsElapsed() / 1e6;
        }
    }
    if (!view || !cache || firstScreenMs < 0 || listedMs < 0) {
        std::fprintf(stderr, "the album's grid did not fill: window %s, grid %s, rows %d of %d, opening %s\n",
                     main.ActiveAlbum() ? "open" : "none", view ? "found" : "none", view ? view->model()->rowCount() : 0, records,
                     main.IsOpening() ? "still running" : "ended");
        return 1;
    }
    while (main.IsOpening())
        QApplication::processEvents(QEventLoop::AllEvents, 5);
    const int rows = view->model()->rowCount();

    // Top to bottom a page at a time; each frame is painted at once, as a scroll would.
    std::vector<double> frames;
    QScrollBar *bar = view->verticalScrollBar();
    for (int value = 0; value <= bar->maximum(); value += bar->pageStep()) {
        bar->setValue(value);
        QElapsedTimer frame;
        frame.start();
        view->viewport()->repaint();
        frames.push_back(frame.nsecsElapsed() / 1e6);
        QApplication::processEvents(QEventLoop::AllEvents, 1);
    }
    std::sort(frames.begin(), frames.end());
    const auto within = std::count_if(frames.begin(), frames.end(), [](double ms) { return ms <= 16.0; });
    std::printf("{\"rows\": %d, \"listed_ms\": %.0f, \"first_screen_ms\": %.0f, \"frames\": %zu, "
                "\"frames_within_16ms\": %.4f, \"slowest_frame_ms\": %.1f, \"peak_kb\": %ld, \"longest_stall_ms\": %.1f}\n",
                rows, listedMs, firstScreenMs, frames.size(), frames.empty() ? 0.0 : double(within) / double(frames.size()),
                frames.empty() ? 0.0 : frames.back(), PeakMemoryKb(), longestStallMs);
    return 0;
}
