#pragma once

#include "datalist/DataList.h"
#include "app/Result.h"

#include <QList>
#include <QString>

// One favourite FTP server, as the export dialog's server fields hold it.
struct FavoriteServer {
    QString url;
    QString address;
    QString login;
    QString password;
    QString directory;
};

// The user's favourite FTP servers, kept in "FavoriteServers.plist" in the user-data folder. The
// file holds passwords as typed, so it is readable by its owner alone.
class FavoriteServers {
public:
    // "ftp://" login "@" address, then the directory with exactly one "/" before and after it.
    static QString MakeUrl(const QString &address, const QString &login, const QString &directory);
    static QString FilePath();

    // A missing or unreadable file gives an empty list.
    void Load();
    // An entry with the same URL is updated; otherwise one is appended. Nothing is saved.
    void addFavoriteServer(const QString &address, const QString &login, const QString &password, const QString &directory);
    Result SaveFavoriteServerList() const;
    void Clear();

    int Count() const { return list.ItemCount(); }
    // index from 1
    FavoriteServer At(int index) const;
    QList<FavoriteServer> All() const;

private:
    DataList list;
};
