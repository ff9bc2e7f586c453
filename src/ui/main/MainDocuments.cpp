// The main window's commands on album documents: open, new, convert, save and close.
#include "ui/main/MainWindow.h"

#include "ui/common/ForwardingPrompter.h"
#include "ui/common/TaskRunner.h"
#include "ui/import/CameraImportWindow.h"
#include "library/AlbumOpening.h"

#include "ui/main/AlbumSubWindow.h"
#include "ui/common/FileChooser.h"
#include "ui/main/WelcomeWindow.h"
#include "ui/album/AlbumWindow.h"
#include "app/Language.h"
#include "app/Paths.h"
#include "app/Prompter.h"
#include "app/RecentDocs.h"
#include "app/Settings.h"
#include "library/AlbumDocument.h"
#include "library/AlbumFormat.h"

#include <QDir>
#include <QFileInfo>
#include <QMdiArea>

namespace {

const QString DocumentSection = QStringLiteral("OrvDocument");

QString Clean(const QString &path)
{
    return path.isEmpty() ? path : QDir::cleanPath(path);
}

} // namespace

void MainWindow::FailToOpen(const QString &reason)
{
    QString text = GetLocalizedString(QStringLiteral("MessageFailToOpenAlbum"), QStringLiteral("OrvDocument"));
    if (!reason.isEmpty())
        text += QStringLiteral("\n\n") + reason;
    prompter->Error(GetLocalizedString(QStringLiteral("OpenTitle"), QStringLiteral("OrvDocument")), text);
}

QMdiSubWindow *MainWindow::FindAlbumWindow(const QString &path) const
{
    for (QMdiSubWindow *window : documents->subWindowList()) {
        const auto *album = qobject_cast<const AlbumWindow *>(window->widget());
        if (album && QDir::cleanPath(album->Path()) == path)
            return window;
    }
    return nullptr;
}

void MainWindow::OpenDoc(const QString &given, bool askForFolder)
{
    QString path = Clean(given);
    if (askForFolder) {
        path = Clean(chooser->ChooseFolder(this, GetLocalizedString(QStringLiteral("OpenFolderAsAlbum"), QStringLiteral("OrvDocument")), GetLibraryPath()));
        if (path.isEmpty())
            return;
    }
    if (path.isEmpty())
        return;
    // Only albums open here: a plain folder becomes one through "Open Folder as Album", never by
    // a recent entry, a command line or this picker writing into it unasked.
    if (!FolderExists(path) || !FolderExists(AlbumFormat::StudioDataPath(path))) {
        FailToOpen();
        return;
    }
    OpenAlbum(path);
}

void MainWindow::mnuFileOpenFolder_Click()
{
    const QString path = Clean(chooser->ChooseFolder(this, GetLocalizedString(QStringLiteral("OpenFolderAsAlbum"), QStringLiteral("OrvDocument")), GetLibraryPath()));
    if (!path.isEmpty())
        OpenAlbum(path); // the library's opening rules make a plain folder a folder album
}

void MainWindow::OpenAlbum(const QString &path, const std::function<void(AlbumWindow *)> &opened)
{
    const auto tell = [opened](AlbumWindow *album) {
        if (opened)
            opened(album);
    };
    if (QMdiSubWindow *open = FindAlbumWindow(path)) {
        documents->setActiveSubWindow(open);
        AlbumOpened(path);
        tell(qobject_cast<AlbumWindow *>(open->widget()));
        return;
    }
    // One album opens at a time; a second request while the first is read is dropped, as a
    // double click on a slow disk would otherwise open the album twice.
    if (opener->Running()) {
        tell(nullptr);
        return;
    }
    auto result = std::make_shared<AlbumDocument::OpenResult>();
    auto asking = std::make_shared<ForwardingPrompter>(*prompter, opener->Calls());
    connect(opener.get(), &TaskRunner::Finished, this, [this, path, result, tell](bool) { tell(ShowOpenedAlbum(path, *result)); },
            Qt::SingleShotConnection);
    opener->Start(GetLocalizedString(QStringLiteral("Processing"), QStringLiteral("General")),
                  [path, result, asking](ProgressSink &progress) { *result = OpenAlbumDocument(path, {}, *asking, progress); });
}

bool MainWindow::IsOpening() const
{
    return opener->Running();
}

AlbumWindow *MainWindow::ShowOpenedAlbum(const QString &path, AlbumDocument::OpenResult &opened)
{
    if (!opened.document) {
        FailToOpen();
        return nullptr;
    }
    // A list that cannot be read is not shown as an empty album that the user might fill
    // and lose: nothing opens and nothing is written.
    if (!opened.load) {
        FailToOpen(opened.load.message);
        return nullptr;
    }
    if (!opened.imported.Clean())
        ReportImport(opened.imported);
    auto *album = new AlbumWindow(std::move(opened.document));
    auto *window = new AlbumSubWindow(album);
    documents->addSubWindow(window);
    window->show();
    documents->setActiveSubWindow(window);
    AlbumOpened(path);
    return album;
}

