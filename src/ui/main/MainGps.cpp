// The GPS commands of the main window and the GPS log's part in quitting.
#include "ui/main/MainWindow.h"

#include "ui/common/TaskRunner.h"
#include "ui/gps/GpsLogFiles.h"
#include "ui/gps/GpsWindow.h"
#include "ui/map/MapWaypointLocator.h"
#include "app/Language.h"
#include "app/Prompter.h"

#include <utility>

void MainWindow::mnuGPSLog_Click()
{
    ShowGpsWindow();
}

GpsWindow *MainWindow::ShowGpsWindow()
{
    // A top-level window of its own rather than one of the document area: matching works on the
    // active album, which stays in view and selectable beside it.
    if (!gpsWindow) {
        gpsWindow = new GpsWindow(gpsLog, [this] { return ActiveAlbum(); }, this);
        connect(gpsWindow, &GpsWindow::EditWaypointOnMap, this,
                [this](int waypoint) { MapWaypointLocator::OpenForWaypoint(gpsLog, waypoint, gpsWindow); });
    }
    gpsWindow->show();
    gpsWindow->raise();
    gpsWindow->activateWindow();
    return gpsWindow;
}

bool MainWindow::GpsLogSettled()
{
    // The GPS window saves the log as it closes, on a worker: quitting waits for it.
    if (gpsWindow && !gpsWindow->close()) {
        connect(gpsWindow, &QObject::destroyed, this, &QWidget::close, Qt::ConnectionType(Qt::QueuedConnection | Qt::UniqueConnection));
        return false;
    }
    // Saved for this attempt to quit; should the albums keep the program open, a later change is
    // saved on the next attempt.
    if (std::exchange(gpsSavedForQuit, false) || !gpsLog.IsLoaded() || !gpsLog.Store().IsModified())
        return true;
    // Changed by another window after the GPS window closed.
    if (opener->Running())
        return false;
    GpsLogFiles::Save(*opener, gpsLog, [this](const Result &saved) {
        if (!saved)
            prompter->Error(GetLocalizedString(QStringLiteral("GPSLogManager"), QStringLiteral("Form")), saved.message);
        gpsSavedForQuit = true;
        close();
    });
    return false;
}
