#include "gps/GpxReader.h"

#include "app/Degrees.h"
#include "gps/GpsNumbers.h"
#include "app/ProgressSink.h"

#include <QIODevice>
#include <QXmlStreamReader>

namespace {

constexpr int PointsBetweenProgress = 4096;

// The elements whose text is kept, each only as a direct child of its owner.
enum class Field { None, TrackName, PointEle, PointTime, WaypointEle, WaypointName, WaypointDesc };

class GpxParse {
public:
    GpxParse(QIODevice &device, GpxHandler &handler, ProgressSink *progress)
        : reader(&device), device(device), handler(handler), progress(progress)
    {
        reader.setEntityExpansionLimit(0);
    }

    GpxReadResult Run()
    {
        GpxReadResult result;
        while (!reader.atEnd()) {
            switch (reader.readNext()) {
            case QXmlStreamReader::StartElement: Start(); break;
            case QXmlStreamReader::EndElement: End(); break;
            case QXmlStreamReader::Characters:
                if (field != Field::None && depth == fieldDepth)
                    text += reader.text();
                break;
            default: break;
            }
            if (cancelled) {
                result.ok = false;
                result.cancelled = true;
                return result;
            }
        }
        result.skipped = skipped;
        if (reader.hasError()) {
            result.ok = false;
            result.error = QStringLiteral("line %1, column %2: %3").arg(reader.lineNumber()).arg(reader.columnNumber()).arg(reader.errorString());
        }
        return result;
    }

private:
    void Start()
    {
        ++depth;
        const QStringView name = reader.name();
        if (pointDepth > 0 && depth == pointDepth + 1) {
            Capture(name == u"ele" ? Field::PointEle : name == u"time" ? Field::PointTime : Field::None);
        } else if (name == u"trkpt" && trackDepth > 0 && pointDepth == 0) {
            BeginPoint();
        } else if (waypointDepth > 0 && depth == waypointDepth + 1) {
            Capture(name == u"ele" ? Field::WaypointEle : name == u"name" ? Field::WaypointName : name == u"desc" ? Field::WaypointDesc : Field::None);
        } else if (trackDepth > 0 && depth == trackDepth + 1 && name == u"name") {
            Capture(Field::TrackName);
        } else if (name == u"trk" && trackDepth == 0 && waypointDepth == 0) {
            trackDepth = depth;
            trackName.clear();
            handler.TrackStarted();
        } else if (name == u"wpt" && waypointDepth == 0 && trackDepth == 0) {
            waypointDepth = depth;
            waypoint = Waypoint();
            const QXmlStreamAttributes attributes = reader.attributes();
            waypoint.lat = attributes.value(QLatin1String("lat")).toString();
            waypoint.lon = attributes.value(QLatin1String("lon")).toString();
        }
    }

    void End()
    {
        if (field != Field::None && depth == fieldDepth)
            Store();
        if (depth == pointDepth) {
            EndPoint();
        } else if (depth == waypointDepth) {
            waypointDepth = 0;
            if (IsPosition(waypoint.lat, waypoint.lon))
                handler.WaypointRead(waypoint);
        } else if (depth == trackDepth) {
            trackDepth = 0;
            handler.TrackEnded(trackName);
        }
        --depth;
    }

    bool IsPosition(QStringView latitude, QStringView longitude)
    {
        const bool position = ReadDegrees(latitude, DegreesAxis::Latitude) && ReadDegrees(longitude, DegreesAxis::Longitude);
        skipped += position ? 0 : 1;
        return position;
    }

    void Capture(Field kept)
    {
        field = kept;
        fieldDepth = depth;
        text.resize(0);
    }

    void Store()
    {
        switch (field) {
        case Field::TrackName: trackName = text; break;
        case Field::PointEle: ele = RoundedElevation(text); break;
        case Field::PointTime: // copied, so that text keeps a buffer of its own
            time.resize(0);
            time += text;
            break;
        case Field::WaypointEle: waypoint.ele = RoundedElevation(text); break;
        case Field::WaypointName: waypoint.name = text; break;
        case Field::WaypointDesc: waypoint.desc = text; break;
        case Field::None: break;
        }
        field = Field::None;
    }

    void BeginPoint()
    {
        pointDepth = depth;
        const QXmlStreamAttributes attributes = reader.attributes();
        lat.resize(0);
        lat += attributes.value(QLatin1String("lat"));
        lon.resize(0);
        lon += attributes.value(QLatin1String("lon"));
        ele = QStringLiteral("0.0");
        time.resize(0);
    }

    void EndPoint()
    {
        pointDepth = 0;
        if (IsPosition(lat, lon))
            handler.TrackPoint({lat, lon, ele, time});
        if (progress && ++pointsSinceProgress == PointsBetweenProgress) {
            pointsSinceProgress = 0;
            progress->Advance(static_cast<int>(device.pos() / 1024));
            cancelled = progress->Cancelled();
        }
    }

    QXmlStreamReader reader;
    QIODevice &device;
    GpxHandler &handler;
    ProgressSink *progress;
    int depth = 0;
    int trackDepth = 0;
    int pointDepth = 0;
    int waypointDepth = 0;
    Field field = Field::None;
    int fieldDepth = 0;
    QString text;
    QString trackName;
    QString lat;
    QString lon;
    QString ele;
    QString time;
    Waypoint waypoint;
    int pointsSinceProgress = 0;
    int skipped = 0;
    bool cancelled = false;
};

} // namespace

GpxReadResult ReadGpx(QIODevice &device, GpxHandler &handler, ProgressSink *progress)
{
    return GpxParse(device, handler, progress).Run();
}
