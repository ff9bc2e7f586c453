#include "gps/MapPageServer.h"

#include "gps/MapLocatorUrls.h"
#include "app/Paths.h"
#include "app/Settings.h"
#include "app/Version.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QPointer>
#include <QRegularExpression>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUrl>
#include <QUrlQuery>
#include <optional>

namespace {

constexpr qsizetype MaxRequest = 16 * 1024;

QString Setting(const QString &key, const char *fallback)
{
    const QString value = ReadSetting(QStringLiteral("Map"), key).trimmed();
    return value.isEmpty() ? QString::fromLatin1(fallback) : value;
}

QByteArray ContentType(const QString &name)
{
    if (name.endsWith(QLatin1String(".js")))
        return "application/javascript; charset=utf-8";
    if (name.endsWith(QLatin1String(".css")))
        return "text/css; charset=utf-8";
    if (name.endsWith(QLatin1String(".png")))
        return "image/png";
    if (name.endsWith(QLatin1String(".json")))
        return "application/json";
    return "text/html; charset=utf-8";
}

// "scheme://host[:port]" of the tile address, for the pages' content policy.
QByteArray Origin(const QString &address)
{
    QString sample = address;
    sample.replace(QRegularExpression(QStringLiteral(R"(\{[a-z]\})")), QStringLiteral("0"));
    const QUrl url(sample);
    return url.adjusted(QUrl::RemovePath | QUrl::RemoveQuery | QUrl::RemoveFragment | QUrl::RemoveUserInfo).toString().toUtf8();
}

void Send(QTcpSocket *socket, const QByteArray &status, const QByteArray &type, const QByteArray &body, const QByteArray &extra = {})
{
    QByteArray head = "HTTP/1.0 " + status + "\r\nContent-Type: " + type + "\r\nContent-Length: " + QByteArray::number(body.size()) +
                      "\r\nCache-Control: no-store\r\nConnection: close\r\n" + extra + "\r\n";
    socket->write(head + body);
    socket->disconnectFromHost();
}

void NotFound(QTcpSocket *socket)
{
    Send(socket, "404 Not Found", "text/plain", "not found\n");
}

// A file of `folder` named by the rest of a request path: plain names only, no way out of it.
std::optional<QByteArray> FileUnder(const QString &folder, const QString &name)
{
    static const QRegularExpression plain(QStringLiteral(R"(^[A-Za-z0-9_-]+(/[A-Za-z0-9_-]+)*\.[a-z]+$)"));
    if (!plain.match(name).hasMatch())
        return std::nullopt;
    QFile file(folder + u'/' + name);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return file.readAll();
}

// The first place of a Nominatim answer (an array of objects with "lat" and "lon" as text), as
// the search page's marker.
QString GeoCodeFromNominatim(const QByteArray &json)
{
    const QJsonArray places = QJsonDocument::fromJson(json).array();
    if (places.isEmpty())
        return GeoCodeNotFound();
    const QJsonObject first = places.first().toObject();
    bool latOk = false;
    bool lonOk = false;
    const double lat = first.value(QStringLiteral("lat")).toVariant().toString().toDouble(&latOk);
    const double lon = first.value(QStringLiteral("lon")).toVariant().toString().toDouble(&lonOk);
    return latOk && lonOk ? GeoCodeReply(lat, lon) : GeoCodeNotFound();
}

} // namespace

MapPageSources MapPageSourcesFromSettings()
{
    return {Setting(QStringLiteral("TileServer"), DefaultTileServer), Setting(QStringLiteral("Geocoder"), DefaultGeocoder),
            // Debian's libjs-leaflet: the pages never load a script from the internet.
            QStringLiteral("/usr/share/javascript/leaflet"), ResourcesFolder() + QStringLiteral("/map")};
}

MapPageServer::MapPageServer(MapPageSources sources, QObject *parent)
    : QObject(parent), sources(std::move(sources)), server(new QTcpServer(this))
{
    connect(server, &QTcpServer::newConnection, this, &MapPageServer::Accept);
}

MapPageServer::~MapPageServer() = default;

bool MapPageServer::Listen()
{
    return server->isListening() || server->listen(QHostAddress::LocalHost, 0);
}

QString MapPageServer::Host() const
{
    return QStringLiteral("127.0.0.1:%1").arg(server->serverPort());
}

void MapPageServer::SetPhotoMarkers(const QByteArray &json)
{
    const QMutexLocker lock(&markersLock);
    markers = json;
}

void MapPageServer::Accept()
{
    while (QTcpSocket *socket = server->nextPendingConnection()) {
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QObject::destroyed, this, [this, socket] { pending.remove(socket); });
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { Read(socket); });
        pending.insert(socket, {});
    }
}

