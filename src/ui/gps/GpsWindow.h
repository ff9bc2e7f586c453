#pragma once

#include "gps/GpsRecords.h"
#include "gps/PhotoMatching.h"
#include "gps/TrackSources.h"

#include <QDate>
#include <QMainWindow>
#include <functional>
#include <memory>

class AlbumWindow;
class GpsFileChooser;
class GpsLog;
class InterfaceCalls;
class Prompter;
class QButtonGroup;
class QComboBox;
class QDateEdit;
class QLabel;
class QTreeView;
class TaskRunner;
class TrackDetailsCache;
class TrackListModel;
class TrackPreview;
class WaypointListModel;

// frmGPS, the GPS log manager: the tracks and waypoints of the shared GPS log, their import,
// export and editing, and the matching of an album's photos with them. It reads and changes the
// log the main window owns (never a store of its own) and redraws when the log announces a change.
// File work (loading, saving, imports, downloads, renames) runs on a worker against a copy of the
// store while the window takes no edits.
class GpsWindow : public QMainWindow {
    Q_OBJECT
public:
    // `activeAlbum` tells which album the Match command works on (none: null).
    GpsWindow(GpsLog &log, std::function<AlbumWindow *()> activeAlbum, QWidget *parent = nullptr);
    ~GpsWindow() override;

    // Tests answer the pickers and message boxes with scripts.
    void UseChooser(std::unique_ptr<GpsFileChooser> chooser);
    void UsePrompter(std::unique_ptr<Prompter> prompter);

    // The operations others call.
    void DoAddWaypoint();
    void AddNewWaypoint(const Waypoint &waypoint);
    // The pickers set from 1990-1-1 to today, the list refreshed, then the Match command with the
    // option chosen.
    void DoMatchPhotosWithTracks();
    void DoDownloadTracksFromGPS();
    void DoDownloadWaypointsFromGPS();
    void DoImportTracksFromGPX();
    int GetTrackCount() const;
    // The ticked tracks of the list, as indices of the store.
    QList<int> GetVisibleTracks() const;
    // Imports a log file ("gpx", "nmea" or "ozi") on a worker; false while other work runs.
    bool ImportGPXFile(const QString &path, const QString &type, bool waypoints = false);
    QString GetDateWithSelectedTimeZone(const QString &utc) const;
    // The period and zone the list and matching use.
    MatchWindow Period() const;
    // File work of the window is running.
    bool IsWorking() const;

signals:
    // ButtonEditWaypointOnMap: the user wants the waypoint (a store index) placed on the map.
    void EditWaypointOnMap(int waypointIndex);

protected:
    void closeEvent(QCloseEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void BuildLayout();
    QWidget *BuildTracks();
    QWidget *BuildWaypoints();
    QWidget *BuildMatch();
    void LoadLog();
    void Refresh();
    void RefreshTracks();
    void ZoneChosen(int entry);
    void DateChosen(QDateEdit *changed, QDate previous);
    void ShowSelectedTrack();
    int SelectedTrack() const;
    int SelectedWaypoint() const;
    void SetEditable(bool editable);
    // GpsWindowCommands.cpp
    void ImportChosen(bool waypoints);
    void ExportTracks();
    void ExportWaypoints();
    void ModifyWaypoint();
    void RemoveWaypoint();
    void ModifyTrack();
    void RemoveTrack();
    void RenameTrack(int track, const QString &name);
    void DownloadFromGPS(LogType logType);
    void ImportDownload(LogType logType);
    void Match();
    void ShowOnEarth();
    void WorkEnded();

    GpsLog &log;
    std::function<AlbumWindow *()> activeAlbum;
    // Beside the window rather than its child: it outlives the views while stopping work.
    std::unique_ptr<TaskRunner> runner;
    std::unique_ptr<Prompter> prompter;
    std::unique_ptr<GpsFileChooser> chooser;
    TrackListModel *tracks;
    WaypointListModel *waypoints;
    TrackDetailsCache *details;
    QTreeView *trackList = nullptr;
    QTreeView *waypointList = nullptr;
    QComboBox *zone = nullptr;
    QDateEdit *begin = nullptr;
    QDateEdit *end = nullptr;
    QLabel *distance = nullptr;
    QLabel *duration = nullptr;
    QLabel *speed = nullptr;
    QLabel *elevation = nullptr;
    TrackPreview *preview = nullptr;
    QButtonGroup *matchOptions = nullptr;
    QWidget *body = nullptr;
    QList<double> zoneHours;
    // The period listed, to go back to when a picker is set past the other.
    QDate listedBegin;
    QDate listedEnd;
    bool closeWhenDone = false;
    bool saved = false;
    int shownTrack = -1;
};
