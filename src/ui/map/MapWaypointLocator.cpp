#include "ui/map/MapWaypointLocator.h"

#include "ui/Localize.h"
#include "ui/map/MapService.h"
#include "ui/map/MapView.h"
#include "ui/map/MapWork.h"
#include "gps/GpsLog.h"
#include "app/Language.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

MapWaypointLocator::MapWaypointLocator(GpsLog &log, QWidget *parent) : QDialog(parent), log(log)
{
    setObjectName(QStringLiteral("frmMapWaypointLocator"));
    setWindowTitle(QStringLiteral("@MapWaypointLocator"));
    map = new MapView(this);
    LabelLatitude = new QLabel(this);
    LabelLatitude->setObjectName(QStringLiteral("LabelLatitude"));
    LabelLongitude = new QLabel(this);
    LabelLongitude->setObjectName(QStringLiteral("LabelLongitude"));
    ButtonSaveWaypoint = new QPushButton(QStringLiteral("@ButtonSaveWaypoint"), this);
    ButtonSaveWaypoint->setObjectName(QStringLiteral("ButtonSaveWaypoint"));
    ButtonClose = new QPushButton(QStringLiteral("@ButtonClose"), this);
    ButtonClose->setObjectName(QStringLiteral("ButtonClose"));

    auto *position = new QFormLayout;
    position->addRow(QStringLiteral("@Latitude"), LabelLatitude);
    position->addRow(QStringLiteral("@Longitude"), LabelLongitude);
    auto *buttons = new QHBoxLayout;
    buttons->addLayout(position);
    buttons->addStretch(1);
    buttons->addWidget(ButtonSaveWaypoint);
    buttons->addWidget(ButtonClose);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(map, 1);
    layout->addLayout(buttons);
    resize(760, 560);
    LocalizeForm(this);

    connect(map, &MapView::StateChanged, this, &MapWaypointLocator::ShowPosition);
    connect(ButtonSaveWaypoint, &QPushButton::clicked, this, &MapWaypointLocator::SaveWaypoint);
    connect(ButtonClose, &QPushButton::clicked, this, &QDialog::close);
    // Until the log is read, a waypoint saved would be written over the user's whole list.
    const auto loaded = [this] { ButtonSaveWaypoint->setEnabled(this->log.IsLoaded()); };
    connect(&log, &GpsLog::Changed, this, loaded);
    loaded();
    EnsureGpsLogLoaded(this, log);
    ShowPosition();
}

MapWaypointLocator *MapWaypointLocator::OpenForWaypoint(GpsLog &log, int waypoint, QWidget *parent)
{
    auto *dialog = new MapWaypointLocator(log, parent);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    if (waypoint >= 0 && waypoint < log.Store().WaypointCount()) {
        const Waypoint values = log.Store().WaypointAt(waypoint);
        dialog->SetEditedWaypoint(waypoint);
        dialog->SetLocation(values.lat.toDouble(), values.lon.toDouble());
    }
    dialog->show();
    return dialog;
}

void MapWaypointLocator::SetLocation(double latitude, double longitude)
{
    MapState &state = MapService::Instance().State();
    state.latitude = latitude;
    state.longitude = longitude;
    ShowPosition();
    if (shown)
        map->ShowMap();
}

// The page is filled with the browser's size, known once the dialog is laid out.
void MapWaypointLocator::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (!shown) {
        shown = true;
        map->ShowMap();
    }
}

void MapWaypointLocator::ShowPosition()
{
    const MapState &state = MapService::Instance().State();
    LabelLatitude->setText(ShortDegrees(state.latitude));
    LabelLongitude->setText(ShortDegrees(state.longitude));
}

void MapWaypointLocator::SaveWaypoint()
{
    if (!log.IsLoaded())
        return;
    const MapState &state = MapService::Instance().State();
    const QString lat = QString::number(state.latitude, 'f', 9);
    const QString lon = QString::number(state.longitude, 'f', 9);
    int saved = edited;
    log.Change([&](GpsStore &store) {
        if (edited >= 0 && edited < store.WaypointCount()) {
            Waypoint values = store.WaypointAt(edited);
            values.lat = lat;
            values.lon = lon;
            store.ModifyWaypoint(edited, values);
            return;
        }
        Waypoint added;
        added.name = GetLocalizedString(QStringLiteral("NewWaypoint"), QStringLiteral("Form"));
        added.lat = lat;
        added.lon = lon;
        store.AddNewWaypoint(added);
        saved = store.WaypointCount() - 1;
    });
    // Saving again moves the same waypoint, not a second new one.
    edited = saved;
    SaveGpsLog(this, log);
    emit WaypointSaved(saved);
}
