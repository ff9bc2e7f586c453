// Times loading and saving one property list with the data list, best of N runs, and reports the
// peak memory of a load. Usage: bench_datalist FILE [RUNS]
#include "datalist/DataList.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>
#include <cstdio>
#include <sys/resource.h>

namespace {

long PeakKilobytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: bench_datalist FILE [RUNS]\n");
        return 2;
    }
    const QString path = QString::fromLocal8Bit(argv[1]);
    const int runs = argc > 2 ? std::atoi(argv[2]) : 3;
    const long baseline = PeakKilobytes();

    double bestLoad = 1e18;
    double bestSave = 1e18;
    QTemporaryDir out;
    int items = 0;
    long loadPeak = 0;
    for (int run = 0; run < runs; ++run) {
        QElapsedTimer clock;
        DataList list;
        clock.start();
        const DataList::LoadResult loaded = list.Load(path);
        bestLoad = std::min(bestLoad, clock.nsecsElapsed() / 1e6);
        if (!loaded) {
            std::fprintf(stderr, "%s\n", qPrintable(loaded.message));
            return 1;
        }
        items = list.ItemCount();
        if (run == 0)
            loadPeak = PeakKilobytes() - baseline;
        clock.restart();
        if (!list.Save(out.filePath(QStringLiteral("saved.plist"))))
            return 1;
        bestSave = std::min(bestSave, clock.nsecsElapsed() / 1e6);
    }
    std::printf("{\"items\": %d, \"load_ms\": %.1f, \"save_ms\": %.1f, \"load_peak_kb\": %ld, \"peak_kb\": %ld, \"file_kb\": %lld}\n",
                items, bestLoad, bestSave, loadPeak, PeakKilobytes() - baseline, QFileInfo(path).size() / 1024);
    return 0;
}
