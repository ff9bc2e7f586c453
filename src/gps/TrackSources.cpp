#include "gps/TrackSources.h"

#include "gps/GpsStore.h"
#include "app/HelperProgram.h"
#include "app/Paths.h"
#include "imaging/ShellAndWait.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>

namespace {

// GPSBabel may wait long on a receiver. While it runs, events keep flowing, so a dialog's timer
// can move its progress bar.
constexpr qint64 ConverterTimeoutMs = qint64{30} * 60 * 1000;

const QString Gpx = QStringLiteral("gpx");

struct TypeByExtension {
    const char *extension;
    const char *type;
};
// The extensions the import dialog's filter offers for each type.
constexpr TypeByExtension Extensions[] = {
    {"gpx", "gpx"}, {"nmea", "nmea"}, {"nma", "nmea"}, {"txt", "nmea"}, {"log", "nmea"}, {"plt", "ozi"}, {"wpt", "ozi"},
};

SourceImport ImportConverted(GpsStore &store, const QString &converted, const char *failureKey, const char *successKey,
                             ProgressSink *progress)
{
    SourceImport outcome;
    if (!QFileInfo::exists(converted)) {
        outcome.messageKey = QLatin1String(failureKey);
        return outcome;
    }
    outcome.report = ImportGPXFile(store, converted, progress);
    outcome.ok = outcome.report.ok;
    outcome.messageKey = QLatin1String(outcome.ok ? successKey : failureKey);
    return outcome;
}

} // namespace

QString TrackFileType(const QString &path)
{
    const QString extension = QFileInfo(path).suffix().toLower();
    for (const TypeByExtension &known : Extensions) {
        if (extension == QLatin1String(known.extension))
            return QLatin1String(known.type);
    }
    return Gpx;
}

QString GpsBabelProgram()
{
    return HelperProgram(QStringLiteral("gpsbabel"));
}

QStringList FileConversionArguments(const QString &type, const QString &input, const QString &output)
{
    // Tracks and waypoints both, duplicates removed by the converter's filter, an empty prefix.
    return {QStringLiteral("-p"), QString(), QStringLiteral("-t"), QStringLiteral("-w"), QStringLiteral("-i"), type,
            QStringLiteral("-f"), input, QStringLiteral("-x"), QStringLiteral("duplicate,shortname,location"),
            QStringLiteral("-o"), Gpx, QStringLiteral("-F"), output};
}

QStringList ReceiverDownloadArguments(LogType logType, const QString &make, const QString &port, const QString &output)
{
    QStringList arguments;
    if (logType == LogType::Tracks)
        arguments << QStringLiteral("-t");
    arguments << QStringLiteral("-i") << make << QStringLiteral("-f") << port << QStringLiteral("-o") << Gpx << QStringLiteral("-F") << output;
    return arguments;
}

QString TemporaryGpxPath()
{
    return GetUserDataFolder() + QStringLiteral("/~temp.gpx");
}

QString GetDownloadGPXFileName(LogType logType)
{
    return GetUserDataFolder() + (logType == LogType::Tracks ? QStringLiteral("/~tracks_download.gpx") : QStringLiteral("/~waypoints_download.gpx"));
}

QString GetDownloadPortName(const QString &portEntry)
{
    return portEntry == QLatin1String("USB") ? QStringLiteral("usb:") : portEntry.toLower();
}

QString ReceiverPortDevice(const QString &portEntry)
{
    static const QRegularExpression Com(QStringLiteral("^COM(\\d+)$"), QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch com = Com.match(portEntry);
    if (!com.hasMatch())
        return portEntry.compare(QLatin1String("USB"), Qt::CaseInsensitive) == 0 ? GetDownloadPortName(QStringLiteral("USB")) : portEntry;
    const int number = com.captured(1).toInt();
    constexpr int BuiltInPorts = 2;
    if (number <= BuiltInPorts)
        return QStringLiteral("/dev/ttyS%1").arg(std::max(number - 1, 0));
    return QStringLiteral("/dev/ttyUSB%1").arg(number - BuiltInPorts - 1);
}

QList<ReceiverMake> ReceiverMakes()
{
    return {{QStringLiteral("Garmin"), QStringLiteral("garmin")}, {QStringLiteral("Magellan"), QStringLiteral("magellan")}};
}

QStringList SerialPortEntries()
{
    QStringList ports{QStringLiteral("USB")};
    for (int n = 1; n <= 12; ++n)
        ports << QStringLiteral("COM%1").arg(n);
    return ports;
}

SourceImport ImportTrackFile(GpsStore &store, const QString &path, const QString &type, ProgressSink *progress)
{
    constexpr char Failure[] = "MessageFailToImportTrackFromGPX";
    constexpr char Success[] = "MessageSucceedToImportTracksFromGPX";
    if (type == Gpx)
        return ImportConverted(store, path, Failure, Success, progress);
    CreateFolderPath(GetUserDataFolder());
    const QString converted = TemporaryGpxPath();
    QFile::remove(converted);
    RunProgram(GpsBabelProgram(), FileConversionArguments(type, path, converted), ConverterTimeoutMs);
    return ImportConverted(store, converted, Failure, Success, progress);
}

ReceiverRun PrepareReceiverDownload(const QString &format, const QString &portEntry, LogType logType)
{
    CreateFolderPath(GetUserDataFolder());
    QFile::remove(GetDownloadGPXFileName(LogType::Tracks));
    QFile::remove(GetDownloadGPXFileName(LogType::Waypoints));
    return {GpsBabelProgram(), ReceiverDownloadArguments(logType, format, ReceiverPortDevice(portEntry), GetDownloadGPXFileName(logType))};
}

SourceImport ImportReceiverDownload(GpsStore &store, LogType logType, ProgressSink *progress)
{
    return ImportConverted(store, GetDownloadGPXFileName(logType),
                           logType == LogType::Tracks ? "MessageFailToImportTrackFromGPSr" : "MessageFailToImportWaypointFromGPSr",
                           "MessageSucceedToImportTracksFromGPS", progress);
}

SourceImport DownloadFromReceiver(GpsStore &store, const QString &format, const QString &portEntry, LogType logType,
                                  ProgressSink *progress)
{
    const ReceiverRun run = PrepareReceiverDownload(format, portEntry, logType);
    RunProgram(run.program, run.arguments, ConverterTimeoutMs);
    return ImportReceiverDownload(store, logType, progress);
}
