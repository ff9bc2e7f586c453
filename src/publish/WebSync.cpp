#include "publish/OrvAlbumExporter.h"

#include "publish/PhotoRenderer.h"
#include "publish/ServerTest.h"
#include "publish/SharedService.h"
#include "library/AlbumFormat.h"
#include "net/OrvFTPEngine.h"
#include "app/Language.h"
#include "app/ProgressSink.h"
#include "app/Prompter.h"
#include "app/Settings.h"
#include "imaging/ParallelWork.h"
#include "imaging/Thumbnail.h"

#include <QFile>
#include <QSet>
#include <QThread>
#include <algorithm>

namespace {

const QString NeverModified = QStringLiteral("1900-01-01 00:00:00");

QString SyncText(const char *key, const char *section = "PublishAction")
{
    return GetLocalizedString(QLatin1String(key), QLatin1String(section));
}

QString ModifiedOf(const QString &modified)
{
    return modified.isEmpty() ? NeverModified : modified;
}

// "File" and "Modified" of every item of a list, for the comparison with the photos.
QSet<QString> PublishedVersions(const DataList &list)
{
    QSet<QString> versions;
    for (int index = 1; index <= list.ItemCount(); ++index)
        versions.insert(list.GetItemProperty(QStringLiteral("File"), index) + u'\n'
                        + ModifiedOf(list.GetItemProperty(QStringLiteral("Modified"), index)));
    return versions;
}

// The account and the FTP server a sync talks to.
struct SyncTarget {
    ServerAddress server;
    QString login;
    QString password;
    QString directory;
};

} // namespace

