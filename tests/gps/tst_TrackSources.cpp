#include "GpsTestSupport.h"
#include "app/Language.h"
#include "TestEnvironment.h"
#include "gps/TrackSources.h"

#include <QDir>
#include <QFile>
#include <QTest>

// Tracks through GPSBabel: the corpus's NMEA and OziExplorer logs with the real converter, and
// the converter's exact command pieces, temporary files and verdicts with a stand-in that
// records how it was called.
class TrackSourcesTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void corpusLogs_data();
    void corpusLogs();
    void converterCalls_data();
    void converterCalls();

private:
    std::unique_ptr<ScopedTestEnvironment> environment;
};

namespace {

// A stand-in converter in Resources: writes its arguments to calls.txt and, when told to by
// answer.gpx beside it, copies that file to its -F output.
const QByteArray StandIn = R"(#!/bin/sh
here=$(dirname "$0")
for argument in "$@"; do printf '%s\n' "$argument"; done > "$here/calls.txt"
out=""
while [ $# -gt 0 ]; do [ "$1" = "-F" ] && out="$2"; shift; done
[ -f "$here/answer.gpx" ] && cp "$here/answer.gpx" "$out"
exit 0
)";

} // namespace

void TrackSourcesTest::init()
{
    RenewEnvironment(environment);
}

void TrackSourcesTest::corpusLogs_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("points");
    QTest::addColumn<int>("waypoints");
    for (const char *format : {"nmea", "ozi"}) {
        const QMap<QString, TrackSummary> summaries = TrackSummaries(QLatin1String(format));
        for (auto it = summaries.begin(); it != summaries.end(); ++it) {
            if (TrackFileType(it.key()) == QLatin1String(format))
                QTest::newRow(qPrintable(it.key())) << it.key() << it.value().points << it.value().waypoints;
        }
    }
}

void TrackSourcesTest::corpusLogs()
{
    QFETCH(QString, file);
    QFETCH(int, points);
    QFETCH(int, waypoints);
    GpsStore store;
    const SourceImport imported = ImportTrackFile(store, CorpusTrack(file), TrackFileType(file), nullptr);
    QVERIFY2(imported.ok, qPrintable(imported.report.error));
    QCOMPARE(imported.messageKey, QStringLiteral("MessageSucceedToImportTracksFromGPX"));
    QCOMPARE(imported.report.points, points);
    // The converter's duplicate filter may merge waypoints of one name or place.
    QVERIFY(imported.report.waypoints <= waypoints && (waypoints == 0) == (imported.report.waypoints == 0));
    QVERIFY(QFile::exists(TemporaryGpxPath()));
}

void TrackSourcesTest::converterCalls_data()
{
    QTest::addColumn<QString>("source");  // "nmea", "ozi", or "receiver MAKE PORT tracks|waypoints"
    QTest::addColumn<bool>("answers");    // the converter writes its output
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("message");

    const QString userData = QStringLiteral("USERDATA");
    QTest::newRow("NMEA file") << "nmea" << true << QStringList{"-p", "", "-t", "-w", "-i", "nmea", "-f", "IN", "-x", "duplicate,shortname,location", "-o", "gpx", "-F",
                                              userData + "/~temp.gpx"} << "MessageSucceedToImportTracksFromGPX";
    QTest::newRow("Ozi file, no output") << "ozi" << false << QStringList{"-p", "", "-t", "-w", "-i", "ozi", "-f", "IN", "-x", "duplicate,shortname,location", "-o", "gpx",
                                                        "-F", userData + "/~temp.gpx"} << "MessageFailToImportTrackFromGPX";
    QTest::newRow("Garmin tracks over USB") << "receiver garmin USB tracks" << true << QStringList{"-t", "-i", "garmin", "-f", "usb:", "-o", "gpx", "-F", userData + "/~tracks_download.gpx"}
                                            << "MessageSucceedToImportTracksFromGPS";
    QTest::newRow("Magellan waypoints on COM3") << "receiver magellan COM3 waypoints" << true << QStringList{"-i", "magellan", "-f", "/dev/ttyUSB0", "-o", "gpx", "-F", userData + "/~waypoints_download.gpx"}
                                                << "MessageSucceedToImportTracksFromGPS";
    QTest::newRow("Garmin tracks on the first built-in port") << "receiver garmin COM1 tracks" << true << QStringList{"-t", "-i", "garmin", "-f", "/dev/ttyS0", "-o", "gpx", "-F", userData + "/~tracks_download.gpx"}
                                                              << "MessageSucceedToImportTracksFromGPS";
    QTest::newRow("receiver without an answer") << "receiver garmin COM12 waypoints" << false << QStringList{"-i", "garmin", "-f", "/dev/ttyUSB9", "-o", "gpx", "-F", userData + "/~waypoints_download.gpx"}
                                                << "MessageFailToImportWaypointFromGPSr";
}

void TrackSourcesTest::converterCalls()
{
    QFETCH(QString, source);
    QFETCH(bool, answers);
    QFETCH(QStringList, arguments);
    QFETCH(QString, message);

    // Resources of the test's own, holding the stand-in and the real language files.
    const QString resources = environment->Env().install + QStringLiteral("/Resources");
    QFile::remove(resources);
    QDir().mkpath(resources);
    QFile::link(QStringLiteral(ORVANA_SOURCE_DIR "/resources/English"), resources + QStringLiteral("/English"));
    WriteAll(resources + QStringLiteral("/gpsbabel"), StandIn);
    QFile::setPermissions(resources + QStringLiteral("/gpsbabel"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    if (answers)
        QFile::copy(CorpusTrack(QStringLiteral("gpsbabel-nmea.gpx")), resources + QStringLiteral("/answer.gpx"));
    QCOMPARE(GpsBabelProgram(), resources + QStringLiteral("/gpsbabel"));
    // Leftovers of an earlier run must not pass for this run's output.
    for (const LogType type : {LogType::Tracks, LogType::Waypoints})
        QFile::copy(CorpusTrack(QStringLiteral("gpsbabel-nmea.gpx")), GetDownloadGPXFileName(type));
    QFile::copy(CorpusTrack(QStringLiteral("gpsbabel-nmea.gpx")), TemporaryGpxPath());

    GpsStore store;
    const QString input = CorpusTrack(QStringLiteral("gpsbabel-nmea.nmea"));
    const QStringList parts = source.split(u' ');
    const SourceImport imported = parts[0] == u"receiver"
        ? DownloadFromReceiver(store, parts[1], parts[2], parts[3] == u"tracks" ? LogType::Tracks : LogType::Waypoints, nullptr)
        : ImportTrackFile(store, input, source, nullptr);
    QStringList called = QString::fromUtf8(ReadAll(resources + QStringLiteral("/calls.txt"))).split(u'\n');
    called.removeLast();
    called.replaceInStrings(environment->UserData(), QStringLiteral("USERDATA"));
    called.replaceInStrings(input, QStringLiteral("IN"));
    QCOMPARE(called, arguments);
    QCOMPARE(imported.messageKey, message);
    QCOMPARE(imported.ok, answers);
    QCOMPARE(store.GetTrackCount(), answers ? 1 : 0);
    QVERIFY(!GetLocalizedString(message, QStringLiteral("GPS")).startsWith(QStringLiteral("Message")));
}

QTEST_GUILESS_MAIN(TrackSourcesTest)
#include "tst_TrackSources.moc"
