#include "ui/main/MainWindow.h"

#include "ui/album/AlbumWindow.h"
#include "ui/publish/PublishWork.h"
#include "ui/publish/frmExport.h"
#include "publish/OrvAlbumExporter.h"
#include "app/Language.h"

#include <QDesktopServices>
#include <QPointer>
#include <QUrl>

namespace {

// The exporter of the album shown in `album`, with the options chosen and its selection.
std::shared_ptr<OrvAlbumExporter> ExporterFor(AlbumWindow &album, const AlbumExportArguments &arguments)
{
    auto exporter = std::make_shared<OrvAlbumExporter>();
    exporter->SetDocument(album.Document());
    exporter->SetArguments(arguments);
    exporter->SetSelection(album.SelectedRecords());
    return exporter;
}

void OpenOnDesktop(QWidget *window, const QUrl &url)
{
    RunOnInterfaceThread(window, [url] { QDesktopServices::openUrl(url); });
}

} // namespace

void MainWindow::mnuWebReady_Click()
{
    AlbumWindow *album = ActiveAlbum();
    if (!album)
        return;
    auto *dialog = new frmExport(*chooser, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->InitWindowForDocument(album->Document());
    connect(dialog, &frmExport::Continued, this, [this, window = QPointer<AlbumWindow>(album)](const AlbumExportArguments &arguments) {
        if (!window)
            return;
        auto exporter = ExporterFor(*window, arguments);
        StartPublishWork(this, GetLocalizedString(QStringLiteral("Exporting"), QStringLiteral("General")),
                         [this, exporter](ProgressSink &progress, Prompter &prompter) {
                             exporter->ExportAlbum(prompter, progress, [this](const QString &folder) {
                                 OpenOnDesktop(this, QUrl::fromLocalFile(folder));
                             });
                         });
    });
    dialog->open();
}

void MainWindow::mnuWebSync_Click()
{
    AlbumWindow *album = ActiveAlbum();
    if (!album)
        return;
    auto *dialog = new frmExport(*chooser, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->InitWindowForWebSync(album->Document());
    connect(dialog, &frmExport::Continued, this, [this, window = QPointer<AlbumWindow>(album)](const AlbumExportArguments &arguments) {
        if (!window)
            return;
        auto exporter = ExporterFor(*window, arguments);
        StartPublishWork(this, GetLocalizedString(QStringLiteral("WebSync"), QStringLiteral("PublishAction")),
                         [this, exporter](ProgressSink &progress, Prompter &prompter) {
                             exporter->WebSync(prompter, progress, [this](const QString &address) { OpenOnDesktop(this, QUrl(address)); });
                         });
    });
    dialog->open();
}

// The user's own Orvana server is an FTP server prepared for publishing: the same dialog.
void MainWindow::mnuOrvServerWebSync_Click()
{
    mnuWebSync_Click();
}

// The web album page is built with the album's own export options and shown in the browser.
void MainWindow::mnuLightboxMaker_Click()
{
    AlbumWindow *album = ActiveAlbum();
    if (!album)
        return;
    AlbumExportArguments arguments;
    LoadExportArguments(album->Document().List(), arguments);
    // An album that never chose its sizes gets the ones a page needs: the grid and the viewer.
    if (!arguments.NeedExportThumbnail && !arguments.NeedExportPreview && !arguments.NeedExportStandard && !arguments.NeedExportFull) {
        arguments.NeedExportPreview = arguments.NeedExportStandard = true;
        arguments.StandardWidth = arguments.StandardHeight = 640;
    }
    auto exporter = ExporterFor(*album, arguments);
    StartPublishWork(this, GetLocalizedString(QStringLiteral("Generating"), QStringLiteral("General")),
                     [this, exporter](ProgressSink &progress, Prompter &) {
                         const QString page = exporter->LightboxMaker(progress);
                         if (!page.isEmpty())
                             OpenOnDesktop(this, QUrl::fromLocalFile(page));
                     });
}
