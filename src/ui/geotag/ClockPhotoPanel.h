#pragma once

#include <QDateTime>
#include <QGroupBox>

class QDateTimeEdit;
class QLabel;

// For a photo of a clock: the photo beside the capture time its camera recorded, and a field for
// the time the clock in the photo shows. The difference between the two is the camera's error.
class ClockPhotoPanel : public QGroupBox {
    Q_OBJECT
public:
    explicit ClockPhotoPanel(QWidget *parent = nullptr);

    // The photo (decoded small on a worker) and its CaptureDate; a capture time that does
    // not read as one leaves the panel without a difference.
    void SetPhoto(const QString &picturePath, const QString &captureDate);
    // Seconds to add to the camera's times: the clock's time less the capture time.
    qint64 DifferenceSeconds() const;

signals:
    void DifferenceChanged(qint64 seconds);

private:
    void ClockTimeEdited();

    QLabel *picture;
    QLabel *captured;
    QDateTimeEdit *clock;
    QLabel *difference;
    QDateTime capture;
};
