#pragma once

#include "gps/GpsRecords.h"

#include <QDialog>
#include <functional>

class GpsLog;
class QLineEdit;

// frmModifyTrack: the track's name, begin and end time (in the window's zone), duration and
// bounds. Only the name can be changed. Modify hands the new name to `rename` (renaming rewrites
// the track's point file, which the window does on a worker), Revert puts back the stored name,
// Cancel closes without a change.
class TrackDialog : public QDialog {
    Q_OBJECT
public:
    using Rename = std::function<void(int track, const QString &name)>;
    TrackDialog(const GpsLog &log, int track, double zoneHours, Rename rename, QWidget *parent);

private:
    void Modify();
    void Revert();

    const GpsLog &log;
    int track;
    Rename rename;
    QLineEdit *name;
};
