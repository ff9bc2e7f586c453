#pragma once

#include <QString>
#include <vector>

class MainWindow;

// Who carries out a command of the main window's menus.
enum class Route {
    Main,     // a handler of the main window
    Album,    // the active album window, through AlbumWindow::RunCommand
    NotBuilt, // its window does not exist yet: the command is not shown
};

// When a command of the main window can be used.
enum class Availability {
    Always,
    WithAlbum,          // an album window is active
    WithWindowedAlbums, // albums shown as separate windows, at least one open
};

// One row of the routing table from which the menus, the tool bar and the shortcuts are built.
struct CommandRow {
    const char *name;     // command name, also its caption key
    const char *section;  // section of the caption key in Localizable.ini
    const char *menu;     // the menu it sits in, by its caption key in [Menu]
    const char *shortcut; // portable key text, "" for none
    const char *icon;     // freedesktop icon name, "" for none
    Availability availability;
    Route route;
    void (MainWindow::*handler)(); // Route::Main only
    bool toolBar;
    bool separatorBefore;
};

struct MenuRow {
    const char *name;   // caption key in [Menu]
    const char *parent; // "" for the menu bar
};

const std::vector<MenuRow> &MainMenus();
const std::vector<CommandRow> &MainCommands();
const CommandRow *FindCommand(const QString &name);
