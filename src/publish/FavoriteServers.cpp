#include "publish/FavoriteServers.h"

#include "app/Paths.h"

#include <QSaveFile>
#include <sys/stat.h>

namespace {

const QString UrlKey = QStringLiteral("URL");
const QString AddressKey = QStringLiteral("ADDRESS");
const QString LoginKey = QStringLiteral("LOGIN");
const QString PasswordKey = QStringLiteral("PASSWORD");
const QString DirectoryKey = QStringLiteral("DIRECTORY");

} // namespace

QString FavoriteServers::MakeUrl(const QString &address, const QString &login, const QString &directory)
{
    QString url = QStringLiteral("ftp://") + login + u'@' + address;
    if (!directory.startsWith(u'/'))
        url += u'/';
    url += directory;
    if (!directory.endsWith(u'/'))
        url += u'/';
    return url;
}

QString FavoriteServers::FilePath()
{
    return GetUserDataFolder() + QStringLiteral("/FavoriteServers.plist");
}

void FavoriteServers::Load()
{
    DataList loaded;
    list = loaded.Load(FilePath()) ? std::move(loaded) : DataList();
}

void FavoriteServers::addFavoriteServer(const QString &address, const QString &login, const QString &password,
                                        const QString &directory)
{
    const QString url = MakeUrl(address, login, directory);
    int index = 1;
    while (index <= list.ItemCount() && list.GetItemProperty(UrlKey, index) != url)
        ++index;
    if (index > list.ItemCount()) {
        list.AddItem(index);
        list.SetItemProperty(UrlKey, url, index);
    }
    list.SetItemProperty(AddressKey, address, index);
    list.SetItemProperty(LoginKey, login, index);
    list.SetItemProperty(PasswordKey, password, index);
    list.SetItemProperty(DirectoryKey, directory, index);
}

Result FavoriteServers::SaveFavoriteServerList() const
{
    CreateFolderPath(GetUserDataFolder());
    QSaveFile file(FilePath());
    if (!file.open(QIODevice::WriteOnly))
        return Result::Failure(QStringLiteral("%1: %2").arg(FilePath(), file.errorString()));
    // The temporary file is closed to others before any password goes into it; the rename keeps
    // its mode.
    if (::fchmod(file.handle(), S_IRUSR | S_IWUSR) != 0) {
        file.cancelWriting();
        return Result::Failure(QStringLiteral("%1: its permissions could not be set").arg(FilePath()));
    }
    const QByteArray bytes = list.ToBytes();
    if (file.write(bytes) != bytes.size() || !file.commit())
        return Result::Failure(QStringLiteral("%1: %2").arg(FilePath(), file.errorString()));
    return Result::Success();
}

void FavoriteServers::Clear()
{
    list = DataList();
}

FavoriteServer FavoriteServers::At(int index) const
{
    return {list.GetItemProperty(UrlKey, index), list.GetItemProperty(AddressKey, index),
            list.GetItemProperty(LoginKey, index), list.GetItemProperty(PasswordKey, index),
            list.GetItemProperty(DirectoryKey, index)};
}

QList<FavoriteServer> FavoriteServers::All() const
{
    QList<FavoriteServer> servers;
    for (int index = 1; index <= list.ItemCount(); ++index)
        servers.append(At(index));
    return servers;
}
