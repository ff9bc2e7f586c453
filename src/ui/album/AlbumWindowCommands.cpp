// The album window's command table: the commands of the main window's menus that act on this
// album, by name.

#include "ui/album/AlbumWindow.h"

#include "ui/album/AlbumCommands.h"
#include "ui/album/AlbumModel.h"
#include "ui/album/AlbumRoles.h"
#include "ui/album/DesktopShell.h"
#include "ui/album/DetailView.h"
#include "ui/album/ExtraPanel.h"
#include "ui/common/DialogPrompter.h"
#include "ui/album/ThumbnailCache.h"
#include "ui/geotag/EarthCommands.h"
#include "ui/geotag/TimeCorrectorDialog.h"
#include "ui/geotag/TimeDifferenceDialog.h"
#include "ui/album/ThumbnailView.h"

#include "app/Language.h"
#include "app/Plugins.h"
#include "app/Settings.h"
#include "ui/slideshow/SlideShowWindow.h"
#include "app/ProgressSink.h"

#include <QDir>
#include <QIcon>
#include <QScreen>
#include <QSet>
#include <QLineEdit>
#include <QMenu>
#include <QStackedWidget>

#include <algorithm>

namespace {

QString MenuText(const QString &name)
{
    return GetLocalizedString(name, QStringLiteral("Menu"));
}

// Commands after which photo files hold other pixels than before.
bool RewritesPictures(const QString &name)
{
    static const QStringList rewriting = {
        QStringLiteral("mnuRotateLeft"),   QStringLiteral("mnuRotateRight"), QStringLiteral("mnuCropImage"),
        QStringLiteral("mnuAdjustImage"),  QStringLiteral("mnuEnhanceImage"), QStringLiteral("mnuBWEffect"),
        QStringLiteral("mnuSepiaEffect"),  QStringLiteral("mnuRevertOriginal"), QStringLiteral("mnuCheckModified"),
        QStringLiteral("mnuEditPaste"),
    };
    return rewriting.contains(name);
}

bool Arranges(const QString &name)
{
    return name.startsWith(QLatin1String("mnuBy"));
}

} // namespace

