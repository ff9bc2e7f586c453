#include "gps/KmlDocument.h"

#include "library/AlbumDocument.h"
#include "gps/GpsStore.h"
#include "app/Paths.h"
#include "app/ProgressSink.h"
#include "library/PhotoRecord.h"
#include "gps/TimeText.h"
#include "gps/TrackPoints.h"

#include <QFile>
#include <QHash>

namespace {

using Fields = QHash<QString, QString>;

QString Template(const char *name)
{
    QFile file(ResourcesFolder() + u'/' + QLatin1String(name));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// Every "$Name$" of the template that fields names is replaced by its value, in one pass, so that
// a value is never searched for placeholders itself.
QString Filled(const QString &text, const Fields &fields)
{
    QString filled;
    filled.reserve(text.size());
    qsizetype from = 0;
    for (qsizetype open = text.indexOf(u'$'); open >= 0; open = text.indexOf(u'$', from)) {
        const qsizetype close = text.indexOf(u'$', open + 1);
        if (close < 0)
            break;
        const auto value = fields.constFind(text.sliced(open + 1, close - open - 1));
        if (value == fields.constEnd()) {
            filled += text.sliced(from, close - from);
            from = close;
            continue;
        }
        filled += text.sliced(from, open - from) + *value;
        from = close + 1;
    }
    return filled + text.sliced(from);
}

// A KML 2.2 coordinate tuple is "lon,lat" or "lon,lat,alt": without an elevation its comma goes
// too. Templates write "$Longitude$,$Latitude$,$Elevation$".
QString PlacemarkTemplate(QString item, const QString &elevation)
{
    return elevation.isEmpty() ? item.replace(QStringLiteral(",$Elevation$"), QString()) : item;
}

QString TrackCoordinates(const TrackPoints &points)
{
    QString coordinates;
    for (int i = 0; i < points.Count(); ++i) {
        coordinates += points.String(i, TrackPoints::Lon) + u',' + points.String(i, TrackPoints::Lat);
        if (!points.Text(i, TrackPoints::Ele).isEmpty())
            coordinates += u',' + points.String(i, TrackPoints::Ele);
        coordinates += u' ';
    }
    return coordinates;
}

QString TrackPlacemark(const GpsStore &store, int track, Prompter *prompter)
{
    TrackPoints points;
    const Track shown = store.TrackAt(track);
    LoadTrackPoints(shown, points, prompter);
    return Filled(Template("earth_kmltrack"), {{QStringLiteral("TracksName"), shown.name}, {QStringLiteral("TracksPoints"), TrackCoordinates(points)}});
}

} // namespace

void ReadAlbumThrough(ProgressSink *progress, const std::function<void()> &read)
{
    if (progress)
        progress->Apply(read);
    else
        read();
}

QString EscapeForEarth(QString text)
{
    return text.replace(u'<', QStringLiteral("&lt;")).replace(u'>', QStringLiteral("&gt;")).replace(u'"', QStringLiteral("&quot;"));
}

QString PhotoBalloon(const AlbumDocument &album, int photo, const QString &imageFolder)
{
    const QString description = EscapeForEarth(album.Record(PhotoRecord::Description, photo));
    const QString keywords = EscapeForEarth(album.Record(PhotoRecord::Keywords, photo).replace(u';', u' '));
    const bool portrait = album.Record(PhotoRecord::Height, photo).toLongLong() > album.Record(PhotoRecord::Width, photo).toLongLong();
    QString balloon = QStringLiteral("<![CDATA[<div align='left'><b>") + album.Record(PhotoRecord::CaptureDate, photo) + QStringLiteral("</b><br/>");
    if (!description.isEmpty())
        balloon += description + QStringLiteral("<br/>");
    if (!keywords.isEmpty())
        balloon += keywords + QStringLiteral("<br/>");
    balloon += QStringLiteral("<br/></div><div align='center'><img src='") + imageFolder + u'/' + album.Record(PhotoRecord::File, photo)
        + QStringLiteral("' ") + (portrait ? QStringLiteral("height") : QStringLiteral("width")) + QStringLiteral("='320' /><br/></div>]]>");
    return balloon;
}

AlbumKml BuildAlbumKml(const AlbumDocument &album, const QList<int> &photos, const QString &imageFolder, const GpsStore *store,
                       const QList<int> &tracks, double zoneHours, Prompter *prompter, ProgressSink *progress)
{
    AlbumKml kml;
    const QString head = Template("earth_kmlhead");
    const QString item = Template("earth_kmlitem");
    QString text;
    std::optional<qint64> earliest;
    std::optional<qint64> latest;
    ReadAlbumThrough(progress, [&] {
        text = Filled(head, {{QStringLiteral("Title"), EscapeForEarth(album.List().GetDocumentProperty(QStringLiteral("Title")))}});
        for (const int photo : photos) {
            if (album.Record(PhotoRecord::Longitude, photo).isEmpty())
                continue;
            ++kml.photos;
            text += Filled(PlacemarkTemplate(item, album.Record(PhotoRecord::Elevation, photo)), {{QStringLiteral("ID"), QString::number(kml.photos)},
                                  {QStringLiteral("ItemName"), album.Record(PhotoRecord::File, photo)},
                                  {QStringLiteral("Longitude"), album.Record(PhotoRecord::Longitude, photo)},
                                  {QStringLiteral("Latitude"), album.Record(PhotoRecord::Latitude, photo)},
                                  {QStringLiteral("Elevation"), album.Record(PhotoRecord::Elevation, photo)},
                                  {QStringLiteral("ItemDescription"), PhotoBalloon(album, photo, imageFolder)}});
            if (const std::optional<qint64> taken = TimeText::Seconds(album.Record(PhotoRecord::CaptureDate, photo))) {
                earliest = earliest ? std::min(*earliest, *taken) : *taken;
                latest = latest ? std::max(*latest, *taken) : *taken;
            }
        }
    });
    if (kml.photos == 0)
        return kml;
    text += Template("earth_kmlneck");
    const qint64 offset = ZoneOffsetSeconds(zoneHours);
    for (const int track : tracks) {
        const Track candidate = store ? store->TrackAt(track) : Track();
        const std::optional<qint64> begin = TimeText::Seconds(candidate.beginTime);
        const std::optional<qint64> end = TimeText::Seconds(candidate.endTime);
        if (store && earliest && begin && end && *begin + offset <= *latest && *end + offset >= *earliest)
            text += TrackPlacemark(*store, track, prompter);
    }
    kml.text = (text + Template("earth_kmltail")).toUtf8();
    return kml;
}

QByteArray BuildTracksKml(const GpsStore &store, const QList<int> &tracks, Prompter *prompter)
{
    const Fields title{{QStringLiteral("Title"), QStringLiteral("My Tracks")}};
    QString text = Filled(Template("earth_kmlhead1"), title);
    for (const int track : tracks)
        text += TrackPlacemark(store, track, prompter);
    return (text + Filled(Template("earth_kmltail1"), title)).toUtf8();
}

QByteArray BuildWaypointsKml(const GpsStore &store)
{
    const Fields title{{QStringLiteral("Title"), QStringLiteral("My Waypoints")}};
    QString text = Filled(Template("earth_kmlhead1"), title);
    const QString item = Template("earth_kmlwaypoint");
    for (int n = 0; n < store.WaypointCount(); ++n) {
        const Waypoint waypoint = store.WaypointAt(n);
        text += Filled(PlacemarkTemplate(item, waypoint.ele), {{QStringLiteral("ID"), QString::number(n + 1)}, {QStringLiteral("ItemName"), waypoint.name},
                              {QStringLiteral("Longitude"), waypoint.lon}, {QStringLiteral("Latitude"), waypoint.lat},
                              {QStringLiteral("Elevation"), waypoint.ele}, {QStringLiteral("ItemDescription"), waypoint.desc}});
    }
    return (text + Filled(Template("earth_kmltail1"), title)).toUtf8();
}
