#include "ui/map/MapView.h"

#include "ui/map/MapService.h"
#include "ui/map/MapWork.h"
#include "gps/MapSearch.h"
#include "net/OrvHTTPEngine.h"
#include "app/Language.h"
#include "app/Paths.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <QWebEngineView>

QUrl LocalMapPage(const QString &name)
{
    return QUrl::fromLocalFile(ResourcesFolder() + u'/' + name);
}

MapView::MapView(QWidget *parent) : QWidget(parent)
{
    TextMapSearch = new QLineEdit(this);
    TextMapSearch->setObjectName(QStringLiteral("TextMapSearch"));
    TextMapSearch->setClearButtonEnabled(true);
    ButtonGo = new QPushButton(QStringLiteral("@ButtonGo"), this);
    ButtonGo->setObjectName(QStringLiteral("ButtonGo"));
    browser = new QWebEngineView(this);
    browser->setObjectName(QStringLiteral("WebBrowser"));
    browser->setMinimumSize(320, 240);

    auto *search = new QHBoxLayout;
    search->addWidget(TextMapSearch, 1);
    search->addWidget(ButtonGo);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(search);
    layout->addWidget(browser, 1);

    connect(ButtonGo, &QPushButton::clicked, this, [this] { Search(TextMapSearch->text()); });
    connect(TextMapSearch, &QLineEdit::returnPressed, this, [this] { Search(TextMapSearch->text()); });
    connect(browser, &QWebEngineView::urlChanged, this, &MapView::Follow);
    connect(browser, &QWebEngineView::loadFinished, this, &MapView::Loaded);
}

void MapView::ShowMap()
{
    const MapTemplates templates = MapService::Instance().Templates();
    const QSize inner = browser->size();
    pendingMap = QUrl(FillMapTemplate(templates.locator, MapService::Instance().State(), inner.width(), inner.height()));
    browser->load(LocalMapPage(QStringLiteral("MapServerConnecting.html")));
}

// The connecting page is up: now the map. A map page that cannot load gives the failure page;
// the local pages ("file:", "about:") are never replaced.
void MapView::Loaded(bool ok)
{
    const QUrl current = browser->url();
    if (current.scheme() == QLatin1String("file") && pendingMap.isValid() && current == LocalMapPage(QStringLiteral("MapServerConnecting.html"))) {
        const QUrl map = pendingMap;
        pendingMap.clear();
        browser->load(map);
        return;
    }
    if (!ok && current.scheme() == QLatin1String("http") && !pendingMap.isValid())
        browser->load(LocalMapPage(QStringLiteral("MapServerFailed.html")));
    Follow(current);
}

void MapView::Follow(const QUrl &url)
{
    if (GetLocatorData(url.toString(QUrl::FullyEncoded), MapService::Instance().State()))
        emit StateChanged();
}

void MapView::Search(const QString &text)
{
    const QString typed = text.trimmed();
    if (typed.isEmpty())
        return;
    const MapTemplates templates = MapService::Instance().Templates();
    ButtonGo->setEnabled(false);
    RunOffInterface<std::optional<GeoPosition>>(
        this,
        [templates, typed] {
            OrvHTTPEngine engine;
            return SearchPlace(templates, typed, engine);
        },
        [this](const std::optional<GeoPosition> &place) {
            ButtonGo->setEnabled(true);
            if (!place) {
                ShowMessage(this, GetLocalizedString(QStringLiteral("MessageNotFindPlace"), QStringLiteral("GPS")));
                return;
            }
            MapState &state = MapService::Instance().State();
            state.latitude = place->latitude;
            state.longitude = place->longitude;
            emit StateChanged();
            ShowMap();
        });
}

void MapView::RefreshPhotos()
{
    browser->page()->runJavaScript(QStringLiteral("window.orvanaRefreshPhotos && window.orvanaRefreshPhotos();"));
}
