#pragma once

#include <QString>

// "host" or "host:port"; an FTP server without a port listens on 21.
struct ServerAddress {
    QString host;
    int port = 21;
};
ServerAddress ParseServerAddress(const QString &text);

// What the Test button finds on the user's own server, in the order the report gives them.
enum class ServerReadiness {
    NotReady,      // no connection, or the directory is missing
    AlbumExists,   // the album has been published there already
    Ready,         // the directory holds "data"
    Invalid,       // the directory holds no "data"
};

struct ServerTestReport {
    ServerReadiness readiness = ServerReadiness::NotReady;
    QString lastError; // the engine's
};

// Connects, goes to the directory and then to its "data", looks for the album's list there, and
// disconnects.
ServerTestReport TestPublishingServer(const QString &address, const QString &login, const QString &password,
                                      const QString &directory, const QString &identification);

// The report as the user reads it: the message of section "PublishAction", with the engine's
// reason where the report calls for one.
QString ServerTestMessage(const ServerTestReport &report);
