#pragma once

#include "gps/GpxImport.h"

#include <QString>
#include <QStringList>

class GpsStore;
class ProgressSink;

// Tracks and waypoints from NMEA and OziExplorer logs and from Garmin and Magellan receivers.
// None of these is read by the program: GPSBabel converts each to a temporary GPX file in the
// user-data folder, which is then imported as GPX. Success is judged only by that file being
// there afterwards; temporary files are deleted before each run, never after.

enum class LogType { Tracks, Waypoints };

// "gpx", "nmea" or "ozi" by the file's extension, as the import dialog's filter offers them.
QString TrackFileType(const QString &path);

// GPSBabel in the program's Resources when present, else the one on PATH.
QString GpsBabelProgram();
QStringList FileConversionArguments(const QString &type, const QString &input, const QString &output);
QStringList ReceiverDownloadArguments(LogType logType, const QString &make, const QString &port, const QString &output);

QString TemporaryGpxPath();                        // "~temp.gpx"
QString GetDownloadGPXFileName(LogType logType);   // "~tracks_download.gpx", "~waypoints_download.gpx"
// "usb:" for the entry "USB", any other entry in lower case ("COM3" is "com3").
QString GetDownloadPortName(const QString &portEntry);
// The receiver dialog's lists: makes as shown with their converter format names, ports as shown.
struct ReceiverMake {
    QString shown;
    QString format;
};
QList<ReceiverMake> ReceiverMakes();
QStringList SerialPortEntries();

// The outcome of an import from a file or a receiver, with its localised report (section "GPS").
struct SourceImport {
    bool ok = false;
    QString messageKey;
    GpxImportReport report;
};

// A GPX file is imported directly; "nmea" and "ozi" files through GPSBabel.
SourceImport ImportTrackFile(GpsStore &store, const QString &path, const QString &type, ProgressSink *progress);
SourceImport DownloadFromReceiver(GpsStore &store, const QString &format, const QString &portEntry, LogType logType,
                                  ProgressSink *progress);
