#pragma once

#include <QDialog>
#include <QPointer>

class AlbumDocument;
class GpsLog;
class MapView;
class QLabel;
class QListWidget;
class QPushButton;

// frmMapLocator: places an album's photos by hand. It steps through the photos one at a time with
// their thumbnails; ButtonLocatePhoto gives the current one the map centre, the waypoint list
// moves the map to a stored place, and the map centre can be kept as a waypoint. Photos that have
// a place are marked on the map.
class MapLocatorDialog : public QDialog {
    Q_OBJECT
public:
    MapLocatorDialog(GpsLog &log, QWidget *parent = nullptr);

    // The album whose photos are placed; the dialog closes when the album goes.
    void SetDocument(AlbumDocument &album);
    // The photo shown (from 1), 0 without photos.
    int CurrentPhoto() const { return current; }
    void ShowPhoto(int index);
    MapView *Map() const { return map; }

protected:
    void showEvent(QShowEvent *event) override;

private:
    void LocatePhoto();
    void SaveTargetAsWaypoint();
    void ListTheWaypoints();
    void WaypointChosen(int row);
    void PublishMarkers();

    GpsLog &log;
    QPointer<AlbumDocument> album;
    int current = 0;
    bool shown = false;
    MapView *map;
    QLabel *PictureThumbnail;
    QLabel *LabelPhotoName;
    QPushButton *CommandPrevious;
    QPushButton *CommandNext;
    QPushButton *ButtonLocatePhoto;
    QPushButton *LabelSaveTargetedAsWaypoint;
    QListWidget *ListWaypoints;
};
