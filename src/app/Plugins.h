#pragma once

#include <QString>
#include <vector>

// Plug-ins: a folder "<name>.plugin" each under the plug-ins folder, with a descriptor
// "Resources/Plugin.ini" (section "Plugin"), an optional icon "Resources/Plugin.gif", optional
// translations "Resources/<language>/Localizable.ini" and a program, named by the descriptor's
// "File", that the program runs with one argument: a file of key-value lines (PluginCall.h).
struct PluginInfo {
    QString name;    // the folder name without ".plugin"
    QString menu;    // the caption of its menu entries
    QString type;    // "Importer", "Editor", "AlbumExporter", "Exporter", "WebExporter", "PhotoExporter"
    QString command;
    QString icon;    // the icon's path, "" when it has none
};

// The folder of one plug-in.
QString PluginFolder(const QString &pluginsFolder, const QString &name);

// A descriptor value: Plugin.ini first, then the plug-in's translation for the current language,
// then its English one (so a descriptor may leave "Menu" to its translations).
QString GetPluginValue(const QString &pluginsFolder, const QString &name, const QString &key);

// The plug-ins to list, in folder-name order: hidden ones and those meant for another language
// are left out.
std::vector<PluginInfo> FindPlugins(const QString &pluginsFolder);

// The main window's menu for a type ("mnuImporterPlugin", ...), "" for a type without one.
QString PluginMenuFor(const QString &type);

// Found once at start-up (LoadPlugins); the windows build their menus from them.
void LoadPlugins();
const std::vector<PluginInfo> &LoadedPlugins();
