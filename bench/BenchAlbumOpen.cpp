// Opens an album as its window does (outside-change check on) and compares the time with loading
// its list alone plus one stat per photo file, best of N runs. Usage: bench_album_open ALBUM [RUNS]
#include "BenchSupport.h"
#include "library/AlbumFormat.h"
#include "library/AlbumOpening.h"
#include "app/AppState.h"
#include "library/PhotoRecord.h"
#include "app/ProgressSink.h"
#include "app/Prompter.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <cstdio>

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: bench_album_open ALBUM [RUNS]\n");
        return 2;
    }
    const QString album = QString::fromLocal8Bit(argv[1]);
    const int runs = argc > 2 ? std::atoi(argv[2]) : 3;
    AppState().checkModifiedWhenOpenFolder = true;

    int photos = 0;
    const double load = BestMs(runs, [&] {
        DataList list;
        list.Load(AlbumFormat::StudioPlistPath(album));
        photos = list.ItemCount();
    });
    DataList list;
    list.Load(AlbumFormat::StudioPlistPath(album));
    QStringList paths;
    for (int i = 1; i <= list.ItemCount(); ++i)
        paths << album + u'/' + list.GetItemProperty(PhotoRecord::File, i);
    qint64 bytes = 0;
    const double stats = BestMs(runs, [&] {
        for (const QString &path : paths)
            bytes += QFileInfo(path).size();
    });
    NoQuestions prompter;
    NoProgress progress;
    bool changed = false;
    const double open = BestMs(runs, [&] {
        const auto opened = OpenAlbumDocument(album, {}, prompter, progress);
        changed = !opened.document || opened.document->RecordCount() != photos;
    });
    std::printf("{\"photos\": %d, \"load_ms\": %.1f, \"stat_ms\": %.1f, \"open_ms\": %.1f, \"changed\": %s}\n",
                photos, load, stats, open, changed ? "true" : "false");
    return bytes > 0 ? 0 : 1;
}
