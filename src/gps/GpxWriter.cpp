#include "gps/GpxWriter.h"

#include "gps/GpsNumbers.h"
#include "app/Paths.h"
#include "app/ProfileFile.h"
#include "gps/TimeText.h"
#include "gps/TrackPoints.h"

#include <QSaveFile>

namespace {

constexpr QByteArrayView LineEnd = "\r\n";

QString MakerWebAddress()
{
    return ProfileFile::ReadString(ResourcesFolder() + QStringLiteral("/Services.ini"), QStringLiteral("Maker"), QStringLiteral("Home"));
}

// Text as XML character data: the three characters markup would take for its own, and the quote
// inside attribute values; everything else as it is.
void AppendEscaped(QByteArray &out, QByteArrayView text)
{
    qsizetype from = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const char *entity = c == '&' ? "&amp;" : c == '<' ? "&lt;" : c == '>' ? "&gt;" : c == '"' ? "&quot;" : nullptr;
        if (!entity)
            continue;
        out.append(text.sliced(from, i - from));
        out.append(entity);
        from = i + 1;
    }
    out.append(text.sliced(from));
}

// A GPX file written line by line; pieces of a line are literal markup or escaped text.
class GpxFile {
public:
    explicit GpxFile(const QString &path) : file(path) {}

    bool Open() { return file.open(QIODevice::WriteOnly); }

    GpxFile &operator<<(const char *markup)
    {
        buffer.append(markup);
        return *this;
    }
    GpxFile &operator<<(QByteArrayView text)
    {
        AppendEscaped(buffer, text);
        return *this;
    }
    GpxFile &operator<<(const QString &text) { return *this << QByteArrayView(text.toUtf8()); }

    void EndLine()
    {
        buffer.append(LineEnd);
        if (buffer.size() > (1 << 20))
            Flush();
    }
    void Line(const char *markup)
    {
        *this << markup;
        EndLine();
    }

    void Header()
    {
        Line(R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>)");
        Line(R"(<gpx Version ="1.0")");
        *this << " creator=\"Orvana Studio - " << MakerWebAddress() << "\"";
        EndLine();
        Line(R"( xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance")");
        Line(R"( xmlns="http://www.topografix.com/GPX/1/0")");
        Line(R"( xsi:schemaLocation="http://www.topografix.com/GPX/1/0 http://www.topografix.com/GPX/1/0/gpx.xsd )"
             R"(http://www.topografix.com/GPX/Private/TopoGrafix/0/2 http://www.topografix.com/GPX/Private/TopoGrafix/0/2/topografix.xsd">)");
    }

    Result Finish(const QString &failure)
    {
        Line("</gpx>");
        Flush();
        if (!failed && file.commit())
            return Result::Success();
        file.cancelWriting();
        return Result::Failure(failure + QStringLiteral(" (") + file.fileName() + QStringLiteral(": ") + file.errorString() + u')');
    }

private:
    void Flush()
    {
        failed = failed || file.write(buffer) != buffer.size();
        buffer.clear();
    }

    QSaveFile file;
    QByteArray buffer;
    bool failed = false;
};

// The side of the waypoints' rectangle, as the text of the waypoint that sets it.
QString Extreme(const QList<Waypoint> &waypoints, QString Waypoint::*coordinate, bool lowest)
{
    if (waypoints.isEmpty())
        return QStringLiteral("0");
    const Waypoint *best = &waypoints.front();
    for (const Waypoint &waypoint : waypoints) {
        const double value = LenientNumber(waypoint.*coordinate);
        const double bestValue = LenientNumber(best->*coordinate);
        if (lowest ? value < bestValue : value > bestValue)
            best = &waypoint;
    }
    return best->*coordinate;
}

} // namespace

Result ExportTracksToGpx(const QList<Track> &tracks, const QString &path, const QDateTime &now, Prompter *prompter)
{
    const QString failure = QStringLiteral("The tracks could not be written");
    GpxFile gpx(path);
    if (!gpx.Open())
        return Result::Failure(failure + QStringLiteral(" (") + path + u')');
    gpx.Header();
    const QString stamp = TimeText::GpxFormat(now.toSecsSinceEpoch());
    TrackPoints points;
    for (const Track &track : tracks) {
        // A track whose points cannot be read is written without them.
        LoadTrackPoints(track, points, prompter);
        gpx << "<time>" << stamp << "</time>";
        gpx.EndLine();
        gpx.Line("<trk>");
        gpx << " <name>" << track.name << "</name>";
        gpx.EndLine();
        gpx.Line("<trkseg>");
        for (int i = 0; i < points.Count(); ++i) {
            gpx << "<trkpt lat=\"" << points.Text(i, TrackPoints::Lat) << "\" lon=\"" << points.Text(i, TrackPoints::Lon) << "\">";
            gpx.EndLine();
            gpx << "<ele>" << points.Text(i, TrackPoints::Ele) << "</ele>";
            gpx.EndLine();
            gpx << "<time>" << points.Text(i, TrackPoints::Time) << "</time>";
            gpx.EndLine();
            gpx.Line("</trkpt>");
        }
        gpx.Line("</trkseg>");
        gpx.Line("</trk>");
    }
    return gpx.Finish(failure);
}

Result ExportWaypointsToGpx(const QList<Waypoint> &waypoints, const QString &path)
{
    const QString failure = QStringLiteral("The waypoints could not be written");
    GpxFile gpx(path);
    if (!gpx.Open())
        return Result::Failure(failure + QStringLiteral(" (") + path + u')');
    gpx.Header();
    gpx.Line("<name>Waypoints.gpx</name>");
    gpx << "<bounds minlat=\"" << Extreme(waypoints, &Waypoint::lat, true) << "\" minlon=\"" << Extreme(waypoints, &Waypoint::lon, true)
        << "\" maxlat=\"" << Extreme(waypoints, &Waypoint::lat, false) << "\" maxlon=\"" << Extreme(waypoints, &Waypoint::lon, false) << "\"/>";
    gpx.EndLine();
    for (const Waypoint &waypoint : waypoints) {
        gpx << "<wpt lat=\"" << waypoint.lat << "\" lon=\"" << waypoint.lon << "\">";
        gpx.EndLine();
        gpx << "<ele>" << waypoint.ele << "</ele>";
        gpx.EndLine();
        gpx << "<name>" << waypoint.name << "</name>";
        gpx.EndLine();
        gpx << "<cmt>" << waypoint.name << "</cmt>";
        gpx.EndLine();
        gpx << "<desc>" << waypoint.desc << "</desc>";
        gpx.EndLine();
        gpx.Line("<sym>Waypoint</sym>");
        gpx.Line("</wpt>");
    }
    return gpx.Finish(failure);
}
