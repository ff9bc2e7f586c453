#pragma once

#include <QDialog>
#include <QPointer>

class AlbumWindow;
class QCheckBox;
class QComboBox;
enum class EarthOutput;

// frmGPSLocator: the simple front end to geotagging one album. The time zone its camera times are
// in (kept with the album as "_GPS.TimeZone" and "_GPS.TimeZoneDaylight" when the user picks one
// for it, and saved in [GPS] on closing), locating its photos with the GPS log's tracks, and its
// located photos in a globe viewer or a KML or KMZ file.
class GpsLocatorDialog : public QDialog {
    Q_OBJECT
public:
    explicit GpsLocatorDialog(AlbumWindow &album, QWidget *parent = nullptr);

    // The offset in hours of the zone chosen.
    double ZoneHours() const;

    void done(int result) override;

private:
    void ZoneChosen(int position);
    void LocatePhotos();
    void Earth(EarthOutput output);

    QPointer<AlbumWindow> album;
    QComboBox *zones;
    QCheckBox *onlyLocateSelected;
    QCheckBox *tracksOnEarth;
    QCheckBox *onlyShowSelected;
};