void AlbumWindow::BuildCommands()
{
    for (const QString &name : AlbumCommands::Names())
        table.push_back({name, AlbumCommands::IsLong(name), [this, name] { RunLibraryCommand(name); }});

    const auto selectAll = [this] { SelectRows([](int) { return true; }); };
    const auto inverse = [this] {
        const QList<int> selected = grid->SelectedRecords();
        SelectRows([&selected](int row) { return !selected.contains(row + 1); });
    };
    const auto selectStars = [this] { SelectRows([this](int row) { return rows->index(row, 0).data(StarRole).toBool(); }); };
    const auto selectHighlights = [this] {
        SelectRows([this](int row) { return rows->index(row, 0).data(HighlightRole).toBool(); });
    };
    const auto showPhotoFile = [this] {
        if (const QString path = CurrentPhotoPath(); !path.isEmpty())
            DesktopShell::ShowFile(path, this);
    };
    const auto showNonPhotoFiles = [this] {
        if (QDir(commands->NonPhotoFolder()).exists())
            DesktopShell::OpenFolder(commands->NonPhotoFolder());
        else
            prompter->Inform(GetLocalizedString(QStringLiteral("Non-PhotoFiles"), QStringLiteral("OrvDocument")),
                             GetLocalizedString(QStringLiteral("MessageNon-PhotoFiles"), QStringLiteral("OrvDocument")));
    };
    const auto openWithShell = [this] {
        if (const QString path = CurrentPhotoPath(); !path.isEmpty())
            DesktopShell::OpenWithDefault(path);
    };
    // The selected photos when several are, else the whole album; only the starred ones with
    // [SlideShow] OnlyStar.
    const auto slideShow = [this] {
        const bool onlyStar = SettingInteger(ReadSetting(QStringLiteral("SlideShow"), QStringLiteral("OnlyStar"))) != 0;
        const QList<int> selectedList = grid->SelectedRecords();
        const QSet<int> selected(selectedList.begin(), selectedList.end());
        QList<SlideShowWindow::Slide> slides;
        for (int row = 0; row < rows->rowCount(); ++row) {
            const QModelIndex index = rows->index(row, 0);
            if ((selected.size() > 1 && !selected.contains(row + 1)) || (onlyStar && !index.data(StarRole).toBool()))
                continue;
            if (const QString path = index.data(PhotoPathRole).toString(); !path.isEmpty())
                slides.append({path, index.data(DescriptionRole).toString()});
        }
        if (slides.isEmpty())
            return;
        auto *show = new SlideShowWindow(std::move(slides), SlideShowWindow::ReadOptions(), this);
        show->setWindowTitle(MenuText(QStringLiteral("mnuSlideShow")));
        // The whole screen even where no window manager answers the full-screen request.
        show->setGeometry(window()->screen()->geometry());
        show->showFullScreen();
    };
    const auto setWallpaper = [this] {
        if (const QString path = CurrentPhotoPath(); !path.isEmpty())
            DesktopShell::SetWallpaper(path, this, [this] {
                prompter->Error(MenuText(QStringLiteral("mnuSetAsWallpaper")),
                                GetLocalizedString(QStringLiteral("MessageNoWallpaperPortal"), QStringLiteral("OrvDocument")));
            });
    };
    const auto chooseProgram = [this] {
        if (const QString path = CurrentPhotoPath(); !path.isEmpty())
            DesktopShell::OpenWithChosen(path, this);
    };
    // The grid and the detail view take turns in the same place.
    const auto switchView = [this] {
        if (views->currentWidget() == grid)
            ShowDetail(grid->currentIndex().isValid() ? grid->currentIndex().row() : 0);
        else
            ShowGrid();
    };
    const auto showExtra = [this] { panel->setVisible(!panel->isVisible()); };
    const auto highlightNoted = [this] { ShowHighlights(commands->NotedPhotos()); };
    // The search field finds keywords as well as notes and names: this command takes the user
    // there, with what was typed last ready to be replaced.
    const auto findByKeyword = [this] {
        search->setFocus(Qt::ShortcutFocusReason);
        search->selectAll();
    };

    // The time dialogs shift the capture times of the photos chosen when they opened: the one in
    // the detail view, else the grid's selection.
    const auto chosen = [this] {
        const CommandTarget target = Target();
        return target.detail ? QList<int>{target.current} : target.selected;
    };
    const auto timeDifference = [this, chosen] {
        auto *dialog = new TimeDifferenceDialog(this);
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        dialog->SetDocument(*document, chosen());
        dialog->open();
    };
    const auto timeCorrector = [this, chosen] {
        auto *dialog = new TimeCorrectorDialog(this);
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        dialog->SetDocument(*document, chosen(), Target().current);
        dialog->open();
    };
    const auto earth = [this](EarthOutput output) { return [this, output] { RunEarthCommand(*this, AlbumEarthRequest(output)); }; };
    connect(panel, &OrvExtraPanel::ShowOnEarthClicked, this, [this] { RunCommand(QStringLiteral("mnuShowOnEarth")); });

    const std::vector<Command> own = {
        {QStringLiteral("mnuSelectAll"), false, selectAll},
        {QStringLiteral("mnuInverse"), false, inverse},
        {QStringLiteral("mnuSelectStar"), false, selectStars},
        {QStringLiteral("mnuSelectStar1"), false, selectStars},
        {QStringLiteral("mnuSelectHighLight"), false, selectHighlights},
        {QStringLiteral("mnuSelectHighLight1"), false, selectHighlights},
        {QStringLiteral("mnuShowPhotoFiles"), false, showPhotoFile},
        {QStringLiteral("mnuShowNonPhotoFiles"), false, showNonPhotoFiles},
        {QStringLiteral("mnuOpenWithShell"), false, openWithShell},
        {QStringLiteral("mnuSetAsWallpaper"), false, setWallpaper},
        {QStringLiteral("mnuSlideShow"), false, slideShow},
        {QStringLiteral("mnuPrint"), false, [this] { PrintPhotos(); }},
        {QStringLiteral("mnuChooseProgram"), false, chooseProgram},
        {QStringLiteral("mnuThumbnailItem"), false, switchView},
        {QStringLiteral("mnuShowExtra"), false, showExtra},
        {QStringLiteral("mnuHighlightNotedPhotos"), false, highlightNoted},
        {QStringLiteral("mnuHighlightPhotosWithKeyword"), false, findByKeyword},
        {QStringLiteral("mnuAdjustImage"), false, [this] { AdjustCurrentPhoto(); }},
        {QStringLiteral("mnuCropImage"), false, [this] { CropCurrentPhoto(); }},
        {QStringLiteral("mnuFileImport"), true, [this] { ImportChosenFiles(); }},
        {QStringLiteral("mnuFolderImport"), true, [this] { ImportChosenFolder(); }},
        {QStringLiteral("mnuTimeDifferenceRetrieve"), false, timeDifference},
        {QStringLiteral("mnuTimeCorrector"), false, timeCorrector},
        {QStringLiteral("mnuShowOnEarth"), true, earth(EarthOutput::Viewer)},
        {QStringLiteral("mnuGenerateKML"), true, earth(EarthOutput::KmlFile)},
        {QStringLiteral("mnuGenerateKMZ"), true, earth(EarthOutput::KmzFile)},
        // The album's own actions for three of them, in the photo menu.
        {QStringLiteral("ActionTimeDifference"), false, timeDifference},
        {QStringLiteral("ActionTimeCorrector"), false, timeCorrector},
        {QStringLiteral("ActionShowOnEarth"), true, earth(EarthOutput::Viewer)},
    };
    table.insert(table.end(), own.begin(), own.end());
}

