#include "ui/geotag/TrackMatchRun.h"

#include "ui/album/AlbumWindow.h"
#include "ui/geotag/LogSnapshot.h"

#include "app/Language.h"
#include "app/ProgressSink.h"
#include "app/Prompter.h"

#include <memory>

bool RunTrackMatch(AlbumWindow &album, MatchScope scope, const QList<int> &photos, const MatchWindow &window)
{
    auto log = std::make_shared<LogSnapshot>(album.Gps());
    AlbumDocument *document = &album.Document();
    Prompter *prompter = &album.WorkPrompter();
    const QString title = GetLocalizedString(QStringLiteral("Matching"), QStringLiteral("General"));
    return album.StartWork(
        title,
        [log, document, prompter, scope, photos, window, title](ProgressSink &progress) {
            if (const Result ready = log->Ready(*prompter); !ready) {
                prompter->Error(title, ready.message);
                return;
            }
            MatchPhotosWithTracks(*document, scope, photos, log->Store(), window, *prompter, &progress);
        },
        [log] { log->HandBack(); });
}
