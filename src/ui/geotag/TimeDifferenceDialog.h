#pragma once

#include <QDialog>
#include <QList>
#include <QPointer>

class AlbumDocument;
class QComboBox;

// frmTimeDifference: shifts the capture times of the selected photos by whole or half hours
// picked from a list of 101, for a camera set to another time zone. Only CaptureDate changes.
class TimeDifferenceDialog : public QDialog {
    Q_OBJECT
public:
    explicit TimeDifferenceDialog(QWidget *parent = nullptr);

    // The album and the photos (record indices) that CoolButtonProcess shifts.
    void SetDocument(AlbumDocument &album, const QList<int> &photos);
    // A difference worked out elsewhere (frmTimeZone); the list shows the entry nearest to it.
    void SetTimeRetrieve(double hours);
    double Hours() const;

private:
    void Process();
    void CalculateFromZones();

    QComboBox *differences;
    QPointer<AlbumDocument> album;
    QList<int> photos;
};
