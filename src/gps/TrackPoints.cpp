#include "gps/TrackPoints.h"

#include "datalist/DataListStream.h"
#include "gps/GpsStore.h"
#include "gps/StoreFiles.h"
#include "gps/TimeText.h"

#include <array>
#include <cstring>

namespace {

// Gathers the points of a track file as the list streams by.
class PointCollector : public DataListItemVisitor {
public:
    explicit PointCollector(TrackPoints &target) : points(target) {}

    void Item(StreamedItem entries) override
    {
        std::array<QByteArrayView, 4> fields{};
        for (const StreamedEntry &entry : entries) {
            for (std::size_t k = 0; k < Keys.size(); ++k) {
                if (entry.key == Keys[k] && fields[k].data() == nullptr)
                    fields[k] = entry.value.data() ? entry.value : QByteArrayView("");
            }
        }
        points.Append(fields[0], fields[1], fields[2], fields[3]);
    }

    void Restart() override { points.Clear(); }

private:
    static constexpr std::array<QByteArrayView, 4> Keys = {"TIME", "LAT", "LON", "ELE"};
    TrackPoints &points;
};

} // namespace

void TrackPoints::Append(QByteArrayView time, QByteArrayView lat, QByteArrayView lon, QByteArrayView ele)
{
    starts.push_back(texts.size());
    for (const QByteArrayView text : {time, lat, lon, ele}) {
        texts.append(text);
        texts.append('\0');
    }
    seconds.push_back(TimeText::Seconds(time).value_or(NoTime));
}

void TrackPoints::Clear()
{
    texts.clear();
    starts.clear();
    seconds.clear();
}

QByteArrayView TrackPoints::Text(int point, Field field) const
{
    const char *text = texts.constData() + starts[static_cast<std::size_t>(point)];
    for (int k = 0; k < field; ++k)
        text += std::strlen(text) + 1;
    return QByteArrayView(text, static_cast<qsizetype>(std::strlen(text)));
}

DataList::LoadResult LoadTrackPoints(const Track &track, TrackPoints &points, Prompter *prompter)
{
    points.Clear();
    PointCollector collector(points);
    const QString path = GpsStore::TrackFilePath(track);
    return StoreFiles::LoadWithBackup(path, [&collector](const QString &from) {
        DataList properties;
        collector.Restart();
        return StreamDataListItems(from, properties, collector);
    }, prompter);
}
