#include "gps/MapLocatorUrls.h"

#include <QTest>

// The URL contract between the map dialogs and the map pages.
class MapLocatorUrlsTest : public QObject {
    Q_OBJECT
private slots:
    void pageAddresses_data();
    void pageAddresses();
    void pageReports_data();
    void pageReports();
    void searchReplies_data();
    void searchReplies();
};

void MapLocatorUrlsTest::pageAddresses_data()
{
    QTest::addColumn<double>("lon");
    QTest::addColumn<double>("lat");
    QTest::addColumn<int>("level");
    QTest::addColumn<QString>("page");
    QTest::addColumn<QString>("url");
    QTest::newRow("locator, level 12 sends 11")
        << 2.35 << 48.85 << 12 << "locator"
        << "http://maps.example:8080/gmap/map_locator/?lon=2.350000000&lat=48.850000000&width=640&height=480&level=11&maptype=2"
           "&mapserver=1&mapzoomcontrol=1&maptypebuttons=1&language=zh_CN";
    QTest::newRow("pointer, -0.5 sent with nine decimals")
        << -0.5 << -33.9 << 1 << "pointer"
        << "http://maps.example:8080/gmap/map_pointer/?lon=-0.500000000&lat=-33.900000000&width=640&height=480&level=0&maptype=2"
           "&mapserver=1&mapzoomcontrol=0";
    QTest::newRow("shared pointer on the shared host")
        << 151.2 << -33.85 << 5 << "shared"
        << "http://share.example/gmap/map_pointer/?lon=151.200000000&lat=-33.850000000&width=640&height=480&level=4&mapserver=2"
           "&mapzoomcontrol=0";
    QTest::newRow("search, address encoded") << 0.0 << 0.0 << 1 << "search"
                                             << "http://maps.example:8080/gmap/map_search/?address=Place%20de%20l%27%C3%89toile%2C%20Paris";
}

void MapLocatorUrlsTest::pageAddresses()
{
    QFETCH(double, lon);
    QFETCH(double, lat);
    QFETCH(int, level);
    QFETCH(QString, page);
    QFETCH(QString, url);
    const MapTemplates templates = MakeMapTemplates(QStringLiteral("maps.example:8080"), QStringLiteral("share.example"));
    const MapState state{lon, lat, static_cast<qint16>(level), 2, QStringLiteral("zh_CN")};
    const QString filled = page == QLatin1String("locator")   ? FillMapTemplate(templates.locator, state, 640, 480)
                           : page == QLatin1String("pointer") ? FillMapTemplate(templates.pointer, state, 640, 480)
                           : page == QLatin1String("shared")  ? FillMapTemplate(templates.sharedPointer, state, 640, 480)
                                                              : MapSearchUrl(templates, QStringLiteral("Place de l'Étoile, Paris"));
    QCOMPARE(filled, url);
}

void MapLocatorUrlsTest::pageReports_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<bool>("read");
    QTest::addColumn<double>("lon");
    QTest::addColumn<double>("lat");
    QTest::addColumn<int>("level");
    QTest::addColumn<int>("mapType");
    const double lon0 = 10.0, lat0 = 20.0;
    QTest::newRow("level 11 gives 12") << "http://127.0.0.1:5000/gmap/map_locator/?lon=1#$LOCATOR_TAGS=[2.294500000,48.858200000,11,0]"
                                       << true << 2.2945 << 48.8582 << 12 << 0;
    QTest::newRow("percent-encoded report") << "http://h/gmap/map_locator/?lon=1#%24LOCATOR_TAGS=%5B-0.5,51.5,0,3%5D" << true << -0.5 << 51.5
                                            << 1 << 3;
    QTest::newRow("scheme in capitals") << "HTTP://h/x?$LOCATOR_TAGS=[1,2,3,4]" << true << 1.0 << 2.0 << 4 << 4;
    QTest::newRow("three fields change nothing") << "http://h/x#$LOCATOR_TAGS=[1,2,3]" << false << lon0 << lat0 << 7 << 1;
    QTest::newRow("five fields change nothing") << "http://h/x#$LOCATOR_TAGS=[1,2,3,4,5]" << false << lon0 << lat0 << 7 << 1;
    QTest::newRow("no closing bracket") << "http://h/x#$LOCATOR_TAGS=[1,2,3,4" << false << lon0 << lat0 << 7 << 1;
    QTest::newRow("not a number") << "http://h/x#$LOCATOR_TAGS=[east,2,3,4]" << false << lon0 << lat0 << 7 << 1;
    QTest::newRow("local page ignored") << "file:///map.html#$LOCATOR_TAGS=[1,2,3,4]" << false << lon0 << lat0 << 7 << 1;
    QTest::newRow("no report") << "http://h/gmap/map_locator/?lon=1&lat=2" << false << lon0 << lat0 << 7 << 1;
}

void MapLocatorUrlsTest::pageReports()
{
    QFETCH(QString, url);
    QFETCH(bool, read);
    MapState state{10.0, 20.0, 7, 1, QStringLiteral("English")};
    QCOMPARE(GetLocatorData(url, state), read);
    QTEST(state.longitude, "lon");
    QTEST(state.latitude, "lat");
    QTEST(int(state.level), "level");
    QTEST(int(state.mapType), "mapType");
}

void MapLocatorUrlsTest::searchReplies_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("reply");
    QTest::addColumn<bool>("found");
    QTest::addColumn<double>("lat");
    QTest::addColumn<double>("lon");
    // "typed" is what the user entered: a coordinate pair makes the reply here, anything else
    // leaves it to the server, whose reply is given.
    QTest::newRow("typed pair, local reply") << "48.85, 2.35" << "$GEO_CODE=[200,0,48.85,2.35]" << true << 48.85 << 2.35;
    QTest::newRow("typed pair with blanks only") << " -33.8688  151.2093 " << "$GEO_CODE=[200,0,-33.8688,151.2093]" << true << -33.8688 << 151.2093;
    QTest::newRow("server reply in a page") << "Paris" << "<html>$GEO_CODE=[200,6,48.8566,2.3522]</html>" << true << 48.8566 << 2.3522;
    QTest::newRow("other status") << "Atlantis" << "$GEO_CODE=[404,0,0,0]" << false << 0.0 << 0.0;
    QTest::newRow("three fields") << "Paris" << "$GEO_CODE=[200,48.8,2.3]" << false << 0.0 << 0.0;
    QTest::newRow("no marker") << "Paris" << "<html>Service unavailable</html>" << false << 0.0 << 0.0;
    QTest::newRow("latitude out of range") << "Paris" << "$GEO_CODE=[200,0,95,2]" << false << 0.0 << 0.0;
    QTest::newRow("pair out of range is a place name") << "95, 2" << "$GEO_CODE=[404,0,0,0]" << false << 0.0 << 0.0;
}

void MapLocatorUrlsTest::searchReplies()
{
    QFETCH(QString, typed);
    QFETCH(QString, reply);
    QFETCH(bool, found);
    const std::optional<QString> local = LocalGeoCodeReply(typed);
    if (local)
        QCOMPARE(*local, reply);
    const std::optional<GeoPosition> place = ParseGeoCode(local.value_or(reply));
    QCOMPARE(place.has_value(), found);
    if (found) {
        QTEST(place->latitude, "lat");
        QTEST(place->longitude, "lon");
    }
}

QTEST_GUILESS_MAIN(MapLocatorUrlsTest)
#include "tst_MapLocatorUrls.moc"
