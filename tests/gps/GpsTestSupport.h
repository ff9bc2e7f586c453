#pragma once

#include "library/AlbumDocument.h"
#include "gps/GpsStore.h"
#include "app/Prompter.h"
#include "TestEnvironment.h"

#include <QMap>
#include <QStringList>
#include <memory>

// A machine of the next test function's own, with its user-data folder made. The old one goes
// first: each restores the environment it replaced.
void RenewEnvironment(std::unique_ptr<ScopedTestEnvironment> &environment);

// The shared corpus of real track logs beside the checkout.
QString CorpusTrack(const QString &name);

// The reference counts of tracks-summary.txt for one file: read directly (GPX) or after
// GPSBabel's conversion with the given input format.
struct TrackSummary {
    int tracks = -1;
    int points = -1;
    int waypoints = -1;
    QString first;   // first and last point time in document order, "-" when none
    QString last;
    QList<double> box; // minLat, maxLat, minLon, maxLon; empty when none
};
// file name -> summary; format "direct" or a GPSBabel input format ("nmea", "ozi", ...).
QMap<QString, TrackSummary> TrackSummaries(const QString &format);

// Records questions and messages; answers questions as told.
class RecordingPrompter : public Prompter {
public:
    bool answer = true;
    QStringList asked;
    QStringList informed;
    QStringList errors;
    bool AskYesNo(const QString &, const QString &text) override { return asked << text, answer; }
    void Inform(const QString &, const QString &text) override { informed << text; }
    void Error(const QString &, const QString &text) override { errors << text; }
    std::optional<QString> AskText(const QString &, const QString &text, const QString &) override { return asked << text, std::nullopt; }
};

// A GPX document around the given body.
QByteArray Gpx(const QByteArray &body);
// Writes the bytes to a file of the test's own and returns its path.
QString WriteTemporary(const QString &folder, const QString &name, const QByteArray &bytes);

// Each track as "NAME|BEGINTIME|ENDTIME|BOUNDS" followed by its points "TIME,LAT,LON,ELE".
QStringList DescribeTracks(const GpsStore &store);
QStringList DescribeWaypoints(const GpsStore &store);

// An album folder of the given records (lists of key=value pairs), opened.
std::unique_ptr<AlbumDocument> MakeAlbum(const QString &folder, const QList<QStringList> &records);
