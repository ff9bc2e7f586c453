#pragma once

#include "publish/FavoriteServers.h"

#include <QObject>

class QMenu;
class frmExport;

// The favourite FTP servers as a menu: choosing one fills the server fields of the form it
// serves; "Clear List" empties it.
class frmFTPLoginManager : public QObject {
    Q_OBJECT
public:
    explicit frmFTPLoginManager(QObject *parent = nullptr);
    ~frmFTPLoginManager() override;

    void setFTPForm(frmExport *form) { target = form; }
    void addFavoriteServer(const QString &address, const QString &login, const QString &password, const QString &directory);
    void ListFavoriteName();
    Result SaveFavoriteServerList() const;
    QMenu *mnuItems() const { return menu; }
    void mnuClear_Click();

private:
    FavoriteServers servers;
    QMenu *menu;
    frmExport *target = nullptr;
};
