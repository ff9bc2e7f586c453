#pragma once

#include "datalist/DataList.h"

#include <QString>
#include <optional>

// The shared publishing service named by [System] SharedServer: it hands out an FTP account and
// is told when a sync starts and ends, through four GET requests whose replies are property
// lists.
class SharedService {
public:
    struct FtpAccount {
        QString host;
        int port = 21;
        QString login;
        QString password;
        QString directory;
    };

    // `base` is the service's address ("http://host[:port][/path]"); the login and password are
    // the user's account with it.
    SharedService(const QString &base, const QString &login, const QString &password);

    bool Configured() const { return !base.isEmpty(); }
    // Nothing when the service refuses the account ("Message" is not "OK") or gives no reply.
    std::optional<FtpAccount> GetFtpAccount(const QString &language, QString *message = nullptr) const;
    // The service's "Message".
    QString AnnounceSync(const QString &album) const;
    void ReportEnd(const QString &album, bool cancelled, bool failed) const;
    // The published album's address: the reply's "URL", else its first value that is an
    // address; "" when it gives none.
    QString ShowAlbum(const QString &album) const;

private:
    // A reply is taken only when it holds a whole property list.
    std::optional<DataList> Ask(const QString &request, const QList<std::pair<QString, QString>> &query) const;

    QString base;
    QString login;
    QString password;
};
