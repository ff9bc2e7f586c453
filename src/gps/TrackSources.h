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
// "usb:" for the entry "USB", any other entry in lower case ("COM3" is "com3"), as the
// converter takes port names on Windows.
QString GetDownloadPortName(const QString &portEntry);
// What GPSBabel is given on Linux for a port entry. Its Garmin and Magellan serial drivers open
// the name they are given as a device file and know nothing of "COMn", so the entries are mapped
// the way a PC numbers its ports: COM1 and COM2 are the built-in ports /dev/ttyS0 and /dev/ttyS1,
// COM3 to COM12 the USB-serial cables /dev/ttyUSB0 to /dev/ttyUSB9 (Windows numbers those after
// the built-in ones). "USB" stays "usb:", GPSBabel's own name for a Garmin on USB; anything else
// (a device path typed on the command line) is passed as it is.
QString ReceiverPortDevice(const QString &portEntry);
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
// A receiver download in two steps, for callers that run GPSBabel themselves without waiting on
// it: Prepare deletes both download files and gives the command; ImportReceiverDownload then reads
// what the run left (the failure message when it left nothing).
struct ReceiverRun {
    QString program;
    QStringList arguments;
};
ReceiverRun PrepareReceiverDownload(const QString &format, const QString &portEntry, LogType logType);
SourceImport ImportReceiverDownload(GpsStore &store, LogType logType, ProgressSink *progress);
SourceImport DownloadFromReceiver(GpsStore &store, const QString &format, const QString &portEntry, LogType logType,
                                  ProgressSink *progress);
