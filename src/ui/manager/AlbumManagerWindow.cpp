#include "ui/manager/AlbumManagerWindow.h"

#include "ui/album/DesktopShell.h"
#include "ui/manager/AlbumCell.h"
#include "ui/manager/BackgroundReads.h"
#include "ui/manager/CellGrid.h"
#include "ui/manager/LibraryTree.h"
#include "ui/manager/PreviewPane.h"

#include "app/Language.h"
#include "app/Paths.h"
#include "library/AlbumDiscovery.h"
#include "library/AlbumFormat.h"
#include "library/AlbumPreview.h"
#include "library/LibraryFolders.h"

#include <QDir>
#include <QFileInfo>
#include <QImageReader>
#include <QLabel>
#include <QMenu>
#include <QScrollArea>
#include <QSplitter>
#include <QToolBar>
#include <QVBoxLayout>

namespace {

QString ManagerText(const char *key, const char *section = "Form")
{
    return GetLocalizedString(QString::fromLatin1(key), QString::fromLatin1(section));
}

QString MenuText(const char *key)
{
    return ManagerText(key, "Menu").remove(u'&');
}

// A menu that shows without waiting and goes once closed.
QMenu *PopupMenu(QWidget *owner)
{
    auto *menu = new QMenu(owner);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    return menu;
}

QImage ReadThumbnail(const QString &file)
{
    QImageReader reader(file);
    reader.setAutoTransform(true);
    const QSize full = reader.size();
    if (full.isValid())
        reader.setScaledSize(full.scaled(OrvAlbumCell::PictureSize(), Qt::KeepAspectRatio));
    return reader.read();
}

QString CellInfo(const AlbumPreview &preview)
{
    const QString count = ManagerText("LabelNumber") + u' ' + GroupedNumber(preview.photos);
    return preview.lastCapture.isValid() ? count + QStringLiteral("  ") + preview.lastCapture.date().toString(QStringLiteral("yyyy-MM-dd"))
                                         : count;
}

} // namespace

struct AlbumManagerWindow::FolderContent {
    int generation = 0;
    QStringList albums;
    QList<QStringList> photos; // per album, its thumbnails
};

AlbumManagerWindow::AlbumManagerWindow(Prompter &asker, OpenAlbums &albums, std::function<void(const QString &)> opener,
                                       QWidget *parent)
    : QWidget(parent), prompter(asker), openAlbums(albums), open(std::move(opener)), reads(new BackgroundReads(this)),
      tree(new LibraryTree), grid(new CellGrid), preview(new PreviewPane), folderLabel(new QLabel)
{
    setObjectName(QStringLiteral("frmAlbumManager"));
    setWindowTitle(ManagerText("AlbumManager"));
    setWindowIcon(QIcon::fromTheme(QStringLiteral("folder-pictures")));

    auto *tools = new QToolBar;
    tools->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    tools->addAction(QIcon::fromTheme(QStringLiteral("folder-new")), ManagerText("NewAlbum"), this, &AlbumManagerWindow::ActionNewAlbum);
    tools->addAction(QIcon::fromTheme(QStringLiteral("folder-new")), ManagerText("NewFolder"), this, &AlbumManagerWindow::ActionNewFolder);
    tools->addAction(QIcon::fromTheme(QStringLiteral("view-refresh")), ManagerText("Refresh"), this, &AlbumManagerWindow::ActionRefresh);
    tools->addAction(QIcon::fromTheme(QStringLiteral("edit-find")), ManagerText("GlobalSearch"), this, &AlbumManagerWindow::GlobalSearchWanted);

    auto *area = new QScrollArea;
    area->setWidget(grid);
    area->setWidgetResizable(true);
    auto *middle = new QWidget;
    auto *middleLayout = new QVBoxLayout(middle);
    middleLayout->setContentsMargins(0, 0, 0, 0);
    middleLayout->addWidget(folderLabel);
    middleLayout->addWidget(area, 1);
    auto *splitter = new QSplitter(Qt::Horizontal);
    splitter->addWidget(tree);
    splitter->addWidget(middle);
    splitter->addWidget(preview);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({220, 640, 220});
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(tools);
    layout->addWidget(splitter, 1);

    tree->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(tree, &LibraryTree::FolderChosen, this, &AlbumManagerWindow::SetRootFolder);
    connect(tree, &QWidget::customContextMenuRequested, this, [this](const QPoint &at) {
        QMenu *menu = PopupMenu(this);
        menu->addAction(ManagerText("NewAlbum"), this, &AlbumManagerWindow::ActionNewAlbum);
        menu->addAction(ManagerText("NewFolder"), this, &AlbumManagerWindow::ActionNewFolder);
        menu->addSeparator();
        menu->addAction(MenuText("mnuAMRename"), this, &AlbumManagerWindow::ActionRename);
        menu->addAction(MenuText("mnuAMMoveToTrash"), this, &AlbumManagerWindow::ActionMoveToTrash);
        menu->addAction(MenuText("mnuAMConvert"), this, &AlbumManagerWindow::ActionConvertFolderToAlbum);
        menu->addSeparator();
        menu->addAction(MenuText("mnuAMRefresh"), this, &AlbumManagerWindow::ActionRefresh);
        menu->addAction(MenuText("mnuAMShowInShell"), this, &AlbumManagerWindow::ActionShowInShell);
        menu->popup(tree->viewport()->mapToGlobal(at));
    });
    connect(grid, &CellGrid::SelectionChanged, this, &AlbumManagerWindow::RefreshAlbumPreview);
    connect(grid, &CellGrid::FoldersDropped, this, &AlbumManagerWindow::ConvertDropped);

    tree->setCurrentItem(tree->LibraryRoot());
}

