#include "ui/main/MainWindow.h"

#include "ui/main/AboutWindow.h"
#include "ui/main/AlbumSubWindow.h"
#include "ui/main/CommandIcons.h"
#include "ui/main/CommandTable.h"
#include "ui/common/FileChooser.h"
#include "ui/main/OptionsWindow.h"
#include "ui/main/WelcomeWindow.h"
#include "ui/album/AlbumWindow.h"
#include "ui/common/DialogPrompter.h"
#include "ui/common/InterfaceCalls.h"
#include "ui/common/TaskRunner.h"
#include "ui/Localize.h"
#include "app/Language.h"
#include "app/Paths.h"
#include "app/ProfileFile.h"
#include "app/RecentDocs.h"
#include "app/Settings.h"
#include "app/UpdateCheck.h"

#include <algorithm>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QToolBar>
#include <QUrl>
#include <QUrlQuery>

namespace {

// [Layout] DocumentTabs: "0" shows each album in a window of its own inside the frame; anything
// else, absent included, shows them as tabs, which is what most Linux desktops lead users to expect.
const QString LayoutSection = QStringLiteral("Layout");
const QString DocumentTabsKey = QStringLiteral("DocumentTabs");

} // namespace

MainWindow::MainWindow(QWidget *parent)
    : QMainWindow(parent), documents(new QMdiArea(this)), toolBar(new QToolBar(this)),
      chooser(std::make_unique<DialogFileChooser>()), calls(std::make_unique<InterfaceCalls>()),
      prompter(std::make_unique<DialogPrompter>(this, *calls)), opener(std::make_unique<TaskRunner>(this))
{
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(QStringLiteral("@frmMain"));
    setWindowIcon(CommandIcon(QStringLiteral("orvana")));
    setCentralWidget(documents);
    toolBar->setObjectName(QStringLiteral("MainToolBar"));
    toolBar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    toolBar->setMovable(false);
    addToolBar(toolBar);
    documents->setTabsClosable(true);
    documents->setTabsMovable(true);
    documents->setDocumentMode(true);
    ApplyDocumentMode();
    BuildCommands();
    BuildPluginMenus();
    LocalizeForm(this);
    resize(1024, 720);
    LoadRecentDocs();
    RebuildRecentDocsMenu();
    connect(documents, &QMdiArea::subWindowActivated, this, &MainWindow::EnableDocMenus);
    EnableDocMenus();
}

MainWindow::~MainWindow()
{
    // The document area deactivates its windows as it goes; the menus are past caring.
    disconnect(documents, nullptr, this, nullptr);
    // The recent list reaches the file only when the program closes normally.
    SaveRecentDocs();
}

void MainWindow::UseChooser(std::unique_ptr<FileChooser> replacement)
{
    chooser = std::move(replacement);
}

void MainWindow::UsePrompter(std::unique_ptr<Prompter> replacement)
{
    prompter = std::move(replacement);
}

int MainWindow::MDIChildren() const
{
    return static_cast<int>(documents->subWindowList().size());
}

AlbumWindow *MainWindow::ActiveAlbum() const
{
    const QMdiSubWindow *active = documents->activeSubWindow();
    return active ? qobject_cast<AlbumWindow *>(active->widget()) : nullptr;
}

bool MainWindow::HasActiveDoc() const
{
    return ActiveAlbum() != nullptr;
}

QAction *MainWindow::Command(const QString &name) const
{
    if (QAction *action = commands.value(name))
        return action;
    for (QAction *entry : recentEntries) {
        if (entry->objectName() == name)
            return entry;
    }
    return nullptr;
}

QMenu *MainWindow::MenuFor(const QString &name)
{
    if (QMenu *menu = menus.value(name))
        return menu;
    for (const MenuRow &row : MainMenus()) {
        if (name != QLatin1String(row.name))
            continue;
        const QString parentName = QLatin1String(row.parent);
        // A submenu takes its place in its parent where its first command comes in the table.
        QMenu *menu = parentName.isEmpty() ? menuBar()->addMenu(u'@' + name) : MenuFor(parentName)->addMenu(u'@' + name);
        menu->setObjectName(name);
        menus.insert(name, menu);
        return menu;
    }
    return nullptr;
}

