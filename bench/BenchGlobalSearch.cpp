// Searches every album of a library folder through the global search and compares the time with
// loading each album's list alone, one after the other, best of N runs each.
// Usage: bench_global_search LIBRARY [RUNS]; prints JSON.
#include "BenchSupport.h"
#include "library/AlbumDiscovery.h"
#include "library/AlbumFormat.h"
#include "library/GlobalSearch.h"
#include "app/ProgressSink.h"
#include "datalist/DataList.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <cstdio>
#include <thread>

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: bench_global_search LIBRARY [RUNS]\n");
        return 2;
    }
    const QString library = QString::fromLocal8Bit(argv[1]);
    const int runs = argc > 2 ? std::atoi(argv[2]) : 3;
    const QStringList albums = FindSearchableAlbums(library);

    qint64 records = 0;
    const double load = BestMs(runs, [&] {
        records = 0;
        for (const QString &album : albums) {
            DataList list;
            list.Load(AlbumFormat::StudioPlistPath(album));
            records += list.ItemCount();
        }
    });
    int matched = 0;
    NoProgress quiet;
    // A note search: the mode that reads the longest values.
    const SearchQuery query{QStringLiteral("place"), SearchMode::Description, {}, {}};
    const double search = BestMs(runs, [&] {
        matched = 0;
        for (const AlbumMatch &match : SearchAlbums(query, FindSearchableAlbums(library), quiet))
            matched += match.matched;
    });
    std::printf("{\"albums\": %lld, \"records\": %lld, \"matched\": %d, \"cores\": %u, \"load_ms\": %.1f, \"search_ms\": %.1f}\n",
                static_cast<long long>(albums.size()), static_cast<long long>(records), matched,
                std::thread::hardware_concurrency(), load, search);
    return 0;
}
