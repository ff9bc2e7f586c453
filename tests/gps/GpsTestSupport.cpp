#include "GpsTestSupport.h"

#include "library/AlbumFormat.h"
#include "gps/TrackPoints.h"
#include "TestEnvironment.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

void RenewEnvironment(std::unique_ptr<ScopedTestEnvironment> &environment)
{
    environment.reset();
    environment = std::make_unique<ScopedTestEnvironment>();
    QDir().mkpath(environment->UserData());
}

QString CorpusTrack(const QString &name)
{
    return QStringLiteral(ORVANA_SOURCE_DIR "/../shared/corpus/tracks/") + name;
}

QMap<QString, TrackSummary> TrackSummaries(const QString &format)
{
    // "  direct : GPX 1.0; trk=1 ..." or "  gpsbabel -i nmea: trk=1 ...", then a line with the box.
    const QString text = QString::fromUtf8(ReadAll(QStringLiteral(ORVANA_SOURCE_DIR "/../shared/corpus/tracks-summary.txt")));
    const QString marker = format == QLatin1String("direct") ? QStringLiteral("direct :") : QStringLiteral("gpsbabel -i %1:").arg(format);
    static const QRegularExpression file(QStringLiteral(R"(^tracks/(\S+)\s+\()"));
    static const QRegularExpression count(QStringLiteral(R"(\b(trk|trkpt|wpt)=(\d+))"));
    static const QRegularExpression times(QStringLiteral(R"(first=(\S+) last=(\S+))"));
    static const QRegularExpression box(QStringLiteral(R"(lat (-?[\d.]+)\.\.(-?[\d.]+) lon (-?[\d.]+)\.\.(-?[\d.]+))"));
    QMap<QString, TrackSummary> summaries;
    const QStringList lines = text.split(u'\n');
    QString current;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (const QRegularExpressionMatch named = file.match(lines[i]); named.hasMatch())
            current = named.captured(1);
        if (current.isEmpty() || !lines[i].trimmed().startsWith(marker))
            continue;
        TrackSummary summary;
        const QString block = lines[i] + u' ' + lines.value(i + 1) + u' ' + lines.value(i + 2);
        for (auto it = count.globalMatch(lines[i]); it.hasNext();) {
            const QRegularExpressionMatch m = it.next();
            (m.captured(1) == u"trk" ? summary.tracks : m.captured(1) == u"trkpt" ? summary.points : summary.waypoints) = m.captured(2).toInt();
        }
        const QRegularExpressionMatch t = times.match(block);
        summary.first = t.captured(1);
        summary.last = t.captured(2);
        for (int side = 1, found = box.match(block).hasMatch(); found && side <= 4; ++side)
            summary.box << box.match(block).captured(side).toDouble();
        summaries.insert(current, summary);
        current.clear();
    }
    return summaries;
}

QByteArray Gpx(const QByteArray &body)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<gpx version=\"1.1\" creator=\"test\" xmlns=\"http://www.topografix.com/GPX/1/1\">\n"
        + body + "\n</gpx>\n";
}

QString WriteTemporary(const QString &folder, const QString &name, const QByteArray &bytes)
{
    WriteAll(folder + u'/' + name, bytes);
    return folder + u'/' + name;
}

QStringList DescribeTracks(const GpsStore &store)
{
    QStringList described;
    for (int n = 0; n < store.GetTrackCount(); ++n) {
        const Track track = store.TrackAt(n);
        described << QStringList{track.name, track.beginTime, track.endTime, track.bounds}.join(u'|');
        TrackPoints points;
        LoadTrackPoints(track, points, nullptr);
        for (int i = 0; i < points.Count(); ++i)
            described << QStringList{points.String(i, TrackPoints::Time), points.String(i, TrackPoints::Lat), points.String(i, TrackPoints::Lon), points.String(i, TrackPoints::Ele)}.join(u',');
    }
    return described;
}

QStringList DescribeWaypoints(const GpsStore &store)
{
    QStringList described;
    for (int n = 0; n < store.WaypointCount(); ++n) {
        const Waypoint waypoint = store.WaypointAt(n);
        described << QStringList{waypoint.name, waypoint.lat, waypoint.lon, waypoint.ele, waypoint.desc}.join(u'|');
    }
    return described;
}

std::unique_ptr<AlbumDocument> MakeAlbum(const QString &folder, const QList<QStringList> &records)
{
    QDir().mkpath(AlbumFormat::StudioDataPath(folder));
    DataList list;
    list.SetDocumentProperty(QStringLiteral("Title"), QStringLiteral("Trip"));
    list.SetDocumentProperty(QStringLiteral("Identification"), QStringLiteral("5c1d0e3a-trip"));
    for (const QStringList &record : records) {
        list.AddItem(list.ItemCount() + 1);
        for (const QString &pair : record) {
            const qsizetype equals = pair.indexOf(u'=');
            list.SetItemProperty(pair.left(equals), pair.mid(equals + 1), list.ItemCount());
        }
    }
    list.Save(AlbumFormat::StudioPlistPath(folder));
    return std::move(AlbumDocument::Open(folder).document);
}
