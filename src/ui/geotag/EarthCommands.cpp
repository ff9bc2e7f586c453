#include "ui/geotag/EarthCommands.h"

#include "ui/album/AlbumWindow.h"
#include "ui/album/DesktopShell.h"
#include "ui/common/FileChooser.h"
#include "ui/geotag/LogSnapshot.h"
#include "gps/GpsLog.h"

#include "app/Language.h"
#include "app/ProgressSink.h"
#include "app/Prompter.h"
#include "app/Settings.h"
#include "gps/EarthOutput.h"
#include "gps/PhotoMatching.h"
#include "gps/TimeZones.h"
#include "library/AlbumDocument.h"

#include <QDir>
#include <QFileInfo>
#include <memory>

namespace {

const QString Gps = QStringLiteral("GPS");

QString GpsText(const char *key)
{
    return GetLocalizedString(QLatin1String(key), Gps);
}

// The file the user names for a KML or KMZ document, "" when they cancel. The album's
// Identification is the name offered, in the user's Earth Places folder.
QString ChooseTarget(AlbumWindow &album, EarthOutput output)
{
    const bool kml = output == EarthOutput::KmlFile;
    const QString identification = album.Document().List().GetDocumentProperty(QStringLiteral("Identification"));
    const QString suffix = kml ? QStringLiteral(".kml") : QStringLiteral(".kmz");
    const QString start = EarthPlacesFolder() + u'/' + (identification.isEmpty() ? QStringLiteral("album") : identification) + suffix;
    const QString filter = (kml ? QStringLiteral("KML (*.kml)") : QStringLiteral("KMZ (*.kmz)"));
    QString chosen = album.Chooser().ChooseNewFolder(&album, GpsText(kml ? "GenerateKML" : "GenerateKMZ"), filter, start);
    if (!chosen.isEmpty() && !chosen.endsWith(suffix, Qt::CaseInsensitive))
        chosen += suffix;
    return chosen;
}

// A viewer named in [GPS] EarthAppPath that is not there: once the user has been told, they may
// pick it, and the document written already is shown in it.
void LocateViewer(AlbumWindow &album, const QString &document)
{
    const QString viewer = ReadSetting(Gps, QStringLiteral("EarthAppPath"));
    if (viewer.isEmpty() || QFileInfo(viewer).isExecutable())
        return;
    const QString start = QFileInfo(viewer).absoluteDir().exists() ? QFileInfo(viewer).absolutePath() : QDir::homePath();
    const QString chosen = album.Chooser().ChooseFiles(&album, GpsText("EarthSetupTitle"), start).value(0);
    if (chosen.isEmpty())
        return;
    WriteSetting(Gps, QStringLiteral("EarthAppPath"), chosen);
    StartEarthViewer(document, album.WorkPrompter());
}

} // namespace

EarthRequest AlbumEarthRequest(EarthOutput output)
{
    return {output, false, SelectedTimeZoneHours()};
}

void RunEarthCommand(AlbumWindow &album, const EarthRequest &request)
{
    const bool toFile = request.output != EarthOutput::Viewer;
    const QString target = toFile ? ChooseTarget(album, request.output) : QString();
    if (toFile && target.isEmpty())
        return;
    const bool withTracks = SettingInteger(ReadSetting(Gps, QStringLiteral("TrackOnEarth"))) != 0;
    // Tracks are put in only when asked for, so the GPS log is read only then.
    auto log = std::make_shared<LogSnapshot>(withTracks ? album.Gps() : nullptr);
    const std::optional<QList<int>> ticked = album.Gps() ? album.Gps()->VisibleTracks() : std::nullopt;
    auto written = std::make_shared<EarthFile>();
    AlbumDocument *document = &album.Document();
    Prompter *prompter = &album.WorkPrompter();
    AlbumOnEarth what{request.onlySelected ? album.SelectedRecords() : album.Document().ActionSelectAllPhotos(), request.onlySelected, withTracks, {}, request.zoneHours};
    const EarthOutput output = request.output;
    const QString title = GetLocalizedString(QStringLiteral("ShowOnEarth"), QStringLiteral("Form"));
    album.StartWork(
        title,
        [log, ticked, written, document, prompter, what, output, target, title](ProgressSink &progress) mutable {
            if (what.withTracks) {
                if (const Result ready = log->Ready(*prompter); !ready) {
                    prompter->Error(title, ready.message);
                    return;
                }
                // The tracks ticked in the GPS window; without that window, every track it would
                // list for the match period.
                what.tracks = ticked ? *ticked : ListedTracks(log->Store(), DefaultMatchWindow(what.zoneHours));
            }
            switch (output) {
            case EarthOutput::Viewer:
                *written = ShowAlbumOnEarth(*document, what, log->Store(), *prompter, &progress);
                break;
            case EarthOutput::KmlFile:
                *written = GenerateKml(*document, what, log->Store(), target, *prompter, &progress);
                break;
            case EarthOutput::KmzFile:
                *written = GenerateKmz(*document, what, log->Store(), target, *prompter, &progress);
                break;
            }
        },
        [window = &album, log, written, output] {
            log->HandBack();
            if (!written->result) {
                if (!written->result.message.isEmpty() && written->photos > 0)
                    window->WorkPrompter().Error(GpsText(output == EarthOutput::KmzFile ? "GenerateKMZ" : "GenerateKML"),
                                                 written->result.message);
                return;
            }
            if (output == EarthOutput::Viewer)
                LocateViewer(*window, written->path);
            else
                DesktopShell::ShowFile(written->path, window);
        });
}
