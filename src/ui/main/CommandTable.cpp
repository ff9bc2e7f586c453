#include "ui/main/CommandTable.h"

#include "ui/main/MainWindow.h"

namespace {

constexpr auto Always = Availability::Always;
constexpr auto WithAlbum = Availability::WithAlbum;
constexpr auto Windowed = Availability::WithWindowedAlbums;
constexpr auto Main = Route::Main;
constexpr auto Album = Route::Album;
constexpr auto NotBuilt = Route::NotBuilt;

} // namespace

const std::vector<MenuRow> &MainMenus()
{
    static const std::vector<MenuRow> menus = {
        {"mnuFile", ""},    {"mnuRecentDocs", "mnuFile"}, {"mnuEdit", ""},   {"mnuSelect", ""},
        {"mnuView", ""},    {"mnuArrange", ""},           {"mnuImage", ""},  {"mnuGPS", ""},
        {"mnuPublish", ""}, {"mnuPrintExpress", ""},      {"mnuTools", ""},  {"mnuPlugins", ""},
        {"mnuWindow", ""},  {"mnuHelp", ""},
        // Filled by the plug-ins found at start-up, by their type.
        {"mnuImporterPlugin", "mnuPlugins"}, {"mnuEditorPlugin", "mnuPlugins"}, {"mnuExporterPlugin", "mnuPlugins"},
        {"mnuAlbumExporterPlugin", "mnuPlugins"}, {"mnuPhotoExporterPlugin", "mnuPlugins"},
    };
    return menus;
}