void MainWindow::BuildCommands()
{
    // Every top-level menu in its fixed order, before any command fills it.
    for (const MenuRow &row : MainMenus()) {
        if (*row.parent == '\0')
            MenuFor(QLatin1String(row.name));
    }
    for (const CommandRow &row : MainCommands()) {
        const QString name = QLatin1String(row.name);
        QMenu *menu = MenuFor(QLatin1String(row.menu));
        if (row.separatorBefore && !menu->isEmpty())
            menu->addSeparator();
        QAction *action = menu->addAction(CommandIcon(QLatin1String(row.icon)), GetLocalizedString(name, QLatin1String(row.section)));
        action->setObjectName(name);
        action->setShortcut(QKeySequence(QLatin1String(row.shortcut), QKeySequence::PortableText));
        action->setVisible(row.route != Route::NotBuilt);
        commands.insert(name, action);
        if (row.toolBar)
            toolBar->addAction(action);
        switch (row.route) {
        case Route::Main:
            connect(action, &QAction::triggered, this, row.handler);
            break;
        case Route::Album:
            connect(action, &QAction::triggered, this, [this, name] {
                if (AlbumWindow *album = ActiveAlbum())
                    album->RunCommand(name);
            });
            break;
        case Route::NotBuilt:
            break;
        }
    }
}

void MainWindow::EnableDocMenus()
{
    AlbumWindow *album = ActiveAlbum();
    const bool windowed = documents->viewMode() == QMdiArea::SubWindowView && MDIChildren() > 0;
    for (const CommandRow &row : MainCommands()) {
        QAction *action = commands.value(QLatin1String(row.name));
        if (row.route == Route::Album) {
            const bool has = album && album->HasCommand(QLatin1String(row.name));
            action->setVisible(has);
            action->setEnabled(has);
            continue;
        }
        if (row.route == Route::NotBuilt)
            continue;
        action->setEnabled(row.availability == Availability::Always || (row.availability == Availability::WithAlbum && album)
                           || (row.availability == Availability::WithWindowedAlbums && windowed));
    }
    for (QAction *action : std::as_const(pluginActions))
        action->setEnabled(album && !album->IsWorking());
    // A menu with nothing to show is not shown either.
    for (QMenu *menu : std::as_const(menus)) {
        const QList<QAction *> entries = menu->actions();
        menu->menuAction()->setVisible(std::any_of(entries.begin(), entries.end(), [](const QAction *entry) {
            return !entry->isSeparator() && entry->isVisible();
        }));
    }
}

void MainWindow::ApplyDocumentMode()
{
    const bool tabs = ReadSetting(LayoutSection, DocumentTabsKey) != QLatin1String("0");
    documents->setViewMode(tabs ? QMdiArea::TabbedView : QMdiArea::SubWindowView);
}

void MainWindow::RebuildRecentDocsMenu()
{
    QMenu *menu = menus.value(QStringLiteral("mnuRecentDocs"));
    qDeleteAll(recentEntries);
    recentEntries.clear();
    QAction *before = menu->actions().value(0);
    const RecentDocList &recent = RecentDocs();
    // Newest first, numbered for the keyboard.
    for (int slot = recent.Count(), number = 1; slot >= 1; --slot, ++number) {
        const QString path = recent.At(slot);
        auto *entry = new QAction(QStringLiteral("&%1 %2").arg(number % 10).arg(QDir::toNativeSeparators(path)), menu);
        entry->setObjectName(QStringLiteral("mnuRecentDoc%1").arg(number));
        connect(entry, &QAction::triggered, this, [this, path] { OpenDoc(path, false); });
        menu->insertAction(before, entry);
        recentEntries << entry;
    }
    if (!recentEntries.isEmpty())
        recentEntries << menu->insertSeparator(before);
    commands.value(QStringLiteral("mnuClearRecentDocs"))->setEnabled(recent.Count() > 0);
    menu->menuAction()->setEnabled(recent.Count() > 0);
    if (welcome)
        welcome->ShowRecentDocs();
}

void MainWindow::mnuClearRecentDocs_Click()
{
    RecentDocs().Clear();
    SaveRecentDocs();
    RebuildRecentDocsMenu();
}