QList<AlbumWindow *> MainWindow::AlbumWindows() const
{
    QList<AlbumWindow *> albums;
    for (QMdiSubWindow *window : documents->subWindowList()) {
        if (auto *album = qobject_cast<AlbumWindow *>(window->widget()))
            albums << album;
    }
    return albums;
}

void MainWindow::CameraImportToAlbum(const QString &device)
{
    ShowCameraImport(this, device, AlbumWindows(),
                     [this](const QString &path, const std::function<void(AlbumWindow *)> &opened) { OpenAlbum(path, opened); });
}

void MainWindow::mnuCameraImport_Click()
{
    CameraImportToAlbum();
}

// What opening brought in from the drop folder or found outside, and could not take in whole.
void MainWindow::ReportImport(const ImportReport &report)
{
    prompter->Inform(GetLocalizedString(QStringLiteral("OpenTitle"), QStringLiteral("OrvDocument")), report.ProblemLines().join(u'\n'));
}

void MainWindow::AlbumOpened(const QString &path)
{
    AddRecentDoc(path);
    RebuildRecentDocsMenu();
    const QString counter = QStringLiteral("OpenedAlbumsNumber");
    WriteSetting(QStringLiteral("System"), counter, QString::number(SettingInteger(ReadSetting(QStringLiteral("System"), counter)) + 1));
    EnableDocMenus();
    if (welcome)
        welcome->close();
}

void MainWindow::mnuFileOpen_Click()
{
    OpenDoc({}, true);
}

void MainWindow::NewDoc()
{
    const QString path = Clean(chooser->ChooseNewFolder(this, GetLocalizedString(QStringLiteral("CreateNewTitle"), DocumentSection),
                                                        GetLocalizedString(QStringLiteral("AlbumFolderFilter"), DocumentSection), GetLibraryPath()));
    if (path.isEmpty())
        return;
    if (QFileInfo::exists(path) || !CreateNewAlbum(path)) {
        prompter->Error(GetLocalizedString(QStringLiteral("CreateNewTitle"), DocumentSection),
                        GetLocalizedString(QStringLiteral("MessageFailToCreateAlbum"), DocumentSection));
        return;
    }
    OpenDoc(path, false);
}

void MainWindow::mnuFileNew_Click()
{
    NewDoc();
}

void MainWindow::ConvertDoc()
{
    const QString title = GetLocalizedString(QStringLiteral("ConvertFolderToAlbumTitle"), DocumentSection);
    const QString path = Clean(chooser->ChooseFolder(this, GetLocalizedString(QStringLiteral("SelectFolderToConvert"), DocumentSection), GetLibraryPath()));
    if (path.isEmpty())
        return;
    if (!prompter->AskYesNo(title, GetLocalizedString(QStringLiteral("MessageConvertFolderToAlbum1"), DocumentSection).arg(QDir::toNativeSeparators(path))))
        return;
    const ConvertResult result = ::ConvertDoc(path);
    switch (result.status) {
    case ConvertStatus::Converted:
        // A converted folder album has no data folder yet: opening by the library's rules makes
        // it and takes in the photos.
        OpenAlbum(result.albumPath);
        return;
    case ConvertStatus::AlreadyAlbum:
        prompter->Inform(title, GetLocalizedString(QStringLiteral("MessageAlreadyBeAlbum"), DocumentSection));
        return;
    case ConvertStatus::NonPhotoContained:
        prompter->Inform(title, GetLocalizedString(QStringLiteral("MessageNon-photoContained"), DocumentSection));
        return;
    case ConvertStatus::Missing:
    case ConvertStatus::TargetExists:
    case ConvertStatus::MoveFailed:
        prompter->Error(title, GetLocalizedString(QStringLiteral("MessageFailToCreateAlbum"), DocumentSection));
        return;
    }
}

void MainWindow::mnuFileConvert_Click()
{
    ConvertDoc();
}

void MainWindow::mnuFileSave_Click()
{
    AlbumWindow *album = ActiveAlbum();
    if (!album)
        return;
    // The album window saves its own way when it can (it also updates its caption).
    if (album->HasCommand(QStringLiteral("mnuFileSave"))) {
        album->RunCommand(QStringLiteral("mnuFileSave"));
        return;
    }
    if (const Result saved = album->Document().SaveDocumentToFile(); !saved)
        prompter->Error(GetLocalizedString(QStringLiteral("mnuFileSave"), QStringLiteral("Menu")), saved.message);
}

void MainWindow::mnuFileClose_Click()
{
    if (QMdiSubWindow *active = documents->activeSubWindow())
        active->close();
}
