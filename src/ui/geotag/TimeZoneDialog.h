#pragma once

#include <QDialog>

class QComboBox;

// frmTimeZone: works out a camera's time difference from two zones, the one its clock was set to
// and the one the photos were taken in, and hands it on (to frmTimeDifference's SetTimeRetrieve).
class TimeZoneDialog : public QDialog {
    Q_OBJECT
public:
    explicit TimeZoneDialog(QWidget *parent = nullptr);

    // Hours to add to the camera's times: the photos' zone less the camera's.
    double Difference() const;

signals:
    void TimeDifferenceCalculated(double hours);

private:
    QComboBox *camera;
    QComboBox *taken;
};
