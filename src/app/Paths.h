#pragma once

#include <QString>

// The program's fixed folders, recomputed from the environment on every call.
QString GetDocumentsFolder();
QString GetUserDataFolder();      // Documents + "/Orvana User Data"
QString SettingsFilePath();       // user data + "/Orvana.ini"
QString GetLibraryPath();         // [Library] MainPath
QString AppPath();                // the executable's folder
// "Resources" and "Plugins" beside the executable (the build tree), else under the installed
// share/orvana/ next to bin/ (the install layout).
QString ResourcesFolder();
QString PluginsFolder();
// The share/ folder of an installation whose programs are in AppPath() (bin/).
QString InstalledShareFolder();

// True only for an existing directory; any error reads as false.
bool FolderExists(const QString &path);
// Creates the folder and its missing parents; errors are swallowed.
void CreateFolderPath(const QString &path);
