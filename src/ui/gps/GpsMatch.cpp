#include "ui/gps/GpsMatch.h"

#include "ui/album/AlbumWindow.h"
#include "ui/gps/GpsTexts.h"
#include "app/Prompter.h"
#include "gps/GpsStore.h"
#include "library/AlbumDocument.h"

#include <memory>

bool MatchAlbumWithTracks(AlbumWindow &album, MatchScope scope, const GpsStore &store, const MatchWindow &window)
{
    QList<int> photos;
    if (scope == MatchScope::SelectedPhotos) {
        photos = album.SelectedRecords();
    } else {
        for (int record = 1; record <= album.Document().RecordCount(); ++record)
            photos << record;
    }
    auto copy = std::make_shared<const GpsStore>(store);
    AlbumDocument *document = &album.Document();
    Prompter *prompter = &album.WorkPrompter();
    return album.StartWork(
        GpsUi::GpsGeneralText("Matching"),
        [=](ProgressSink &progress) { MatchPhotosWithTracks(*document, scope, photos, *copy, window, *prompter, &progress); }, {});
}

void RunMatchOption(AlbumWindow *album, MatchOption option, const GpsStore &store, const MatchWindow &window,
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
        MatchAlbumWithTracks(*album, scope, store, window);
        return;
    }
    const bool selected = scope == MatchScope::SelectedPhotos;
    prompter.Inform(GpsUi::GpsMessage(selected ? "MatchSelectedPhotosWithAllTracks" : "MatchAllPhotosWithAllTracks"),
                    GpsUi::GpsMessage(selected ? "MessageNoSelectedPhotosOrTrackToMatch" : "MessageNoPhotosOrTrackToMatch"));
}