AlbumManagerWindow::~AlbumManagerWindow()
{
    reads->DropWaiting();
}

void AlbumManagerWindow::SetRootFolder(const QString &path)
{
    shown = QDir::cleanPath(path);
    folderLabel->setText(QDir::toNativeSeparators(shown));
    const int asked = ++generation;
    reads->DropWaiting();
    // Listing 200 albums and their thumbnails takes the disk's time: never the interface's.
    reads->Run<FolderContent>(
        [folder = shown, asked] {
            FolderContent content;
            content.generation = asked;
            content.albums = FindAlbums(folder);
            for (const QString &album : content.albums)
                content.photos << AlbumThumbnailFiles(album);
            return content;
        },
        this, [this](FolderContent content) { ShowContent(content); });
}

void AlbumManagerWindow::ShowContent(const FolderContent &content)
{
    if (content.generation != generation)
        return;
    const QList<OrvAlbumCell *> cells = grid->Reset(content.albums);
    for (qsizetype i = 0; i < cells.size(); ++i) {
        OrvAlbumCell *cell = cells[i];
        connect(cell, &OrvAlbumCell::ImageWanted, this, &AlbumManagerWindow::AskImage);
        connect(cell, &OrvAlbumCell::Activated, this, [this](OrvAlbumCell *chosen) { open(chosen->GetAlbumPath()); });
        connect(cell, &OrvAlbumCell::MenuWanted, this, &AlbumManagerWindow::ShowCellMenu);
        for (const QString &file : content.photos[i])
            cell->AddPhotoFile(file);
    }
    // The facts of each cell come after every first picture has been asked for.
    for (OrvAlbumCell *cell : cells) {
        reads->Run<AlbumPreview>(
            [album = cell->GetAlbumPath()] {
                AlbumPreview facts;
                ReadAlbumPreview(album, facts);
                return facts;
            },
            cell, [cell](AlbumPreview facts) { cell->SetAlbumInfo(CellInfo(facts)); });
    }
    // The album asked for, else the first: the preview shows at once.
    OrvAlbumCell *chosen = grid->Find(std::exchange(selectAfterLoad, QString()));
    if (!chosen && !cells.isEmpty())
        chosen = cells.front();
    if (chosen)
        grid->Select(chosen);
    emit Loaded();
}

void AlbumManagerWindow::AskImage(OrvAlbumCell *cell, const QString &file)
{
    reads->Run<QImage>([file] { return ReadThumbnail(file); }, cell, [cell, file](QImage image) { cell->SetImage(file, image); });
}

QString AlbumManagerWindow::SelectedAlbum() const
{
    const OrvAlbumCell *cell = grid->Selected();
    return cell ? cell->GetAlbumPath() : QString();
}

void AlbumManagerWindow::SelectAlbum(const QString &album)
{
    grid->Select(grid->Find(album));
}

QList<OrvAlbumCell *> AlbumManagerWindow::Cells() const
{
    return grid->Cells();
}

QString AlbumManagerWindow::PreviewText() const
{
    return preview->ShownText();
}

void AlbumManagerWindow::RefreshAlbumPreview()
{
    const QString album = SelectedAlbum();
    preview->Clear();
    if (album.isEmpty())
        return;
    reads->Run<AlbumPreview>(
        [album] {
            AlbumPreview facts;
            ReadAlbumPreview(album, facts);
            return facts;
        },
        this, [this, album](AlbumPreview facts) {
            if (SelectedAlbum() != album)
                return;
            preview->Show(facts);
            emit PreviewShown();
        });
}

