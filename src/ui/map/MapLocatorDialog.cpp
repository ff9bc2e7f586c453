#include "ui/map/MapLocatorDialog.h"

#include "ui/Localize.h"
#include "ui/common/PhotoDecode.h"
#include "ui/map/MapService.h"
#include "ui/map/MapView.h"
#include "ui/map/MapWork.h"
#include "gps/GpsLog.h"
#include "gps/MapPageServer.h"
#include "gps/PhotoMatching.h"
#include "app/Degrees.h"
#include "app/Language.h"
#include "library/AlbumDocument.h"
#include "library/PhotoRecord.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QListWidget>
#include <QPixmap>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int ThumbnailSide = 160;

struct Place {
    double latitude;
    double longitude;
};

std::optional<Place> PlaceOf(const AlbumDocument &album, int index)
{
    const std::optional<double> lat = ReadDegrees(album.Record(PhotoRecord::Latitude, index), DegreesAxis::Latitude);
    const std::optional<double> lon = ReadDegrees(album.Record(PhotoRecord::Longitude, index), DegreesAxis::Longitude);
    return lat && lon ? std::optional(Place{*lat, *lon}) : std::nullopt;
}

QString GpsMessage(const char *key)
{
    return GetLocalizedString(QString::fromLatin1(key), QStringLiteral("GPS"));
}

} // namespace

MapLocatorDialog::MapLocatorDialog(GpsLog &log, QWidget *parent) : QDialog(parent), log(log)
{
    setObjectName(QStringLiteral("frmMapLocator"));
    setWindowTitle(QStringLiteral("@MapLocator"));
    map = new MapView(this);
    PictureThumbnail = new QLabel(this);
    PictureThumbnail->setObjectName(QStringLiteral("PictureThumbnail"));
    PictureThumbnail->setFixedSize(ThumbnailSide, ThumbnailSide);
    PictureThumbnail->setAlignment(Qt::AlignCenter);
    PictureThumbnail->setFrameShape(QFrame::StyledPanel);
    LabelPhotoName = new QLabel(this);
    LabelPhotoName->setObjectName(QStringLiteral("LabelPhotoName"));
    LabelPhotoName->setAlignment(Qt::AlignCenter);
    LabelPhotoName->setWordWrap(true);
    CommandPrevious = new QPushButton(QStringLiteral("@CommandPrevious"), this);
    CommandPrevious->setObjectName(QStringLiteral("CommandPrevious"));
    CommandNext = new QPushButton(QStringLiteral("@CommandNext"), this);
    CommandNext->setObjectName(QStringLiteral("CommandNext"));
    ButtonLocatePhoto = new QPushButton(QStringLiteral("@ButtonLocatePhoto"), this);
    ButtonLocatePhoto->setObjectName(QStringLiteral("ButtonLocatePhoto"));
    LabelSaveTargetedAsWaypoint = new QPushButton(QStringLiteral("@LabelSaveTargetedAsWaypoint"), this);
    LabelSaveTargetedAsWaypoint->setObjectName(QStringLiteral("LabelSaveTargetedAsWaypoint"));
    LabelSaveTargetedAsWaypoint->setFlat(true);
    ListWaypoints = new QListWidget(this);
    ListWaypoints->setObjectName(QStringLiteral("ListWaypoints"));

    auto *steps = new QHBoxLayout;
    steps->addWidget(CommandPrevious);
    steps->addWidget(CommandNext);
    auto *side = new QVBoxLayout;
    side->addWidget(PictureThumbnail, 0, Qt::AlignHCenter);
    side->addWidget(LabelPhotoName);
    side->addLayout(steps);
    side->addWidget(ButtonLocatePhoto);
    side->addSpacing(12);
    side->addWidget(new QLabel(QStringLiteral("@WaypointLogs"), this));
    side->addWidget(ListWaypoints, 1);
    side->addWidget(LabelSaveTargetedAsWaypoint);
    auto *layout = new QHBoxLayout(this);
    layout->addWidget(map, 1);
    layout->addLayout(side);
    resize(1000, 640);
    LocalizeForm(this);

    connect(CommandPrevious, &QPushButton::clicked, this, [this] { ShowPhoto(current - 1); });
    connect(CommandNext, &QPushButton::clicked, this, [this] { ShowPhoto(current + 1); });
    connect(ButtonLocatePhoto, &QPushButton::clicked, this, &MapLocatorDialog::LocatePhoto);
    connect(LabelSaveTargetedAsWaypoint, &QPushButton::clicked, this, &MapLocatorDialog::SaveTargetAsWaypoint);
    connect(ListWaypoints, &QListWidget::currentRowChanged, this, &MapLocatorDialog::WaypointChosen);
    connect(&log, &GpsLog::Changed, this, &MapLocatorDialog::ListTheWaypoints);
    EnsureGpsLogLoaded(this, log);
    ListTheWaypoints();
}

