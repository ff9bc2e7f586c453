#include "FakeWebServer.h"
#include "GpsTestSupport.h"

#include "ui/map/MapLocatorDialog.h"
#include "ui/map/MapService.h"
#include "ui/map/MapView.h"
#include "ui/map/MapWaypointLocator.h"
#include "gps/GpsLog.h"
#include "app/Settings.h"
#include "library/PhotoRecord.h"

#include <QApplication>
#include <QBuffer>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSet>
#include <QTest>
#include <QWebEngineProfile>
#include <QWebEngineUrlRequestInfo>
#include <QWebEngineUrlRequestInterceptor>
#include <QWebEngineView>

namespace {

constexpr int PageTimeout = 60000;

// Every address the embedded browser asks for, by host.
class HostRecorder : public QWebEngineUrlRequestInterceptor {
public:
    void interceptRequest(QWebEngineUrlRequestInfo &info) override
    {
        const QMutexLocker locked(&lock);
        if (info.requestUrl().scheme().startsWith(QLatin1String("http")))
            hosts.insert(info.requestUrl().host());
    }
    QSet<QString> Hosts()
    {
        const QMutexLocker locked(&lock);
        return hosts;
    }

private:
    QMutex lock;
    QSet<QString> hosts;
};

QByteArray TilePng()
{
    QImage tile(256, 256, QImage::Format_RGB32);
    tile.fill(QColor(170, 211, 223));
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    tile.save(&buffer, "PNG");
    return png;
}

bool ShowsReport(const MapView *map)
{
    return map->Browser()->url().toString().contains(QLatin1String("LOCATOR_TAGS"));
}

// The photos marked on the page; -1 while the page does not answer.
int Markers(const MapView *map)
{
    auto count = std::make_shared<int>(-1);
    map->Browser()->page()->runJavaScript(QStringLiteral("document.querySelectorAll('path.leaflet-interactive').length"),
                                          [count](const QVariant &value) { *count = value.toInt(); });
    if (!QTest::qWaitFor([count] { return *count >= 0; }, 5000))
        return -1;
    return *count;
}

// The log as the last save left it on disk.
QStringList SavedWaypoints()
{
    GpsStore saved;
    return saved.Load(nullptr) ? DescribeWaypoints(saved) : QStringList{};
}

} // namespace

// The map dialogs in the embedded browser, against Orvana's own page server and a tile server on
// loopback: the page reports the view the user moves to, the dialogs store it.
class MapLocatorTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void waypointLocatorFollowsThePage();
    void photoLocatorPlacesThePhoto();
    void mapHostDownShowsTheFailurePage();

private:
    std::unique_ptr<ScopedTestEnvironment> environment;
    std::unique_ptr<FakeWebServer> tiles;
    HostRecorder recorder;
    GpsLog log;
};

void MapLocatorTest::initTestCase()
{
    RenewEnvironment(environment);
    tiles = std::make_unique<FakeWebServer>(TilePng(), "image/png");
    WriteSetting(QStringLiteral("Map"), QStringLiteral("TileServer"), QStringLiteral("http://127.0.0.1:%1/{z}/{x}/{y}.png").arg(tiles->Port()));
    WriteSetting(QStringLiteral("System"), QStringLiteral("MapServer"), QString());
    MapService::Instance().LoadTemplates();
    QWebEngineProfile::defaultProfile()->setUrlRequestInterceptor(&recorder);
    // A waypoint the user had: the dialogs read the log themselves, and keep it.
    GpsStore earlier;
    earlier.AddNewWaypoint(Waypoint{QStringLiteral("Camp"), QStringLiteral("36.46"), QStringLiteral("-116.87"), QStringLiteral("0.0"), QString()});
    QVERIFY(earlier.Save());
}