void AlbumManagerWindow::ShowCellMenu(OrvAlbumCell *cell, const QPoint &at)
{
    grid->Select(cell);
    QMenu *menu = PopupMenu(this);
    menu->addAction(MenuText("mnuFileOpen"), this, &AlbumManagerWindow::ActionOpenAlbum);
    menu->addAction(MenuText("mnuAMRenameAlbum"), this, &AlbumManagerWindow::ActionRenameAlbum);
    menu->addAction(MenuText("mnuAMMoveAlbumToTrash"), this, &AlbumManagerWindow::ActionMoveAlbumToTrash);
    menu->addAction(MenuText("mnuAMShowInShell"), this, [this] { DesktopShell::ShowFile(SelectedAlbum(), this); });
    menu->popup(at);
}

void AlbumManagerWindow::ActionRefresh()
{
    selectAfterLoad = SelectedAlbum();
    tree->RefreshChosen();
    SetRootFolder(shown);
}

void AlbumManagerWindow::ActionShowInShell()
{
    if (!shown.isEmpty())
        DesktopShell::OpenFolder(shown);
}

void AlbumManagerWindow::ActionOpenAlbum()
{
    if (!SelectedAlbum().isEmpty())
        open(SelectedAlbum());
}

void AlbumManagerWindow::ActionNewAlbum()
{
    if (shown.isEmpty())
        return;
    if (const std::optional<QString> made = ::ActionNewAlbum(shown, prompter)) {
        selectAfterLoad = *made;
        tree->RefreshChosen();
        SetRootFolder(shown);
    }
}

void AlbumManagerWindow::ActionNewFolder()
{
    if (!shown.isEmpty() && ::ActionNewFolder(shown, prompter))
        tree->RefreshChosen();
}

// Renaming, removing or converting the shown folder changes its parent: the parent is shown
// again, with what became of the folder chosen.
void AlbumManagerWindow::AfterFolderChange(const QString &select)
{
    const QString parent = QFileInfo(shown).path();
    tree->ChooseFolder(parent);
    tree->RefreshChosen();
    if (!select.isEmpty() && !IsAlbum(select))
        tree->ChooseFolder(select);
    else {
        selectAfterLoad = select;
        SetRootFolder(parent);
    }
}

void AlbumManagerWindow::ActionConvertFolderToAlbum()
{
    if (shown.isEmpty())
        return;
    if (const std::optional<QString> album = ::ActionConvertFolderToAlbum(shown, prompter)) {
        // A converted folder album gets its data folder at once, so the library shows it now;
        // its photos come in when it is first opened.
        if (!FolderExists(AlbumFormat::StudioDataPath(*album)))
            FormatNewDoc(*album);
        AfterFolderChange(*album);
    }
}

void AlbumManagerWindow::ConvertDropped(const QStringList &folders)
{
    bool any = false;
    for (const QString &folder : folders) {
        if (const std::optional<QString> album = ::ActionConvertFolderToAlbum(folder, prompter)) {
            if (!FolderExists(AlbumFormat::StudioDataPath(*album)))
                FormatNewDoc(*album);
            selectAfterLoad = *album;
            any = true;
        }
    }
    if (any)
        SetRootFolder(shown);
}

void AlbumManagerWindow::ActionRename()
{
    if (shown.isEmpty() || shown == QDir::cleanPath(GetLibraryPath()))
        return;
    if (const std::optional<QString> renamed = ::ActionRename(shown, prompter, openAlbums))
        AfterFolderChange(*renamed);
}

void AlbumManagerWindow::ActionRenameAlbum()
{
    const QString album = SelectedAlbum();
    if (album.isEmpty())
        return;
    if (const std::optional<QString> renamed = ::ActionRenameAlbum(album, prompter, openAlbums)) {
        selectAfterLoad = *renamed;
        SetRootFolder(shown);
    }
}

void AlbumManagerWindow::ActionMoveToTrash()
{
    if (shown.isEmpty() || shown == QDir::cleanPath(GetLibraryPath()))
        return;
    if (::ActionMoveToTrash(shown, prompter, openAlbums))
        AfterFolderChange();
}

void AlbumManagerWindow::ActionMoveAlbumToTrash()
{
    const QString album = SelectedAlbum();
    if (!album.isEmpty() && ::ActionMoveAlbumToTrash(album, prompter, openAlbums)) {
        tree->RefreshChosen();
        SetRootFolder(shown);
    }
}