bool AlbumWindow::HasCommand(const QString &name) const
{
    return std::any_of(table.begin(), table.end(), [&name](const Command &command) { return command.name == name; });
}

bool AlbumWindow::RunCommand(const QString &name)
{
    const auto command =
        std::find_if(table.begin(), table.end(), [&name](const Command &entry) { return entry.name == name; });
    if (command == table.end() || IsWorking())
        return false;
    panel->Commit();
    SetDataListByUI();
    command->run();
    return true;
}

QList<int> AlbumWindow::SelectedRecords() const
{
    return grid->SelectedRecords();
}

int AlbumWindow::CurrentRecord() const
{
    return Target().current;
}

CommandTarget AlbumWindow::Target() const
{
    CommandTarget target;
    target.selected = grid->SelectedRecords();
    target.detail = views->currentWidget() == detail;
    target.current = target.detail ? detail->CurrentRow() + 1 : grid->CurrentRecord();
    return target;
}

void AlbumWindow::SelectRows(const std::function<bool(int row)> &wanted)
{
    QList<int> records;
    for (int row = 0; row < rows->rowCount(); ++row) {
        if (wanted(row))
            records << row + 1;
    }
    grid->SelectRecords(records);
}

void AlbumWindow::RunLibraryCommand(const QString &name)
{
    const CommandTarget target = Target();
    const int countBefore = rows->rowCount();
    if (!AlbumCommands::IsLong(name)) {
        NoProgress quiet;
        if (commands->Run(name, target, quiet))
            AfterLibraryCommand(name, target.current, countBefore);
        return;
    }
    // The views show what the work changed as it goes; what follows the whole run waits for it.
    StartWork(GetLocalizedString(QStringLiteral("Processing"), QStringLiteral("General")),
              [this, name, target](ProgressSink &progress) { commands->Run(name, target, progress); },
              [this, name, target, countBefore] { AfterLibraryCommand(name, target.current, countBefore); });
}

void AlbumWindow::AfterLibraryCommand(const QString &name, int current, int countBefore)
{
    if (RewritesPictures(name)) {
        thumbnails->Clear();
        detail->ForgetPictures();
    }
    const int count = rows->rowCount();
    if (count == 0) {
        ShowGrid();
        return;
    }
    if (Arranges(name)) {
        // The first photo of the new order is the current one; a selection by place would now
        // point at other photos.
        grid->clearSelection();
        grid->SetCurrentRecord(1);
    } else if (count != countBefore) {
        grid->SetCurrentRecord(std::clamp(current, 1, count));
    }
    if (views->currentWidget() == detail)
        detail->ShowRow(Arranges(name) ? 0 : std::clamp(current, 1, count) - 1);
}

