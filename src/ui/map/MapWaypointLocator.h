#pragma once

#include <QDialog>

class GpsLog;
class MapView;
class QLabel;
class QPushButton;

// frmMapWaypointLocator: picks a waypoint's place on the map. The map centre is the place; the
// labels show it as the user moves. ButtonSaveWaypoint stores it in the shared GPS log, as a new
// waypoint or into the one being edited.
class MapWaypointLocator : public QDialog {
    Q_OBJECT
public:
    explicit MapWaypointLocator(GpsLog &log, QWidget *parent = nullptr);

    // Opens the locator over `parent` for waypoint `waypoint` of the log (from 0), or for a new
    // waypoint when it is -1, at the waypoint's place or where the map was last left.
    static MapWaypointLocator *OpenForWaypoint(GpsLog &log, int waypoint, QWidget *parent);

    // The start position, shown "0.0#####".
    void SetLocation(double latitude, double longitude);
    // The waypoint (from 0) that ButtonSaveWaypoint changes; -1 saves a new one.
    void SetEditedWaypoint(int waypoint) { edited = waypoint; }
    MapView *Map() const { return map; }

signals:
    // The waypoint was stored, at this index of the log.
    void WaypointSaved(int waypoint);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void ShowPosition();
    void SaveWaypoint();

    GpsLog &log;
    int edited = -1;
    bool shown = false;
    MapView *map;
    QLabel *LabelLatitude;
    QLabel *LabelLongitude;
    QPushButton *ButtonSaveWaypoint;
    QPushButton *ButtonClose;
};