void MapPageServer::Read(QTcpSocket *socket)
{
    auto request = pending.find(socket);
    if (request == pending.end())
        return;
    request->append(socket->readAll());
    if (request->size() > MaxRequest) {
        pending.erase(request);
        socket->abort();
        return;
    }
    if (!request->contains("\r\n\r\n"))
        return;
    const QList<QByteArray> line = request->left(request->indexOf("\r\n")).split(' ');
    pending.erase(request);
    if (line.size() < 2 || line[0] != "GET") {
        Send(socket, "405 Method Not Allowed", "text/plain", "GET only\n");
        return;
    }
    Answer(socket, QString::fromLatin1(line[1]));
}

void MapPageServer::Answer(QTcpSocket *socket, const QString &target)
{
    const QUrl url(target);
    const QString path = url.path();
    if (path == QLatin1String("/gmap/map_locator/") || path == QLatin1String("/gmap/map_pointer/")) {
        const std::optional<QByteArray> page = FileUnder(sources.pagesFolder, QStringLiteral("locator.html"));
        if (!page)
            return NotFound(socket);
        // The pages may draw tiles of the tile host and talk to this server; nothing else.
        const QByteArray policy = "Content-Security-Policy: default-src 'self'; img-src 'self' data: " + Origin(sources.tiles) +
                                  "; style-src 'self' 'unsafe-inline'; script-src 'self'; connect-src 'self'\r\n";
        return Send(socket, "200 OK", ContentType(path), *page, policy);
    }
    if (path == QLatin1String("/gmap/map_search/"))
        return Search(socket, QUrlQuery(url).queryItemValue(QStringLiteral("address"), QUrl::FullyDecoded).trimmed());
    if (path == QLatin1String("/gmap/config.js"))
        return Send(socket, "200 OK", ContentType(path), PageConfig());
    if (path == QLatin1String("/gmap/photos.json")) {
        const QMutexLocker lock(&markersLock);
        return Send(socket, "200 OK", ContentType(path), markers);
    }
    std::optional<QByteArray> file;
    if (path.startsWith(QLatin1String("/leaflet/")))
        file = FileUnder(sources.leafletFolder, path.mid(9));
    else if (path.startsWith(QLatin1String("/gmap/static/")))
        file = FileUnder(sources.pagesFolder, path.mid(13));
    if (!file)
        return NotFound(socket);
    Send(socket, "200 OK", ContentType(path), *file);
}

// A typed coordinate pair is answered here; anything else is asked of the geocoder, and the reply
// goes out once it is in. A socket gone meanwhile takes its answer with it.
void MapPageServer::Search(QTcpSocket *socket, const QString &address)
{
    if (const std::optional<QString> local = LocalGeoCodeReply(address))
        return Send(socket, "200 OK", "text/html; charset=utf-8", local->toUtf8());
    if (address.isEmpty())
        return Send(socket, "200 OK", "text/html; charset=utf-8", GeoCodeNotFound().toUtf8());
    // The geocoder is asked with Qt's network client rather than the program's HTTP engine: the
    // engine speaks plain HTTP/1.0, and Nominatim and its kind answer over HTTPS only. The leg the
    // map contract names, from the dialogs to this search page, does go through the engine.
    if (!network)
        network = new QNetworkAccessManager(this);
    QUrl geocoder(sources.geocoder);
    QUrlQuery query(geocoder);
    query.addQueryItem(QStringLiteral("q"), address);
    query.addQueryItem(QStringLiteral("format"), QStringLiteral("json"));
    query.addQueryItem(QStringLiteral("limit"), QStringLiteral("1"));
    geocoder.setQuery(query);
    QNetworkRequest request(geocoder);
    // Nominatim's usage policy asks every program to name itself.
    request.setHeader(QNetworkRequest::UserAgentHeader, QByteArray("Orvana/") + OrvanaVersion + " (photo organiser; map locator)");
    request.setTransferTimeout(20000);
    QNetworkReply *reply = network->get(request);
    const QPointer<QTcpSocket> client(socket);
    connect(reply, &QNetworkReply::finished, this, [reply, client] {
        reply->deleteLater();
        const QString answer = reply->error() == QNetworkReply::NoError ? GeoCodeFromNominatim(reply->readAll())
                                                                        : QStringLiteral("$GEO_CODE=[503,0,0,0]");
        if (client)
            Send(client, "200 OK", "text/html; charset=utf-8", answer.toUtf8());
    });
}

QByteArray MapPageServer::PageConfig() const
{
    const QJsonObject config{{QStringLiteral("tiles"), sources.tiles}};
    return "window.OrvanaMapConfig = " + QJsonDocument(config).toJson(QJsonDocument::Compact) + ";\n";
}
