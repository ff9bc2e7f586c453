#include "ui/gps/GpsMatch.h"

#include "ui/album/AlbumWindow.h"
#include "ui/gps/GpsTexts.h"
#include "app/Prompter.h"
#include "ui/geotag/TrackMatchRun.h"
#include "library/AlbumDocument.h"


void RunMatchOption(AlbumWindow *album, MatchOption option, const MatchWindow &window,
                    const std::optional<Waypoint> &waypoint, Prompter &prompter)
{
    if (option == MatchOption::SelectedPhotosWithWaypoint) {
        if (album)
            MatchSelectedPhotosWithSelectedWaypoint(album->Document(), album->SelectedRecords(), waypoint, album->WorkPrompter());
        else
            prompter.Inform(GpsUi::GpsMessage("MatchSelectedPhotosWithSelectedWaypoint"), GpsUi::GpsMessage("MessageNoSelectedPhotosOrSelectedWaypointToMatch"));
        return;
    }
    const MatchScope scope = option == MatchOption::SelectedPhotosWithTracks ? MatchScope::SelectedPhotos : MatchScope::AllPhotos;
    if (album) {
        RunTrackMatch(*album, scope, scope == MatchScope::SelectedPhotos ? album->SelectedRecords() : album->Document().ActionSelectAllPhotos(),
                      window);
        return;
    }
    const bool selected = scope == MatchScope::SelectedPhotos;
    prompter.Inform(GpsUi::GpsMessage(selected ? "MatchSelectedPhotosWithAllTracks" : "MatchAllPhotosWithAllTracks"),
                    GpsUi::GpsMessage(selected ? "MessageNoSelectedPhotosOrTrackToMatch" : "MessageNoPhotosOrTrackToMatch"));
}
