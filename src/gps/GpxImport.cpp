#include "gps/GpxImport.h"

#include "gps/GpsNumbers.h"
#include "gps/GpsStore.h"
#include "gps/GpxReader.h"
#include "app/Language.h"
#include "app/ProgressSink.h"
#include "gps/TimeText.h"
#include "gps/TrackFileWriter.h"

#include <QFile>
#include <QStringEncoder>
#include <memory>

namespace {

// The rectangle of a track's points, each side kept as the text of the point that set it.
class TrackBounds {
public:
    void Add(QStringView lat, QStringView lon)
    {
        const double latitude = LenientNumber(lat);
        const double longitude = LenientNumber(lon);
        // While the bounds are all zero the next point sets them; after that it widens them.
        if (minLat.value == 0 && maxLat.value == 0 && minLon.value == 0 && maxLon.value == 0) {
            minLat = maxLat = {latitude, lat.toString()};
            minLon = maxLon = {longitude, lon.toString()};
            return;
        }
        if (latitude < minLat.value)
            minLat = {latitude, lat.toString()};
        if (latitude > maxLat.value)
            maxLat = {latitude, lat.toString()};
        if (longitude < minLon.value)
            minLon = {longitude, lon.toString()};
        if (longitude > maxLon.value)
            maxLon = {longitude, lon.toString()};
    }

    QString Text() const
    {
        return u'(' + minLat.text + u',' + minLon.text + QStringLiteral(")-(") + maxLat.text + u',' + maxLon.text + u')';
    }

private:
    struct Side {
        double value = 0;
        QString text = QStringLiteral("0");
    };
    Side minLat, maxLat, minLon, maxLon;
};

class StoreImport : public GpxHandler {
public:
    StoreImport(GpsStore &target, GpxImportReport &outcome) : store(target), report(outcome) {}

    void TrackStarted() override
    {
        writer = std::make_unique<TrackFileWriter>();
        if (const Result opened = writer->Open(); !opened) {
            writeError = opened.message;
            writer.reset();
        }
        bounds = TrackBounds();
        firstTime.clear();
        lastTime.clear();
        points = 0;
    }

    void TrackPoint(const GpxTrackPoint &point) override
    {
        if (!writer)
            return;
        ++points;
        bounds.Add(point.lat, point.lon);
        // A point without a readable time is kept, but it cannot begin or end the track.
        if (TimeText::Seconds(point.time)) {
            if (firstTime.isEmpty())
                firstTime = point.time.toString();
            lastTime.resize(0);
            lastTime += point.time;
        }
        const QStringView texts[] = {point.time, point.lat, point.lon, point.ele};
        qsizetype total = 0;
        for (const QStringView text : texts)
            total += text.size();
        utf8.resize(encoder.requiredSpace(total));
        std::array<QByteArrayView, 4> views;
        char *end = utf8.data();
        for (std::size_t k = 0; k < views.size(); ++k) {
            char *start = end;
            end = encoder.appendToBuffer(start, texts[k]);
            views[k] = QByteArrayView(start, end - start);
        }
        writer->Add(views[0], views[1], views[2], views[3]);
    }

    void TrackEnded(const QString &name) override
    {
        if (!writer || points == 0) {
            writer.reset();
            return;
        }
        Track track{name, TimeText::Normalized(firstTime), TimeText::Normalized(lastTime), bounds.Text(), {}};
        track.file = store.NewTrackFileName(track);
        const Result finished = writer->Finish(track);
        writer.reset();
        if (!finished) {
            writeError = finished.message;
            return;
        }
        store.AddTrack(track);
        ++report.tracks;
        report.points += points;
    }

    void WaypointRead(const Waypoint &waypoint) override
    {
        store.AddNewWaypoint(waypoint);
        ++report.waypoints;
    }

    QString writeError;

private:
    GpsStore &store;
    GpxImportReport &report;
    std::unique_ptr<TrackFileWriter> writer;
    TrackBounds bounds;
    QString firstTime;
    QString lastTime;
    int points = 0;
    QStringEncoder encoder{QStringEncoder::Utf8};
    QByteArray utf8;
};

} // namespace

GpxImportReport ImportGPXFile(GpsStore &store, const QString &path, ProgressSink *progress)
{
    GpxImportReport report;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        report.ok = false;
        report.error = QStringLiteral("Cannot read %1: %2").arg(path, file.errorString());
        return report;
    }
    StoreImport import(store, report);
    if (progress)
        progress->Begin(GetLocalizedString(QStringLiteral("Importing"), QStringLiteral("General")), static_cast<int>(file.size() / 1024));
    const GpxReadResult read = ReadGpx(file, import, progress);
    if (progress)
        progress->End();
    report.ok = read.ok && import.writeError.isEmpty();
    report.cancelled = read.cancelled;
    report.skipped = read.skipped;
    report.error = read.ok ? import.writeError : read.error;
    return report;
}