void MapLocatorTest::waypointLocatorFollowsThePage()
{
    MapWaypointLocator dialog(log);
    dialog.SetLocation(48.85, 2.35);
    dialog.show();
    auto *save = dialog.findChild<QPushButton *>(QStringLiteral("ButtonSaveWaypoint"));
    QTRY_VERIFY(log.IsLoaded());
    QVERIFY(save->isEnabled());
    QCOMPARE(log.Store().WaypointCount(), 1);
    QTRY_VERIFY_WITH_TIMEOUT(ShowsReport(dialog.Map()), PageTimeout);
    QCOMPARE(MapService::Instance().State().level, qint16(12));

    // The user drags and zooms: the page writes the new view into its address.
    dialog.Map()->Browser()->page()->runJavaScript(QStringLiteral("orvanaMap.setView([45.5, 6.25], 9);"));
    QTRY_COMPARE_WITH_TIMEOUT(MapService::Instance().State().level, qint16(10), PageTimeout);
    QCOMPARE(MapService::Instance().State().latitude, 45.5);
    QCOMPARE(MapService::Instance().State().longitude, 6.25);
    QCOMPARE(dialog.findChild<QLabel *>(QStringLiteral("LabelLatitude"))->text(), QStringLiteral("45.5"));

    save->click();
    QCOMPARE(log.Store().WaypointCount(), 2);
    QCOMPARE(log.Store().WaypointAt(1).lat, QStringLiteral("45.500000000"));
    QCOMPARE(log.Store().WaypointAt(1).lon, QStringLiteral("6.250000000"));
    QTRY_COMPARE(SavedWaypoints().size(), 2);

    // The waypoint opened again, moved by a typed place, is changed where it is.
    MapWaypointLocator *again = MapWaypointLocator::OpenForWaypoint(log, 1, nullptr);
    QCOMPARE(again->findChild<QLabel *>(QStringLiteral("LabelLongitude"))->text(), QStringLiteral("6.25"));
    again->findChild<QLineEdit *>(QStringLiteral("TextMapSearch"))->setText(QStringLiteral("  -33.8688, 151.2093 "));
    again->findChild<QPushButton *>(QStringLiteral("ButtonGo"))->click();
    QTRY_COMPARE_WITH_TIMEOUT(MapService::Instance().State().latitude, -33.8688, PageTimeout);
    again->findChild<QPushButton *>(QStringLiteral("ButtonSaveWaypoint"))->click();
    QCOMPARE(log.Store().WaypointCount(), 2);
    QCOMPARE(log.Store().WaypointAt(1).lat, QStringLiteral("-33.868800000"));
    QCOMPARE(log.Store().WaypointAt(1).lon, QStringLiteral("151.209300000"));
    QTRY_COMPARE(SavedWaypoints(), DescribeWaypoints(log.Store()));
    again->close();

    QVERIFY(!tiles->Requests().isEmpty());
    QCOMPARE(recorder.Hosts(), QSet<QString>{QStringLiteral("127.0.0.1")});
}

void MapLocatorTest::photoLocatorPlacesThePhoto()
{
    const QString folder = environment->Root() + QStringLiteral("/Harbour");
    std::unique_ptr<AlbumDocument> album =
        MakeAlbum(folder, {{"File=one.jpg", "Latitude=10.5", "Longitude=20.25"}, {"File=two.jpg", "Latitude=", "Longitude="}});
    MapLocatorDialog dialog(log);
    dialog.SetDocument(*album);
    dialog.show();
    QCOMPARE(MapService::Instance().State().latitude, 10.5);
    QTRY_VERIFY_WITH_TIMEOUT(ShowsReport(dialog.Map()), PageTimeout);
    // The photo that has a place is marked on the map.
    QTRY_COMPARE_WITH_TIMEOUT(Markers(dialog.Map()), 1, PageTimeout);

    dialog.findChild<QPushButton *>(QStringLiteral("CommandNext"))->click();
    QCOMPARE(dialog.CurrentPhoto(), 2);
    QCOMPARE(dialog.findChild<QLabel *>(QStringLiteral("LabelPhotoName"))->text(), QStringLiteral("two.jpg"));
    dialog.findChild<QPushButton *>(QStringLiteral("ButtonLocatePhoto"))->click();
    QCOMPARE(album->Record(PhotoRecord::Latitude, 2), QStringLiteral("10.500000000"));
    QCOMPARE(album->Record(PhotoRecord::Longitude, 2), QStringLiteral("20.250000000"));
    QTRY_COMPARE_WITH_TIMEOUT(Markers(dialog.Map()), 2, PageTimeout);

    // The map centre kept as a waypoint of the shared log, which the list shows.
    const int before = log.Store().WaypointCount();
    dialog.findChild<QPushButton *>(QStringLiteral("LabelSaveTargetedAsWaypoint"))->click();
    QCOMPARE(log.Store().WaypointCount(), before + 1);
    QCOMPARE(log.Store().WaypointAt(before).lat, QStringLiteral("10.500000000"));
    QCOMPARE(dialog.findChild<QListWidget *>(QStringLiteral("ListWaypoints"))->count(), before + 1);
}

void MapLocatorTest::mapHostDownShowsTheFailurePage()
{
    // Port 9 (discard) of loopback: nothing listens there.
    WriteSetting(QStringLiteral("System"), QStringLiteral("MapServer"), QStringLiteral("127.0.0.1:9"));
    MapService::Instance().LoadTemplates();
    MapWaypointLocator dialog(log);
    dialog.show();
    QTRY_COMPARE_WITH_TIMEOUT(dialog.Map()->Browser()->url(), LocalMapPage(QStringLiteral("MapServerFailed.html")), PageTimeout);
    WriteSetting(QStringLiteral("System"), QStringLiteral("MapServer"), QString());
    MapService::Instance().LoadTemplates();
}

int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    MapLocatorTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_MapLocator.moc"