void MapLocatorDialog::SetDocument(AlbumDocument &document)
{
    album = &document;
    connect(&document, &QObject::destroyed, this, &QWidget::close);
    const auto follow = [this] { ShowPhoto(current); };
    connect(&document, &AlbumDocument::RecordsInserted, this, follow);
    connect(&document, &AlbumDocument::RecordsRemoved, this, follow);
    connect(&document, &AlbumDocument::RecordsReordered, this, follow);
    connect(&document, &AlbumDocument::RecordsChanged, this, &MapLocatorDialog::PublishMarkers);
    ShowPhoto(1);
    PublishMarkers();
    // A first photo that has a place is where the map opens.
    if (const std::optional<Place> place = current ? PlaceOf(document, current) : std::nullopt) {
        MapService::Instance().State().latitude = place->latitude;
        MapService::Instance().State().longitude = place->longitude;
    }
}

void MapLocatorDialog::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (!shown) {
        shown = true;
        map->ShowMap();
    }
}

void MapLocatorDialog::ShowPhoto(int index)
{
    const int count = album ? album->RecordCount() : 0;
    current = count == 0 ? 0 : qBound(1, index, count);
    CommandPrevious->setEnabled(current > 1);
    CommandNext->setEnabled(current < count);
    ButtonLocatePhoto->setEnabled(current > 0);
    PictureThumbnail->clear();
    if (current == 0) {
        LabelPhotoName->clear();
        return;
    }
    LabelPhotoName->setText(album->Record(PhotoRecord::File, current));
    // The album's own thumbnail when it has one; the photo itself otherwise. Decoded off the
    // interface thread; a reply for a photo no longer shown is dropped.
    const QString thumbnail = album->ThumbnailFilePath(current);
    const QString photo = album->PhotoFilePath(current);
    const int asked = current;
    RunOffInterface<QImage>(
        this,
        [thumbnail, photo] {
            const QImage small = DecodePhotoToFit(thumbnail, QSize(ThumbnailSide, ThumbnailSide));
            return small.isNull() ? DecodePhotoToFit(photo, QSize(ThumbnailSide, ThumbnailSide)) : small;
        },
        [this, asked](const QImage &image) {
            if (asked == current)
                PictureThumbnail->setPixmap(QPixmap::fromImage(image));
        });
}

void MapLocatorDialog::LocatePhoto()
{
    if (!album || current == 0)
        return;
    const MapState &state = MapService::Instance().State();
    const QString lat = QString::number(state.latitude, 'f', 9);
    const QString lon = QString::number(state.longitude, 'f', 9);
    // The same operation as "orvana-cli gps locate": nine decimals, the elevation kept.
    if (const Result located = LocatePhotos(*album, {current}, lat, lon); !located) {
        ShowMessage(this, located.message);
        return;
    }
    // %1 the photo's file name, %2 and %3 its new latitude and longitude as people read them.
    ShowMessage(this, GpsMessage("MessagePhotoIsLocated")
                          .arg(album->Record(PhotoRecord::File, current), ShortDegrees(state.latitude), ShortDegrees(state.longitude)));
}

void MapLocatorDialog::SaveTargetAsWaypoint()
{
    if (!log.IsLoaded())
        return;
    const MapState &state = MapService::Instance().State();
    Waypoint added;
    added.name = GetLocalizedString(QStringLiteral("NewWaypoint"), QStringLiteral("Form"));
    added.lat = QString::number(state.latitude, 'f', 9);
    added.lon = QString::number(state.longitude, 'f', 9);
    log.Change([&added](GpsStore &store) { store.AddNewWaypoint(added); });
    SaveGpsLog(this, log);
}

void MapLocatorDialog::ListTheWaypoints()
{
    // Until the log is read, a waypoint saved would be written over the user's whole list.
    LabelSaveTargetedAsWaypoint->setEnabled(log.IsLoaded());
    const QSignalBlocker quiet(ListWaypoints);
    ListWaypoints->clear();
    const GpsStore &store = log.Store();
    for (int waypoint = 0; waypoint < store.WaypointCount(); ++waypoint)
        ListWaypoints->addItem(store.WaypointAt(waypoint).name);
}

void MapLocatorDialog::WaypointChosen(int row)
{
    if (row < 0 || row >= log.Store().WaypointCount())
        return;
    const Waypoint waypoint = log.Store().WaypointAt(row);
    const std::optional<double> lat = ReadDegrees(waypoint.lat, DegreesAxis::Latitude);
    const std::optional<double> lon = ReadDegrees(waypoint.lon, DegreesAxis::Longitude);
    if (!lat || !lon)
        return;
    MapService::Instance().State().latitude = *lat;
    MapService::Instance().State().longitude = *lon;
    map->ShowMap();
}

// The places go to Orvana's own page server, where the locator page fetches them (an address of
// its own rather than the page URL: an album's places would make that URL as long as the album).
// A chosen map host has its own pages, which do not mark photos.
void MapLocatorDialog::PublishMarkers()
{
    MapPageServer *server = MapService::Instance().BuiltInServer();
    if (!server || !album)
        return;
    QJsonArray places;
    for (int index = 1; index <= album->RecordCount(); ++index) {
        if (const std::optional<Place> place = PlaceOf(*album, index))
            places.append(QJsonObject{{QStringLiteral("lat"), place->latitude},
                                      {QStringLiteral("lon"), place->longitude},
                                      {QStringLiteral("name"), album->Record(PhotoRecord::File, index)}});
    }
    server->SetPhotoMarkers(QJsonDocument(places).toJson(QJsonDocument::Compact));
    map->RefreshPhotos();
}
