#pragma once

#include <QString>
#include <QtGlobal>
#include <optional>

// The map pages and the program talk only through URLs: the program puts the wanted view into the
// page's URL, the page writes the view the user has moved to into its own URL, and the search page
// answers with a "$GEO_CODE=[...]" marker. Everything here is text in, text out.

// The view both map dialogs share while the program runs. The level counts from 1 here; the pages
// count zoom from 0.
struct MapState {
    double longitude = 0.0;
    double latitude = 0.0;
    qint16 level = 12;
    qint16 mapType = 0;
    QString language;
};

// The four page addresses, "http://" + host + path, with their placeholders still in them.
struct MapTemplates {
    QString locator;
    QString pointer;
    QString sharedPointer;
    QString search;
};

// `mapHost` for the locator, pointer and search pages, `sharedHost` for the shared pointer page;
// a host may carry its port ("127.0.0.1:8123").
MapTemplates MakeMapTemplates(const QString &mapHost, const QString &sharedHost);

// A page template with the state's view and the browser's inner size in place of its
// placeholders.
QString FillMapTemplate(const QString &pageTemplate, const MapState &state, int width, int height);

// The search address for a typed place, the address percent-encoded.
QString MapSearchUrl(const MapTemplates &templates, const QString &address);

// Reads the view a page reports in its URL ("...$LOCATOR_TAGS=[lon,lat,level0,maptype]...") into
// the state. False, and the state untouched, for anything that is not such a report with
// exactly four numbers.
bool GetLocatorData(const QString &url, MapState &state);

// The position a search reply names: "$GEO_CODE=[status,n,lat,lon]" with status 200. Nothing
// for a missing marker, another field count, another status or a position that is not one.
struct GeoPosition {
    double latitude = 0.0;
    double longitude = 0.0;
};
std::optional<GeoPosition> ParseGeoCode(const QString &reply);

// The reply a search page gives for a found place, and for one it did not find.
QString GeoCodeReply(double latitude, double longitude);
QString GeoCodeNotFound();

// A typed "lat, lon" (or "lat lon") pair of decimal degrees: searched for without asking any
// server, by the locally built reply.
std::optional<QString> LocalGeoCodeReply(const QString &typed);

// A position for people: "0.0#####", at least one decimal and at most six.
QString ShortDegrees(double value);
