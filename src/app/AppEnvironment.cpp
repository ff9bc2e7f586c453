#include "app/AppEnvironment.h"

#include <QCoreApplication>
#include <QDir>
#include <QLocale>
#include <QStandardPaths>
#include <QStorageInfo>

namespace {

std::shared_ptr<const AppEnvironment> &Current()
{
    static std::shared_ptr<const AppEnvironment> environment = std::make_shared<SystemEnvironment>();
    return environment;
}

} // namespace

QString SystemEnvironment::DocumentsFolder() const
{
    QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (documents.isEmpty())
        documents = QDir::homePath();
    return QDir::cleanPath(documents);
}

QString SystemEnvironment::InstallFolder() const
{
    return QCoreApplication::applicationDirPath();
}

QString SystemEnvironment::SystemLocaleName() const
{
    return QLocale::system().name();
}

QDate SystemEnvironment::Today() const
{
    return QDate::currentDate();
}

QString SystemEnvironment::ApplicationsFolder() const
{
    return QStandardPaths::writableLocation(QStandardPaths::ApplicationsLocation);
}

const AppEnvironment &Environment()
{
    return *Current();
}

std::shared_ptr<const AppEnvironment> SetEnvironment(std::shared_ptr<const AppEnvironment> environment)
{
    std::swap(Current(), environment);
    return environment;
}

// Removable media mount under /media or /run/media (udisks), by hand often under /mnt; phones
// and cameras speaking MTP or PTP appear through gvfs as folders of the user's runtime folder.
// Network and system mounts are left out: looking into them can hang on a dead server.
QStringList SystemEnvironment::MountedVolumes() const
{
    QStringList volumes;
    for (const QStorageInfo &volume : QStorageInfo::mountedVolumes()) {
        const QString root = volume.rootPath();
        if (volume.isValid() && volume.isReady()
            && (root.startsWith(QLatin1String("/media/")) || root.startsWith(QLatin1String("/run/media/")) || root.startsWith(QLatin1String("/mnt/"))))
            volumes << root;
    }
    const QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (!runtime.isEmpty()) {
        const QDir gvfs(runtime + QStringLiteral("/gvfs"));
        for (const QString &device : gvfs.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
            volumes << gvfs.filePath(device);
    }
    return volumes;
}