// The "...1" twins of some album commands belong to the album window's context menus, not here.
// Album commands stay hidden until the active album window reports them through HasCommand.
const std::vector<CommandRow> &MainCommands()
{
    static const std::vector<CommandRow> rows = {
        // name, section, menu, shortcut, icon, availability, route, handler, tool bar, separator
        {"mnuFileNew", "Menu", "mnuFile", "Ctrl+N", "document-new", Always, Main, &MainWindow::mnuFileNew_Click, true, false},
        {"mnuFileOpen", "Menu", "mnuFile", "Ctrl+O", "document-open", Always, Main, &MainWindow::mnuFileOpen_Click, true, false},
        {"mnuFileOpenFolder", "Menu", "mnuFile", "Ctrl+Shift+O", "folder-open", Always, Main, &MainWindow::mnuFileOpenFolder_Click, false, false},
        {"mnuFileConvert", "Menu", "mnuFile", "", "folder-new", Always, Main, &MainWindow::mnuFileConvert_Click, false, false},
        {"mnuClearRecentDocs", "Menu", "mnuRecentDocs", "", "edit-clear-history", Always, Main, &MainWindow::mnuClearRecentDocs_Click, false, true},
        {"mnuFileImport", "Menu", "mnuFile", "", "document-import", WithAlbum, Album, nullptr, false, true},
        {"mnuFolderImport", "Menu", "mnuFile", "", "", WithAlbum, Album, nullptr, false, false},
        {"mnuCameraImport", "Menu", "mnuFile", "", "camera-photo", Always, Main, &MainWindow::mnuCameraImport_Click, true, false},
        {"mnuFileSave", "Menu", "mnuFile", "Ctrl+S", "document-save", WithAlbum, Main, &MainWindow::mnuFileSave_Click, true, true},
        {"mnuFileClose", "Menu", "mnuFile", "Ctrl+W", "document-close", WithAlbum, Main, &MainWindow::mnuFileClose_Click, false, false},
        {"mnuPrint", "Menu", "mnuFile", "Ctrl+P", "document-print", WithAlbum, Album, nullptr, false, true},
        {"mnuFileExit", "Menu", "mnuFile", "Ctrl+Q", "application-exit", Always, Main, &MainWindow::mnuFileExit_Click, false, true},

        {"mnuEditCopy", "Menu", "mnuEdit", "Ctrl+C", "edit-copy", WithAlbum, Album, nullptr, false, false},
        {"mnuEditCut", "Menu", "mnuEdit", "Ctrl+X", "edit-cut", WithAlbum, Album, nullptr, false, false},
        {"mnuEditPaste", "Menu", "mnuEdit", "Ctrl+V", "edit-paste", WithAlbum, Album, nullptr, false, false},
        {"mnuMoveToTrash", "Menu", "mnuEdit", "Del", "edit-delete", WithAlbum, Album, nullptr, true, true},
        {"mnuSetNotesForMultiselection", "Menu", "mnuEdit", "F2", "document-edit", WithAlbum, Album, nullptr, false, true},
        {"mnuKeywordsCopy", "Menu", "mnuEdit", "", "", WithAlbum, Album, nullptr, false, false},
        {"mnuKeywordsPaste", "Menu", "mnuEdit", "", "", WithAlbum, Album, nullptr, false, false},
        {"mnuCheckModified", "Menu", "mnuEdit", "F5", "view-refresh", WithAlbum, Album, nullptr, false, true},
        {"mnuOpenWithShell", "Menu", "mnuEdit", "", "document-open", WithAlbum, Album, nullptr, false, true},
        {"mnuChooseProgram", "Menu", "mnuEdit", "", "", WithAlbum, Album, nullptr, false, false},
        {"mnuShowPhotoFiles", "Menu", "mnuEdit", "", "system-file-manager", WithAlbum, Album, nullptr, false, false},
        {"mnuShowNonPhotoFiles", "Menu", "mnuEdit", "", "", WithAlbum, Album, nullptr, false, false},
        {"mnuSetAsWallpaper", "Menu", "mnuEdit", "", "", WithAlbum, Album, nullptr, false, false},

        {"mnuSelectAll", "Menu", "mnuSelect", "Ctrl+A", "edit-select-all", WithAlbum, Album, nullptr, false, false},
        {"mnuInverse", "Menu", "mnuSelect", "Ctrl+I", "", WithAlbum, Album, nullptr, false, false},
        {"mnuSelectStar", "Menu", "mnuSelect", "", "", WithAlbum, Album, nullptr, false, false},
        {"mnuSelectHighLight", "Menu", "mnuSelect", "", "", WithAlbum, Album, nullptr, false, false},
        {"mnuHighlightNotedPhotos", "Menu", "mnuSelect", "", "", WithAlbum, Album, nullptr, false, true},
        {"mnuHighlightPhotosWithKeyword", "Menu", "mnuSelect", "Ctrl+F", "edit-find", WithAlbum, Album, nullptr, false, false},

        {"mnuThumbnailItem", "Menu", "mnuView", "", "view-list-icons", WithAlbum, Album, nullptr, false, false},
        {"mnuShowExtra", "Menu", "mnuView", "F9", "", WithAlbum, Album, nullptr, false, false},
        {"mnuSlideShow", "Menu", "mnuView", "F11", "view-presentation", WithAlbum, Album, nullptr, false, false},
        {"mnuScreenSaver", "Menu", "mnuView", "", "", Always, NotBuilt, nullptr, false, false},

        {"mnuByTime", "Menu", "mnuArrange", "", "", WithAlbum, Album, nullptr, false, false},
        {"mnuByTimeDesc", "Menu", "mnuArrange", "", "", WithAlbum, Album, nullptr, false, false},
        {"mnuByFile", "Menu", "mnuArrange", "", "", WithAlbum, Album, nullptr, false, false},
        {"mnuByFileDesc", "Menu", "mnuArrange", "", "", WithAlbum, Album, nullptr, false, false},
        {"mnuArrangeAllByTime", "Menu", "mnuArrange", "", "", WithAlbum, Main, &MainWindow::mnuArrangeAllByTime_Click, false, true},

        {"mnuRotateLeft", "Menu", "mnuImage", "Ctrl+L", "object-rotate-left", WithAlbum, Album, nullptr, true, false},
        {"mnuRotateRight", "Menu", "mnuImage", "Ctrl+R", "object-rotate-right", WithAlbum, Album, nullptr, true, false},
        {"mnuCropImage", "Menu", "mnuImage", "", "transform-crop", WithAlbum, Album, nullptr, false, true},
        {"mnuAdjustImage", "Menu", "mnuImage", "", "", WithAlbum, Album, nullptr, false, false},
        {"mnuEnhanceImage", "Menu", "mnuImage", "", "", WithAlbum, Album, nullptr, false, false},
        {"mnuBWEffect", "Menu", "mnuImage", "", "", WithAlbum, Album, nullptr, false, false},
        {"mnuSepiaEffect", "Menu", "mnuImage", "", "", WithAlbum, Album, nullptr, false, false},
        {"mnuRevertOriginal", "Menu", "mnuImage", "", "document-revert", WithAlbum, Album, nullptr, false, false},
        {"mnuWriteIPTC", "Menu", "mnuImage", "", "", WithAlbum, Album, nullptr, false, true},
        {"mnuWriteEXIFGPS", "Menu", "mnuImage", "", "", WithAlbum, Album, nullptr, false, false},

        {"mnuGPSLog", "Menu", "mnuGPS", "", "", Always, Main, &MainWindow::mnuGPSLog_Click, false, false},
        {"mnuGPSLocator", "Menu", "mnuGPS", "", "", WithAlbum, Main, &MainWindow::mnuGPSLocator_Click, false, false},
        {"mnuMapLocator", "Menu", "mnuGPS", "", "", WithAlbum, Main, &MainWindow::mnuMapLocator_Click, false, false},
        {"mnuTimeCorrector", "Menu", "mnuGPS", "", "", WithAlbum, Album, nullptr, false, false},
        {"mnuTimeDifferenceRetrieve", "Menu", "mnuGPS", "", "", WithAlbum, Album, nullptr, false, false},
        {"mnuShowOnEarth", "Menu", "mnuGPS", "", "", WithAlbum, Album, nullptr, false, false},
        {"mnuGenerateKML", "Menu", "mnuGPS", "", "", WithAlbum, Album, nullptr, false, false},
        {"mnuGenerateKMZ", "Menu", "mnuGPS", "", "", WithAlbum, Album, nullptr, false, false},

        {"mnuWebReady", "Menu", "mnuPublish", "", "", WithAlbum, Main, &MainWindow::mnuWebReady_Click, false, false},
        {"mnuFlashMaker", "Menu", "mnuPublish", "", "", WithAlbum, NotBuilt, nullptr, false, false},
        {"mnuLightboxMaker", "Menu", "mnuPublish", "", "", WithAlbum, Main, &MainWindow::mnuLightboxMaker_Click, false, false},
        {"mnuSiteManager", "Menu", "mnuPublish", "", "", Always, NotBuilt, nullptr, false, false},
        {"mnuWebSync", "Menu", "mnuPublish", "", "", WithAlbum, Main, &MainWindow::mnuWebSync_Click, false, false},
        {"mnuOrvServerWebSync", "Menu", "mnuPublish", "", "", WithAlbum, Main, &MainWindow::mnuOrvServerWebSync_Click, false, false},
        {"mnuOrvOnlineWebSync", "Menu", "mnuPublish", "", "", WithAlbum, NotBuilt, nullptr, false, false},
        {"mnuOrvServerSiteManager", "Menu", "mnuPublish", "", "", Always, NotBuilt, nullptr, false, false},
        {"mnuMobileReady", "Menu", "mnuPublish", "", "", WithAlbum, NotBuilt, nullptr, false, false},

        {"mnuOnlinePrint", "Menu", "mnuPrintExpress", "", "", WithAlbum, NotBuilt, nullptr, false, false},
        {"mnuOnlinePrintOrders", "Menu", "mnuPrintExpress", "", "", Always, NotBuilt, nullptr, false, false},

        {"mnuAlbumManager", "Menu", "mnuTools", "Ctrl+M", "folder-pictures", Always, Main, &MainWindow::mnuAlbumManager_Click, true, false},
        {"mnuAMNewAlbum", "Menu", "mnuTools", "", "", Always, Main, &MainWindow::mnuAMNewAlbum_Click, false, false},
        {"mnuAMNewFolder", "Menu", "mnuTools", "", "", Always, Main, &MainWindow::mnuAMNewFolder_Click, false, false},
        {"mnuAMConvert", "Menu", "mnuTools", "", "", Always, Main, &MainWindow::mnuAMConvert_Click, false, false},
        {"mnuAMMoveAlbumToTrash", "Menu", "mnuTools", "", "", Always, Main, &MainWindow::mnuAMMoveAlbumToTrash_Click, false, false},
        {"mnuAMMoveToTrash", "Menu", "mnuTools", "", "", Always, Main, &MainWindow::mnuAMMoveToTrash_Click, false, false},
        {"mnuAMRefresh", "Menu", "mnuTools", "", "", Always, Main, &MainWindow::mnuAMRefresh_Click, false, false},
        {"mnuAMRename", "Menu", "mnuTools", "", "", Always, Main, &MainWindow::mnuAMRename_Click, false, false},
        {"mnuAMRenameAlbum", "Menu", "mnuTools", "", "", Always, Main, &MainWindow::mnuAMRenameAlbum_Click, false, false},
        {"mnuAMShowInShell", "Menu", "mnuTools", "", "", Always, Main, &MainWindow::mnuAMShowInShell_Click, false, false},
        {"mnuGlobalSearch", "Menu", "mnuTools", "Ctrl+Shift+F", "edit-find", Always, Main, &MainWindow::mnuGlobalSearch_Click, false, true},
        {"mnuVersionUpdater", "Menu", "mnuTools", "", "", Always, Main, &MainWindow::mnuVersionUpdater_Click, false, false},
        {"mnuOptions", "Menu", "mnuTools", "Ctrl+,", "preferences-system", Always, Main, &MainWindow::mnuOptions_Click, true, true},

        {"mnuWindowCascade", "Menu", "mnuWindow", "", "", Windowed, Main, &MainWindow::mnuWindowCascade_Click, false, false},
        {"mnuWindowTileHorizontal", "Menu", "mnuWindow", "", "", Windowed, Main, &MainWindow::mnuWindowTileHorizontal_Click, false, false},
        {"mnuWindowTileVertical", "Menu", "mnuWindow", "", "", Windowed, Main, &MainWindow::mnuWindowTileVertical_Click, false, false},
        {"mnuWindowArrangeIcons", "Menu", "mnuWindow", "", "", Windowed, Main, &MainWindow::mnuWindowArrangeIcons_Click, false, false},

        {"mnuHelpContents", "Menu", "mnuHelp", "F1", "help-contents", Always, Main, &MainWindow::mnuHelpContents_Click, false, false},
        {"mnuInfoOnWeb", "Menu", "mnuHelp", "", "", Always, Main, &MainWindow::mnuInfoOnWeb_Click, false, false},
        {"mnuHowToSetupOrvServer", "Menu", "mnuHelp", "", "", Always, NotBuilt, nullptr, false, false},
        {"mnuOrvanaOnline", "Menu", "mnuHelp", "", "", Always, NotBuilt, nullptr, false, false},
        {"mnuHelpAbout", "Menu", "mnuHelp", "", "help-about", Always, Main, &MainWindow::mnuHelpAbout_Click, false, true},
    };
    return rows;
}

const CommandRow *FindCommand(const QString &name)
{
    for (const CommandRow &row : MainCommands()) {
        if (name == QLatin1String(row.name))
            return &row;
    }
    return nullptr;
}
