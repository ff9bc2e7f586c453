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

QString ResourcesFolder()
{
    QString beside = AppPath() + QStringLiteral("/Resources");
    if (FolderExists(beside))
        return beside;
    return QDir::cleanPath(AppPath() + QStringLiteral("/../share/orvana/Resources"));
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
