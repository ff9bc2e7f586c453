#pragma once

#include <QDialog>
#include <QList>
#include <QPointer>

class AlbumDocument;
class ClockPhotoPanel;
class QDoubleSpinBox;
class QRadioButton;

// frmTimeCorrector: shifts the capture times of the selected photos by any number of days, hours,
// minutes and seconds, later or earlier. A photo of a clock gives the amount: the user types the
// time the clock shows and the fields take the difference. Only CaptureDate changes.
class TimeCorrectorDialog : public QDialog {
    Q_OBJECT
public:
    explicit TimeCorrectorDialog(QWidget *parent = nullptr);

    // The album and the photos (record indices) that CoolButtonProcess shifts; the current photo
    // (0 for none) is the one the clock-photo helper shows.
    void SetDocument(AlbumDocument &album, const QList<int> &photos, int current);
    // Fills the fields and the sign with a difference in seconds.
    void SetDifference(qint64 seconds);
    double OffsetDays() const;

private:
    void Process();
    QDoubleSpinBox *AddField(const QString &name);

    QDoubleSpinBox *days;
    QDoubleSpinBox *hours;
    QDoubleSpinBox *minutes;
    QDoubleSpinBox *seconds;
    QRadioButton *later;
    QRadioButton *earlier;
    ClockPhotoPanel *clockPhoto;
    QPointer<AlbumDocument> album;
    QList<int> photos;
};
