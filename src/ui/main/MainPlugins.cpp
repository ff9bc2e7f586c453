// The main window's plug-in menus: one entry for each plug-in found at start-up, in the menu of
// its type; the active album runs it.
#include "ui/main/MainWindow.h"

#include "app/Plugins.h"
#include "ui/album/AlbumWindow.h"

#include <QAction>
#include <QIcon>
#include <QMenu>

void MainWindow::BuildPluginMenus()
{
    for (const PluginInfo &plugin : LoadedPlugins()) {
        const QString menuName = PluginMenuFor(plugin.type);
        if (menuName.isEmpty())
            continue;
        QAction *action = MenuFor(menuName)->addAction(plugin.icon.isEmpty() ? QIcon() : QIcon(plugin.icon),
                                                           plugin.menu.isEmpty() ? plugin.name : plugin.menu);
        action->setObjectName(plugin.name);
        connect(action, &QAction::triggered, this, [this, name = plugin.name] {
            if (AlbumWindow *album = ActiveAlbum())
                album->LaunchPlugin(name);
        });
        pluginActions << action;
    }
}
