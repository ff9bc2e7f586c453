#pragma once

#include <QString>

class QWidget;

// The file pickers of the GPS window: a log to import with the type its filter names, and a GPX
// file to write. Tests answer them with a script; an empty path means the user cancelled.
class GpsFileChooser {
public:
    struct Chosen {
        QString path;
        QString type; // "gpx", "nmea" or "ozi"
    };
    virtual ~GpsFileChooser() = default;
    // ImportGPX with the GPX_Ozi_NMEA_Type filter.
    virtual Chosen ChooseLog(QWidget *parent) = 0;
    // ExportGPX with the GPXType filter.
    virtual QString ChooseGpx(QWidget *parent, const QString &suggested) = 0;
};

class DialogGpsFileChooser : public GpsFileChooser {
public:
    Chosen ChooseLog(QWidget *parent) override;
    QString ChooseGpx(QWidget *parent, const QString &suggested) override;
};
