// The commands of the GPS window: imports and exports, waypoint and track edits, receiver
// downloads, matching and the globe viewer.
#include "ui/gps/GpsWindow.h"

#include "ui/common/TaskRunner.h"
#include "ui/gps/GpsFileChooser.h"
#include "ui/gps/GpsLogFiles.h"
#include "ui/gps/GpsMatch.h"
#include "ui/gps/GpsTexts.h"
#include "ui/gps/ReceiverDialog.h"
#include "ui/gps/TrackDialog.h"
#include "ui/gps/TrackListModel.h"
#include "ui/gps/WaypointDialog.h"
#include "app/Prompter.h"
#include "gps/EarthOutput.h"
#include "gps/GpsLog.h"
#include "gps/GpxWriter.h"

#include <QButtonGroup>
#include <QDateEdit>
#include <QDateTime>
#include <memory>

namespace {

// The dialogs are shown without a loop of their own and go when closed.
template <typename Dialog>
void OpenDialog(Dialog *dialog)
{
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

} // namespace

void GpsWindow::DoImportTracksFromGPX()
{
    ImportChosen(false);
}

void GpsWindow::ImportChosen(bool waypointsWanted)
{
    const GpsFileChooser::Chosen chosen = chooser->ChooseLog(this);
    if (!chosen.path.isEmpty())
        ImportGPXFile(chosen.path, chosen.type, waypointsWanted);
}

bool GpsWindow::ImportGPXFile(const QString &path, const QString &type, bool waypointsWanted)
{
    auto imported = std::make_shared<SourceImport>();
    const bool started = GpsLogFiles::Change(
        *runner, log, GpsUi::GpsGeneralText("Importing"),
        [imported, path, type](GpsStore &store, ProgressSink &progress) { *imported = ImportTrackFile(store, path, type, &progress); },
        [this, imported, waypointsWanted] {
            if (!imported->report.cancelled) {
                const QString title = GpsUi::GpsMessage("ImportGPX");
                if (imported->ok)
                    prompter->Inform(title, GpsUi::GpsMessage(imported->messageKey));
                else
                    prompter->Error(title, GpsUi::GpsMessage(waypointsWanted ? QStringLiteral("MessageFailToImportWaypointFromGPX") : imported->messageKey));
            }
            WorkEnded();
        });
    if (started)
        SetEditable(false);
    return started;
}

void GpsWindow::ExportTracks()
{
    const QString path = chooser->ChooseGpx(this, QStringLiteral("Tracks.gpx"));
    if (path.isEmpty())
        return;
    QList<Track> listed;
    for (int row = 0; row < tracks->rowCount(); ++row)
        listed << log.Store().TrackAt(tracks->TrackAt(row));
    // Every point of every track is read and written: work for the worker.
    auto written = std::make_shared<Result>();
    Prompter *asking = prompter.get();
    if (!runner->Start(GpsUi::GpsGeneralText("Exporting"), [written, listed, path, asking](ProgressSink &) {
            *written = ExportTracksToGpx(listed, path, QDateTime::currentDateTimeUtc(), asking);
        }))
        return;
    SetEditable(false);
    GpsLogFiles::WhenFinished(*runner, [this, written] {
        if (!*written)
            prompter->Error(GpsUi::GpsMessage("ExportGPX"), GpsUi::GpsMessage("MessageFailToExportTrackToGPX"));
        WorkEnded();
    });
}

void GpsWindow::ExportWaypoints()
{
    const QString path = chooser->ChooseGpx(this, QStringLiteral("Waypoints.gpx"));
    if (path.isEmpty())
        return;
    QList<Waypoint> all;
    for (int n = 0; n < log.Store().WaypointCount(); ++n)
        all << log.Store().WaypointAt(n);
    if (!ExportWaypointsToGpx(all, path))
        prompter->Error(GpsUi::GpsMessage("ExportGPX"), GpsUi::GpsMessage("MessageFailToExportWaypointToGPX"));
}

void GpsWindow::DoAddWaypoint()
{
    OpenDialog(new WaypointDialog(log, Waypoint{}, this));
}

void GpsWindow::AddNewWaypoint(const Waypoint &waypoint)
{
    log.Change([&](GpsStore &store) { store.AddNewWaypoint(waypoint); });
}

void GpsWindow::ModifyWaypoint()
{
    if (const int waypoint = SelectedWaypoint(); waypoint >= 0)
        OpenDialog(new WaypointDialog(log, waypoint, this));
}

void GpsWindow::RemoveWaypoint()
{
    const int waypoint = SelectedWaypoint();
    if (waypoint >= 0)
        log.Change([&](GpsStore &store) { store.RemoveWaypoint(waypoint, prompter.get()); });
}

void GpsWindow::ModifyTrack()
{
    if (const int track = SelectedTrack(); track >= 0)
        OpenDialog(new TrackDialog(log, track, Period().zoneHours, [this](int renamed, const QString &name) { RenameTrack(renamed, name); }, this));
}

void GpsWindow::RenameTrack(int track, const QString &name)
{
    // The track's point file is rewritten with its new name.
    auto renamed = std::make_shared<Result>();
    Prompter *asking = prompter.get();
    const bool started = GpsLogFiles::Change(
        *runner, log, GpsUi::GpsGeneralText("Processing"),
        [renamed, track, name, asking](GpsStore &store, ProgressSink &) { *renamed = store.ModifyTrackName(track, name, asking); },
        [this, renamed] {
            if (!*renamed)
                prompter->Error(GpsUi::GpsFormText("ModifyTrack"), renamed->message);
            WorkEnded();
        });
    if (started)
        SetEditable(false);
}

void GpsWindow::RemoveTrack()
{
    // Deleting the point file is quick; the question comes first.
    if (const int track = SelectedTrack(); track >= 0)
        log.Change([&](GpsStore &store) { store.RemoveTrack(track, prompter.get()); });
}

void GpsWindow::DoDownloadTracksFromGPS()
{
    DownloadFromGPS(LogType::Tracks);
}

void GpsWindow::DoDownloadWaypointsFromGPS()
{
    DownloadFromGPS(LogType::Waypoints);
}

void GpsWindow::DownloadFromGPS(LogType logType)
{
    OpenDialog(new ReceiverDialog(logType, [this](LogType downloaded) { ImportDownload(downloaded); }, this));
}

void GpsWindow::ImportDownload(LogType logType)
{
    auto imported = std::make_shared<SourceImport>();
    const bool started = GpsLogFiles::Change(
        *runner, log, GpsUi::GpsGeneralText("Importing"),
        [imported, logType](GpsStore &store, ProgressSink &progress) { *imported = ImportReceiverDownload(store, logType, &progress); },
        [this, imported] {
            if (!imported->report.cancelled) {
                const QString title = GpsUi::GpsMessage("ImportGPS");
                if (imported->ok)
                    prompter->Inform(title, GpsUi::GpsMessage(imported->messageKey));
                else
                    prompter->Error(title, GpsUi::GpsMessage(imported->messageKey));
            }
            WorkEnded();
        });
    if (started)
        SetEditable(false);
}

void GpsWindow::DoMatchPhotosWithTracks()
{
    const MatchWindow whole = DefaultMatchWindow(Period().zoneHours);
    {
        const QSignalBlocker quietBegin(begin);
        const QSignalBlocker quietEnd(end);
        begin->setDate(whole.begin);
        end->setDate(whole.end);
    }
    listedBegin = whole.begin;
    listedEnd = whole.end;
    RefreshTracks();
    Match();
}

void GpsWindow::Match()
{
    const int waypoint = SelectedWaypoint();
    const std::optional<Waypoint> chosen = waypoint >= 0 ? std::optional(log.Store().WaypointAt(waypoint)) : std::nullopt;
    RunMatchOption(activeAlbum ? activeAlbum() : nullptr, static_cast<MatchOption>(matchOptions->checkedId()), Period(), chosen,
                   *prompter);
}

void GpsWindow::ShowOnEarth()
{
    // The ticked tracks and every waypoint, each in its document; the tracks' points are read
    // from their files on the worker.
    auto store = std::make_shared<const GpsStore>(log.Copy());
    const QList<int> shown = GetVisibleTracks();
    auto written = std::make_shared<QList<EarthFile>>();
    Prompter *asking = prompter.get();
    if (!runner->Start(GpsUi::GpsGeneralText("Generating"), [store, shown, written, asking](ProgressSink &) {
            if (!shown.isEmpty())
                *written << WriteTracksForEarth(*store, shown, *asking);
            if (store->WaypointCount() > 0)
                *written << WriteWaypointsForEarth(*store);
        }))
        return;
    SetEditable(false);
    GpsLogFiles::WhenFinished(*runner, [this, written] {
        for (const EarthFile &file : *written) {
            if (!file.result)
                prompter->Error(GpsUi::GpsFormText("ButtonShowOnEarth"), file.result.message);
            else if (!StartEarthViewer(file.path, *prompter))
                break;
        }
        WorkEnded();
    });
}