void MainWindow::mnuFileExit_Click()
{
    close();
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (!GpsLogSettled()) {
        event->ignore();
        return;
    }
    // Each album window saves its album as it closes, and may refuse: one with work running
    // refuses until its work has stopped at the item in hand, then closes itself.
    documents->closeAllSubWindows();
    const QList<AlbumWindow *> albums = AlbumWindows();
    // An album still reading its list before it shows stops reading, and goes unsaved.
    const bool reading = unshown && !unshown->CloseAlbum();
    quitWhenWorkStops = reading || std::any_of(albums.begin(), albums.end(), [](const AlbumWindow *album) { return album->IsWorking(); });
    if (MDIChildren() > 0 || reading || opener->Running())
        event->ignore();
    else
        event->accept();
}

void MainWindow::AlbumWindowGone()
{
    const QList<AlbumWindow *> albums = AlbumWindows();
    if (quitWhenWorkStops && std::none_of(albums.begin(), albums.end(), [](const AlbumWindow *album) { return album->IsWorking(); })) {
        quitWhenWorkStops = false;
        close();
    }
}

void MainWindow::mnuWindowCascade_Click()
{
    documents->cascadeSubWindows();
}

void MainWindow::mnuWindowTileHorizontal_Click()
{
    documents->tileSubWindows();
}

void MainWindow::mnuWindowTileVertical_Click()
{
    // One column of full-width windows, each as tall as its share of the area.
    const QList<QMdiSubWindow *> windows = documents->subWindowList();
    const int height = documents->viewport()->height() / std::max<int>(1, static_cast<int>(windows.size()));
    int top = 0;
    for (QMdiSubWindow *window : windows) {
        window->showNormal();
        window->setGeometry(0, top, documents->viewport()->width(), height);
        top += height;
    }
}

void MainWindow::mnuWindowArrangeIcons_Click()
{
    // Minimised windows in a row along the bottom edge, left to right.
    int left = 0;
    for (QMdiSubWindow *window : documents->subWindowList()) {
        if (!window->isMinimized())
            continue;
        window->move(left, documents->viewport()->height() - window->height());
        left += window->width();
    }
}

void MainWindow::mnuOptions_Click()
{
    QStringList albums;
    for (const AlbumWindow *album : AlbumWindows())
        albums << album->Path();
    auto *options = new OptionsWindow(*chooser, albums, this);
    options->setAttribute(Qt::WA_DeleteOnClose);
    connect(options, &QDialog::accepted, this, [this] {
        ApplyDocumentMode();
        EnableDocMenus();
    });
    options->open();
}

void MainWindow::mnuHelpAbout_Click()
{
    auto *about = new AboutWindow(this);
    about->setAttribute(Qt::WA_DeleteOnClose);
    about->open();
}

void MainWindow::mnuHelpContents_Click()
{
    QString guide = ResourcesFolder() + u'/' + CurrentLanguage() + QStringLiteral("/guide/index.html");
    if (!QFileInfo::exists(guide))
        guide = ResourcesFolder() + QStringLiteral("/English/guide/index.html");
    QDesktopServices::openUrl(QUrl::fromLocalFile(guide));
}

void MainWindow::mnuInfoOnWeb_Click()
{
    // The maker's home page, told the language so it answers in it.
    QUrl page(ProfileFile::ReadString(ResourcesFolder() + QStringLiteral("/Services.ini"), QStringLiteral("Maker"), QStringLiteral("Home")));
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("lang"), CurrentLanguage());
    page.setQuery(query);
    QDesktopServices::openUrl(page);
}

// The page opens in the user's browser, which reports nothing back: the check counts as made
// once the page is handed to it.
void MainWindow::mnuVersionUpdater_Click()
{
    if (!OpenUpdatePage())
        prompter->Inform(GetLocalizedString(QStringLiteral("mnuVersionUpdater"), QStringLiteral("Menu")),
                         GetLocalizedString(QStringLiteral("MessageNoUpdatePage"), QStringLiteral("Menu")));
}

bool OpenUpdatePage()
{
    const QString page = UpdatePage();
    if (page.isEmpty())
        return false;
    QDesktopServices::openUrl(QUrl(UpdatePageAddress(page, CurrentUpdateFacts())));
    RecordUpdateCheck();
    return true;
}

void MainWindow::ShowWelcomeWindow()
{
    if (!welcome) {
        welcome = new WelcomeWindow(*this);
        welcome->setAttribute(Qt::WA_DeleteOnClose);
    }
    welcome->show();
    welcome->raise();
}