WebSyncReport OrvAlbumExporter::WebSync(Prompter &prompter, ProgressSink &progress,
                                        const std::function<void(const QString &)> &openAddress)
{
    WebSyncReport report;
    const QString title = SyncText("WebSync");
    progress.Begin(SyncText("Initializing", "General"), 0);

    // The list and the page are made now; the images only for the photos that go up, so the
    // local "album.data" of a sync holds the images of that sync alone.
    const ExportSource source = TakeSource(progress);
    const ExportFolderReport generated = Generate(source, progress, false);
    if (!generated.result) {
        report.failed = true;
        report.message = SyncText("MessageWebSyncFail") + u'\n' + generated.result.message;
        progress.End();
        prompter.Error(title, report.message);
        return report;
    }
    const QString localList = generated.folder + QStringLiteral("/album.plist");
    DataList exported;
    exported.Load(localList);
    const QString identification = exported.GetDocumentProperty(QStringLiteral("Identification"));
    const QString remoteAlbum = identification + QStringLiteral(".data");

    SyncTarget target;
    SharedService service(ReadSetting(QStringLiteral("System"), QStringLiteral("SharedServer")),
                          ReadSetting(QStringLiteral("System"), QStringLiteral("SharedServerLoginName")),
                          ReadSetting(QStringLiteral("System"), QStringLiteral("SharedServerPassword")));
    if (arguments.IsSharedServer) {
        const std::optional<SharedService::FtpAccount> account = service.GetFtpAccount(CurrentLanguage());
        if (!account) {
            report.failed = true;
            report.message = SyncText("MessageWebSyncFailToLogin");
            progress.End();
            prompter.Error(title, report.message);
            return report;
        }
        target = {{account->host, account->port}, account->login, account->password, account->directory};
        // The service's answer to the announcement carries nothing the sync needs.
        service.AnnounceSync(identification);
    } else {
        target = {ParseServerAddress(arguments.FTPServerAddress), arguments.FTPLoginName, arguments.FTPPassword,
                  arguments.FTPDirectory};
    }

    OrvFTPEngine engine;
    engine.SetCancelWhen([&progress] { return progress.Cancelled(); });
    const QString remoteCopy = AlbumFormat::StudioDataPath(source.albumPath) + QStringLiteral("/~album.plist");
    const auto step = [&](bool ok) {
        if (!ok && !progress.Cancelled())
            report.failed = true;
        return ok;
    };

    progress.Begin(SyncText("Connecting", "General"), 0);
    if (step(engine.ConnectToServer(target.server.host, target.server.port, target.login, target.password))) {
        progress.Begin(SyncText("Synchronizing", "General"), static_cast<int>(source.photos.size()));
        if (step((target.directory.isEmpty() || engine.ChangeDirectory(target.directory))
                 && engine.ChangeDirectory(QStringLiteral("data")))) {
            // A first publication finds no list on the server: every photo then goes up.
            QFile::remove(remoteCopy);
            DataList remote;
            if (engine.GetFile(remoteAlbum + QStringLiteral("/album.plist"), remoteCopy))
                remote.Load(remoteCopy);
            QFile::remove(remoteCopy);
            const QSet<QString> published = PublishedVersions(remote);

            // The folders are made every time: a refusal means most often that the folder is
            // there already, so only the album folder's existence is checked afterwards.
            const QStringList sizes = ChosenSizeFolders(arguments);
            engine.MakeDirectory(remoteAlbum);
            for (const QString &size : {ExportFolderNames::Thumbnail, ExportFolderNames::Preview,
                                        ExportFolderNames::Standard, ExportFolderNames::Full})
                engine.MakeDirectory(remoteAlbum + u'/' + size);
            step(engine.FileExists(remoteAlbum));

            // Photos up to date, and then each uploaded: what the list put up last may name.
            QSet<QString> onServer;
            QList<ExportPhoto> changed;
            for (const ExportPhoto &photo : source.photos) {
                const QString version = photo.file + u'\n' + ModifiedOf(photo.Value(QStringLiteral("Modified")));
                const bool upToDate = published.contains(version);
                if (upToDate)
                    onServer.insert(photo.file);
                if (!upToDate || arguments.ForceUpdateAll)
                    changed.append(photo);
            }

            const PhotoRenderer renderer(arguments, source.albumPath, generated.folder);
            const PhotosSharedOverCores shared;
            const qsizetype batch = std::max(2, QThread::idealThreadCount());
            for (qsizetype first = 0; first < changed.size() && !report.failed && !progress.Cancelled(); first += batch) {
                const qsizetype count = std::min(batch, changed.size() - first);
                QList<Result> rendered(count);
                RunInParallel(count, [&](qsizetype i) { rendered[i] = renderer.Render(changed[first + i]); });
                for (qsizetype i = 0; i < count && !report.failed && !progress.Cancelled(); ++i) {
                    const QString &file = changed[first + i].file;
                    // A photo that does not decode stays out of the list sent, and is tried again
                    // by the next sync.
                    if (!rendered[i]) {
                        report.problems << rendered[i].message;
                        continue;
                    }
                    progress.Begin(SyncText("Uploading", "General") + u' ' + file, static_cast<int>(changed.size()));
                    progress.Advance(static_cast<int>(first + i));
                    bool whole = true;
                    for (const QString &size : sizes) {
                        const QString remotePath = remoteAlbum + u'/' + size + u'/' + file;
                        whole = step(engine.PutFile(generated.folder + u'/' + size + u'/' + file, remotePath));
                        if (!whole)
                            break;
                        report.uploaded << remotePath;
                    }
                    if (whole && !progress.Cancelled()) {
                        onServer.insert(file);
                        ++report.photosUploaded;
                    }
                }
            }

            report.cancelled = progress.Cancelled();
            if (!report.failed) {
                // The list names only the photos whose images are all up (after a cancel, or
                // when a photo did not decode), so that the next sync uploads the others; the
                // list itself still goes up, even though the user asked to stop.
                engine.SetCancelWhen({});
                DataList uploadList = exported;
                for (int index = uploadList.ItemCount(); index >= 1; --index) {
                    if (!onServer.contains(uploadList.GetItemProperty(QStringLiteral("File"), index)))
                        uploadList.RemoveItem(index);
                }
                uploadList.SetDocumentProperty(QStringLiteral("ItemCount"), QString::number(uploadList.ItemCount()));
                const bool whole = uploadList.ItemCount() == exported.ItemCount();
                const QString listToSend = whole ? localList : remoteCopy;
                if (!whole)
                    uploadList.Save(remoteCopy);
                if (step(engine.PutFile(listToSend, remoteAlbum + QStringLiteral("/album.plist"))))
                    report.uploaded << remoteAlbum + QStringLiteral("/album.plist");
                QFile::remove(remoteCopy);
            }
        }
        engine.Disconnect();
    }
    report.cancelled = report.cancelled || progress.Cancelled();
    progress.End();

    if (arguments.IsSharedServer)
        service.ReportEnd(identification, report.cancelled, report.failed);

    // The variants ending in "1" say that some photos went up before the sync stopped.
    if (report.failed) {
        report.message = SyncText(report.photosUploaded > 0 ? "MessageWebSyncFail1" : "MessageWebSyncFail") + u'\n' + engine.LastError();
        prompter.Error(title, report.message);
    } else if (report.cancelled) {
        report.message = SyncText(report.photosUploaded > 0 ? "MessageWebSyncCancelled1" : "MessageWebSyncCancelled");
        prompter.Inform(title, report.message);
    } else {
        if (arguments.IsSharedServer) {
            report.albumAddress = service.ShowAlbum(identification);
            if (report.albumAddress.startsWith(QLatin1String("http://")) && openAddress)
                openAddress(report.albumAddress);
        }
        report.message = SyncText("MessageWebSyncDone");
        prompter.Inform(title, report.message);
    }
    return report;
}
