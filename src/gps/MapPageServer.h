#pragma once

#include <QByteArray>
#include <QHash>
#include <QMutex>
#include <QObject>
#include <QString>

class QNetworkAccessManager;
class QTcpServer;
class QTcpSocket;

// Where the built-in map pages get their pictures and their places. Read from [Map] in the
// settings; an empty value takes the default.
struct MapPageSources {
    QString tiles;     // a tile address with {z}, {x}, {y}
    QString geocoder;  // a Nominatim-compatible search address; "?q=...&format=json&limit=1" is added
    QString leafletFolder;
    QString pagesFolder;
};
inline constexpr const char *DefaultTileServer = "https://tile.openstreetmap.org/{z}/{x}/{y}.png";
inline constexpr const char *DefaultGeocoder = "https://nominatim.openstreetmap.org/search";
MapPageSources MapPageSourcesFromSettings();

// The map server Orvana runs itself while [System] MapServer is empty: a small HTTP server on
// 127.0.0.1 at a free port, serving the locator, pointer and search pages of the map URL
// contract, Leaflet from the system's copy and the photos' positions. It lives on the thread it
// was created on (or moved to) and never blocks it: files are small, and a search waits for the
// geocoder's reply through signals. The pages load their pictures from the tile address only, and
// the server asks the geocoder only; nothing else leaves the computer.
class MapPageServer : public QObject {
    Q_OBJECT
public:
    explicit MapPageServer(MapPageSources sources, QObject *parent = nullptr);
    ~MapPageServer() override;

    // Starts listening; false when no port could be had.
    bool Listen();
    // "127.0.0.1:PORT", the host part of the page addresses.
    QString Host() const;

    // The positions the locator page marks, as a JSON array of {"lat","lon","name"}; the page asks
    // for them again after each move. Callable from any thread.
    void SetPhotoMarkers(const QByteArray &json);

private:
    void Accept();
    void Read(QTcpSocket *socket);
    void Answer(QTcpSocket *socket, const QString &target);
    void Search(QTcpSocket *socket, const QString &address);
    QByteArray PageConfig() const;

    MapPageSources sources;
    QTcpServer *server;
    QNetworkAccessManager *network = nullptr;
    QHash<QTcpSocket *, QByteArray> pending;
    mutable QMutex markersLock;
    QByteArray markers = "[]";
};
