// orvana-cli gps geocode: a place looked up as the map dialogs look it up.
#include "cli/CliGpsSupport.h"
#include "cli/CliGpsVerbs.h"
#include "cli/CliOutput.h"

#include "gps/MapPageServer.h"
#include "gps/MapSearch.h"
#include "net/OrvHTTPEngine.h"

#include <QThread>

namespace {

// Orvana's own map server while no map host is chosen, on a thread of its own: the verb then asks
// it through the HTTP engine exactly as a dialog does, waiting on this thread.
class BuiltInMapServer {
public:
    BuiltInMapServer() : server(MapPageSourcesFromSettings())
    {
        server.moveToThread(&thread);
        thread.start();
        QMetaObject::invokeMethod(&server, [this] { listening = server.Listen(); }, Qt::BlockingQueuedConnection);
    }
    ~BuiltInMapServer()
    {
        // The server's sockets belong to its thread; they go with it before the thread ends.
        QMetaObject::invokeMethod(&server, [this] { qDeleteAll(server.children()); }, Qt::BlockingQueuedConnection);
        thread.quit();
        thread.wait();
    }
    bool listening = false;
    MapPageServer server;

private:
    QThread thread;
};

int Geocode(const GpsArguments &args)
{
    const QString typed = args.positional.join(u' ').trimmed();
    if (typed.isEmpty())
        return args.UsageError(QStringLiteral("gps geocode takes the TEXT of a place"));
    std::optional<BuiltInMapServer> builtIn;
    if (ChosenMapServer().isEmpty() && !LocalGeoCodeReply(typed)) {
        builtIn.emplace();
        if (!builtIn->listening)
            return Fail(QStringLiteral("the map server could not listen on 127.0.0.1"));
    }
    OrvHTTPEngine engine;
    const std::optional<GeoPosition> place = SearchPlace(MapTemplatesFromSettings(builtIn ? builtIn->server.Host() : QString()), typed, engine);
    if (!place)
        return Fail(GpsText(QStringLiteral("MessageNotFindPlace")));
    PrintOut(ShortDegrees(place->latitude) + u' ' + ShortDegrees(place->longitude));
    return ExitDone;
}

} // namespace

CliVerb GpsGeocodeVerb()
{
    return {"geocode", "TEXT", "the latitude and longitude of a place, found by the map's search ([System] MapServer, else [Map] Geocoder)", {},
            Geocode};
}
