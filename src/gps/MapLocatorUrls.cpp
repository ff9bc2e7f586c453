#include "gps/MapLocatorUrls.h"

#include "app/Degrees.h"

#include <QRegularExpression>
#include <QStringList>
#include <QUrl>
#include <QtNumeric>

namespace {

QString Fixed(double value, int decimals)
{
    return QString::number(value, 'f', decimals);
}

// The text between `marker` and the next "]", when both are there.
std::optional<QString> Bracketed(const QString &text, QLatin1String marker)
{
    const qsizetype start = text.indexOf(marker);
    if (start < 0)
        return std::nullopt;
    const qsizetype from = start + marker.size();
    const qsizetype end = text.indexOf(u']', from);
    if (end < 0)
        return std::nullopt;
    return text.mid(from, end - from);
}

std::optional<double> Number(const QString &field)
{
    bool ok = false;
    const double value = field.trimmed().toDouble(&ok);
    return ok && qIsFinite(value) ? std::optional(value) : std::nullopt;
}

} // namespace

MapTemplates MakeMapTemplates(const QString &mapHost, const QString &sharedHost)
{
    const QString map = QStringLiteral("http://") + mapHost;
    return {
        map + QStringLiteral("/gmap/map_locator/?lon=[LON]&lat=[LAT]&width=[WIDTH]&height=[HEIGHT]&level=[LEVEL]&maptype=[MAPTYPE]"
                             "&mapserver=1&mapzoomcontrol=1&maptypebuttons=1&language=[LANGUAGE]"),
        map + QStringLiteral("/gmap/map_pointer/?lon=[LON]&lat=[LAT]&width=[WIDTH]&height=[HEIGHT]&level=[LEVEL]&maptype=[MAPTYPE]"
                             "&mapserver=1&mapzoomcontrol=0"),
        QStringLiteral("http://") + sharedHost +
            QStringLiteral("/gmap/map_pointer/?lon=[LON]&lat=[LAT]&width=[WIDTH]&height=[HEIGHT]&level=[LEVEL]&mapserver=2&mapzoomcontrol=0"),
        map + QStringLiteral("/gmap/map_search/?address="),
    };
}

QString FillMapTemplate(const QString &pageTemplate, const MapState &state, int width, int height)
{
    QString url = pageTemplate;
    url.replace(QLatin1String("[LON]"), Fixed(state.longitude, 9));
    url.replace(QLatin1String("[LAT]"), Fixed(state.latitude, 9));
    url.replace(QLatin1String("[WIDTH]"), QString::number(width));
    url.replace(QLatin1String("[HEIGHT]"), QString::number(height));
    url.replace(QLatin1String("[LEVEL]"), QString::number(state.level - 1));
    url.replace(QLatin1String("[MAPTYPE]"), QString::number(state.mapType));
    url.replace(QLatin1String("[LANGUAGE]"), state.language);
    return url;
}

QString MapSearchUrl(const MapTemplates &templates, const QString &address)
{
    return templates.search + QString::fromLatin1(QUrl::toPercentEncoding(address));
}

bool GetLocatorData(const QString &url, MapState &state)
{
    if (!url.startsWith(QLatin1String("http:"), Qt::CaseInsensitive))
        return false;
    // A page may write its report into the query or the fragment, where a browser keeps "$", "["
    // and "]" as they are or percent-encodes them; both spellings are the same report.
    const std::optional<QString> tags = Bracketed(QUrl::fromPercentEncoding(url.toUtf8()), QLatin1String("$LOCATOR_TAGS=["));
    if (!tags)
        return false;
    const QStringList fields = tags->split(u',');
    if (fields.size() != 4)
        return false;
    const std::optional<double> lon = Number(fields[0]);
    const std::optional<double> lat = Number(fields[1]);
    const std::optional<double> level = Number(fields[2]);
    const std::optional<double> type = Number(fields[3]);
    if (!lon || !lat || !level || !type)
        return false;
    state.longitude = *lon;
    state.latitude = *lat;
    state.level = static_cast<qint16>(qBound(0.0, *level, 30.0) + 1);
    state.mapType = static_cast<qint16>(qBound(0.0, *type, 100.0));
    return true;
}

std::optional<GeoPosition> ParseGeoCode(const QString &reply)
{
    const std::optional<QString> code = Bracketed(reply, QLatin1String("$GEO_CODE=["));
    if (!code)
        return std::nullopt;
    const QStringList fields = code->split(u',');
    if (fields.size() != 4 || fields[0].trimmed() != QLatin1String("200"))
        return std::nullopt;
    const std::optional<double> lat = ReadDegrees(fields[2].trimmed(), DegreesAxis::Latitude);
    const std::optional<double> lon = ReadDegrees(fields[3].trimmed(), DegreesAxis::Longitude);
    if (!lat || !lon)
        return std::nullopt;
    return GeoPosition{*lat, *lon};
}

QString GeoCodeReply(double latitude, double longitude)
{
    return QStringLiteral("$GEO_CODE=[200,0,") + ShortDegrees(latitude) + u',' + ShortDegrees(longitude) + u']';
}

QString GeoCodeNotFound()
{
    return QStringLiteral("$GEO_CODE=[404,0,0,0]");
}

std::optional<QString> LocalGeoCodeReply(const QString &typed)
{
    static const QRegularExpression pair(QStringLiteral(R"(^\s*([-+]?\d+(?:\.\d+)?)\s*(?:,\s*|\s+)([-+]?\d+(?:\.\d+)?)\s*$)"));
    const QRegularExpressionMatch match = pair.match(typed);
    if (!match.hasMatch())
        return std::nullopt;
    const std::optional<double> lat = ReadDegrees(match.captured(1), DegreesAxis::Latitude);
    const std::optional<double> lon = ReadDegrees(match.captured(2), DegreesAxis::Longitude);
    if (!lat || !lon)
        return std::nullopt;
    return GeoCodeReply(*lat, *lon);
}

QString ShortDegrees(double value)
{
    QString text = Fixed(value, 6);
    while (text.endsWith(u'0') && !text.endsWith(QLatin1String(".0")))
        text.chop(1);
    return text == QLatin1String("-0.0") ? QStringLiteral("0.0") : text;
}
