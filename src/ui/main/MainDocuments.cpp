// The main window's commands on album documents: open, new, convert, save and close.
#include "ui/main/MainWindow.h"

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
#include "library/PhotoRecord.h"

#include <QDir>
#include <QFileInfo>
#include <QMdiArea>
#include <algorithm>

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
    const std::function<void(AlbumWindow *)> tell = [opened](AlbumWindow *album) {
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
    if (opener->Running() || unshown) {
        tell(nullptr);
        return;
    }
    auto prepared = std::make_shared<AlbumDocument::OpenResult>();
    auto listMade = std::make_shared<bool>(false);
    connect(opener.get(), &TaskRunner::Finished, this,
            [this, path, prepared, listMade, tell](bool) { StartOpenedAlbum(path, *prepared, *listMade, tell); },
            Qt::SingleShotConnection);
    opener->Start(GetLocalizedString(QStringLiteral("Processing"), QStringLiteral("General")),
                  [path, prepared, listMade](ProgressSink &progress) {
                      *listMade = OpeningMakesList(path);
                      *prepared = PrepareAlbumDocument(path, progress);
                  });
}

bool MainWindow::IsOpening() const
{
    if (opener->Running() || unshown)
        return true;
    const QList<AlbumWindow *> albums = AlbumWindows();
    return std::any_of(albums.begin(), albums.end(), [](const AlbumWindow *album) { return album->IsOpening(); });
}

// The window reads the album's list itself and shows with its first records: a big album's first
// screen does not wait for its last photo.
void MainWindow::StartOpenedAlbum(const QString &path, AlbumDocument::OpenResult &prepared, bool listMade,
                                  const std::function<void(AlbumWindow *)> &opened)
{
    if (!prepared.document) {
        FailToOpen();
        opened(nullptr);
        return;
    }
    auto *album = new AlbumWindow(std::move(prepared.document));
    album->SetGpsLog(&gpsLog);
    unshown = album;
    connect(album, &AlbumWindow::ReadyToShow, this, [this, album] { ShowAlbumWindow(album); });
    // A list that cannot be read is not shown as an empty album that the user might fill and
    // lose: the window goes, and nothing is written.
    connect(album, &AlbumWindow::OpeningFailed, this, [this](const QString &reason) { FailToOpen(reason); });
    connect(album, &AlbumWindow::OpeningEnded, this, [this, album, path, opened](bool complete) {
        auto *window = qobject_cast<QMdiSubWindow *>(album->parentWidget());
        if (!complete) {
            if (window) {
                window->close();
            } else {
                album->deleteLater();
                QMetaObject::invokeMethod(this, &MainWindow::AlbumWindowGone, Qt::QueuedConnection);
            }
            opened(nullptr);
            return;
        }
        AlbumOpened(path);
        opened(album);
    });
    album->Open(listMade);
}

void MainWindow::ShowAlbumWindow(AlbumWindow *album)
{
    unshown.clear();
    auto *window = new AlbumSubWindow(album);
    // Queued: the sub-window is still among the document area's while it is destroyed.
    connect(window, &QObject::destroyed, this, &MainWindow::AlbumWindowGone, Qt::QueuedConnection);
    documents->addSubWindow(window);
    window->show();
    documents->setActiveSubWindow(window);
    EnableDocMenus();
    if (welcome)
        welcome->close();
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

// Every open album by date taken, after one question; an album busy with long work is left as it
// is, as its own commands would be.
void MainWindow::mnuArrangeAllByTime_Click()
{
    bool asked = false;
    for (AlbumWindow *album : AlbumWindows()) {
        if (album->IsWorking())
            continue;
        if (!album->Document().ArrangePhotos(PhotoRecord::CaptureDate, true, !std::exchange(asked, true), prompter.get()))
            return;
    }
}

void MainWindow::ImportPhotosIntoAlbum(const QStringList &photos)
{
    const QString album = Clean(chooser->ChooseFolder(this, GetLocalizedString(QStringLiteral("mnuFileImport"), QStringLiteral("Menu")),
                                                      GetLibraryPath()));
    if (album.isEmpty())
        return;
    // Only an album takes them: a plain folder is never made one unasked.
    if (!FolderExists(AlbumFormat::StudioDataPath(album))) {
        FailToOpen();
        return;
    }
    OpenAlbum(album, [photos](AlbumWindow *opened) {
        if (opened)
            opened->ImportPaths(photos);
    });
}

void MainWindow::mnuCameraImport_Click()
{
    CameraImportToAlbum();
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
