#pragma once

#include "gps/GpsRecords.h"

#include <QDialog>

class GpsLog;
class QLineEdit;
class QPushButton;

// frmNewWaypoint and frmModifyWaypoint: every field of a waypoint can be changed. Modify stores
// the fields in the shared log (a new waypoint is added), Revert puts back the values the dialog
// opened with (the stored ones), Cancel closes without a change.
class WaypointDialog : public QDialog {
    Q_OBJECT
public:
    // A new waypoint, starting from `start` (a position picked elsewhere, or blank).
    WaypointDialog(GpsLog &log, const Waypoint &start, QWidget *parent);
    // The stored waypoint `index` of the log.
    WaypointDialog(GpsLog &log, int index, QWidget *parent);

    Waypoint Values() const;
    void SetValues(const Waypoint &values);

private:
    void Build(const char *caption);
    void Modify();
    void Revert();
    void CheckPosition();

    GpsLog &log;
    int index; // -1: a new waypoint
    Waypoint stored;
    QLineEdit *name;
    QLineEdit *latitude;
    QLineEdit *longitude;
    QLineEdit *elevation;
    QLineEdit *description;
    QPushButton *modify;
};