void AlbumWindow::BuildPhotoMenu()
{
    photoMenu = new QMenu(this);
    const auto add = [this](const QString &name) {
        QAction *action = photoMenu->addAction(MenuText(name));
        action->setObjectName(name);
        connect(action, &QAction::triggered, this, [this, name] { RunCommand(name); });
    };
    for (const QString &name : {QStringLiteral("mnuOpenWithShell"), QStringLiteral("mnuChooseProgram"),
                                QStringLiteral("mnuShowPhotoFiles")})
        add(name);
    photoMenu->addSeparator();
    for (const QString &name : {QStringLiteral("mnuEditCopy"), QStringLiteral("mnuEditCut"), QStringLiteral("mnuEditPaste"),
                                QStringLiteral("mnuMoveToTrash")})
        add(name);
    photoMenu->addSeparator();
    for (const QString &name : {QStringLiteral("mnuRotateLeft"), QStringLiteral("mnuRotateRight"), QStringLiteral("mnuCropImage"),
                                QStringLiteral("mnuAdjustImage"), QStringLiteral("mnuEnhanceImage"), QStringLiteral("mnuBWEffect"),
                                QStringLiteral("mnuSepiaEffect"), QStringLiteral("mnuRevertOriginal")})
        add(name);
    photoMenu->addSeparator();
    QAction *star = photoMenu->addAction(GetLocalizedString(QStringLiteral("Star"), QStringLiteral("InfoList")));
    star->setCheckable(true);
    connect(star, &QAction::triggered, this,
            [this](bool on) { RunCommand(on ? QStringLiteral("mnuStarOn") : QStringLiteral("mnuStarOff")); });
    // The menu's own twins of the main menus' commands ("1"): the same work, their own captions.
    for (const QString &name : {QStringLiteral("mnuSetNotesForMultiselection"), QStringLiteral("mnuKeywordsCopy1"),
                                QStringLiteral("mnuKeywordsPaste1")})
        add(name);
    photoMenu->addSeparator();
    for (const QString &name : {QStringLiteral("ActionTimeDifference"), QStringLiteral("ActionTimeCorrector"),
                                QStringLiteral("ActionShowOnEarth")})
        add(name);
    photoMenu->addSeparator();
    for (const QString &name : {QStringLiteral("mnuSelectAll"), QStringLiteral("mnuInverse"), QStringLiteral("mnuSelectStar1"),
                                QStringLiteral("mnuSelectHighLight1")})
        add(name);
    // Every plug-in found at start-up, whatever its type, runs on this album from here.
    if (!LoadedPlugins().empty()) {
        QMenu *plugins = photoMenu->addMenu(MenuText(QStringLiteral("mnuRunPlugin")));
        plugins->setObjectName(QStringLiteral("mnuRunPlugin"));
        for (const PluginInfo &plugin : LoadedPlugins()) {
            QAction *action = plugins->addAction(plugin.icon.isEmpty() ? QIcon() : QIcon(plugin.icon),
                                                 plugin.menu.isEmpty() ? plugin.name : plugin.menu);
            action->setObjectName(plugin.name + QStringLiteral("_docmenu_"));
            connect(action, &QAction::triggered, this, [this, name = plugin.name] {
                if (!IsWorking())
                    LaunchPlugin(name);
            });
        }
    }

    for (QWidget *view : {static_cast<QWidget *>(grid), static_cast<QWidget *>(detail)}) {
        view->setContextMenuPolicy(Qt::CustomContextMenu);
        connect(view, &QWidget::customContextMenuRequested, this, [this, view, star](const QPoint &at) {
            const CommandTarget target = Target();
            star->setChecked(target.current >= 1 && rows->index(target.current - 1, 0).data(StarRole).toBool());
            // Shown without a nested event loop; its actions come back through the table. The
            // grid reports its point in its viewport.
            const QWidget *origin = view == grid ? grid->viewport() : view;
            photoMenu->popup(origin->mapToGlobal(at));
        });
    }
}
