#include "app/Paths.h"

#include "app/AppEnvironment.h"
#include "app/Settings.h"

#include <QDir>
#include <QFileInfo>

QString GetDocumentsFolder()
{
    return Environment().DocumentsFolder();
}

QString GetUserDataFolder()
{
    return GetDocumentsFolder() + QStringLiteral("/Orvana User Data");
}

QString SettingsFilePath()
{
    return GetUserDataFolder() + QStringLiteral("/Orvana.ini");
}

QString GetLibraryPath()
{
    return ReadSetting(QStringLiteral("Library"), QStringLiteral("MainPath"));
}

QString AppPath()
{
    return Environment().InstallFolder();
}

namespace {

// The build tree keeps the folder beside the programs; an installation keeps programs in bin/
// and the folder in share/orvana/, so the same binaries work from both without being told.
QString ShippedFolder(const QString &name)
{
    const QString beside = AppPath() + u'/' + name;
    if (FolderExists(beside))
        return beside;
    return QDir::cleanPath(AppPath() + QStringLiteral("/../share/orvana/") + name);
}

} // namespace

QString ResourcesFolder()
{
    return ShippedFolder(QStringLiteral("Resources"));
}

QString PluginsFolder()
{
    return ShippedFolder(QStringLiteral("Plugins"));
}

QString InstalledShareFolder()
{
    return QDir::cleanPath(AppPath() + QStringLiteral("/../share"));
}

bool FolderExists(const QString &path)
{
    if (path.isEmpty())
        return false;
    const QFileInfo info(path);
    return info.exists() && info.isDir();
}

void CreateFolderPath(const QString &path)
{
    if (!path.isEmpty())
        QDir().mkpath(path);
}
