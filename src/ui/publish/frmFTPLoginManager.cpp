#include "ui/publish/frmFTPLoginManager.h"

#include "ui/publish/frmExport.h"
#include "app/Language.h"

#include <QMenu>

frmFTPLoginManager::frmFTPLoginManager(QObject *parent) : QObject(parent), menu(new QMenu)
{
    servers.Load();
    ListFavoriteName();
}

frmFTPLoginManager::~frmFTPLoginManager()
{
    delete menu;
}

void frmFTPLoginManager::addFavoriteServer(const QString &address, const QString &login, const QString &password,
                                           const QString &directory)
{
    servers.addFavoriteServer(address, login, password, directory);
}

void frmFTPLoginManager::ListFavoriteName()
{
    menu->clear();
    for (int index = 1; index <= servers.Count(); ++index) {
        const FavoriteServer server = servers.At(index);
        menu->addAction(server.url, this, [this, server] {
            if (target)
                target->SetServerFields(server.address, server.login, server.password, server.directory);
        });
    }
    menu->addSeparator();
    QAction *clear = menu->addAction(GetLocalizedString(QStringLiteral("mnuClear"), QStringLiteral("Menu")), this,
                                     &frmFTPLoginManager::mnuClear_Click);
    clear->setObjectName(QStringLiteral("mnuClear"));
    clear->setEnabled(servers.Count() > 0);
}

Result frmFTPLoginManager::SaveFavoriteServerList() const
{
    return servers.SaveFavoriteServerList();
}

void frmFTPLoginManager::mnuClear_Click()
{
    servers.Clear();
    SaveFavoriteServerList();
    ListFavoriteName();
}
