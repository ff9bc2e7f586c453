#include "ui/gps/GpsFileChooser.h"

#include "ui/gps/GpsTexts.h"
#include "gps/TrackSources.h"

#include <QDir>
#include <QFileDialog>

GpsFileChooser::Chosen DialogGpsFileChooser::ChooseLog(QWidget *parent)
{
    const QString filter = GpsUi::GpsMessage("GPX_Ozi_NMEA_Type");
    QString selected;
    const QString path = QFileDialog::getOpenFileName(parent, GpsUi::GpsMessage("ImportGPX"), QDir::homePath(), filter, &selected);
    if (path.isEmpty())
        return {};
    // The filter entries are GPX, NMEA and Ozi in that order; the one chosen names the type, as a
    // NMEA log may well be called ".txt".
    static const char *const Types[] = {"gpx", "nmea", "ozi"};
    const qsizetype entry = filter.split(QStringLiteral(";;")).indexOf(selected);
    return {path, entry >= 0 && entry < 3 ? QLatin1String(Types[entry]) : TrackFileType(path)};
}

QString DialogGpsFileChooser::ChooseGpx(QWidget *parent, const QString &suggested)
{
    return QFileDialog::getSaveFileName(parent, GpsUi::GpsMessage("ExportGPX"), QDir::home().filePath(suggested), GpsUi::GpsMessage("GPXType"));
}
