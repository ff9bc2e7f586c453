#include "publish/ServerTest.h"

#include "net/OrvFTPEngine.h"
#include "app/Language.h"

ServerAddress ParseServerAddress(const QString &text)
{
    const QString trimmed = text.trimmed();
    const qsizetype colon = trimmed.lastIndexOf(u':');
    bool numeric = false;
    const int port = colon > 0 ? trimmed.mid(colon + 1).toInt(&numeric) : 0;
    // Only one colon can end in a port: an IPv6 address keeps its own.
    if (numeric && port > 0 && port < 65536 && trimmed.count(u':') == 1)
        return {trimmed.left(colon), port};
    return {trimmed, 21};
}

ServerTestReport TestPublishingServer(const QString &address, const QString &login, const QString &password,
                                      const QString &directory, const QString &identification)
{
    const ServerAddress server = ParseServerAddress(address);
    OrvFTPEngine engine;
    ServerTestReport report;
    bool directoryFound = false;
    bool dataFound = false;
    bool albumFound = false;
    if (engine.ConnectToServer(server.host, server.port, login, password)) {
        directoryFound = directory.isEmpty() || engine.ChangeDirectory(directory);
        if (directoryFound && engine.ChangeDirectory(QStringLiteral("data"))) {
            dataFound = true;
            albumFound = engine.FileExists(identification + QStringLiteral(".data/album.plist"));
        }
        engine.Disconnect();
    }
    report.lastError = engine.LastError();
    if (!directoryFound)
        report.readiness = ServerReadiness::NotReady;
    else if (albumFound)
        report.readiness = ServerReadiness::AlbumExists;
    else if (dataFound)
        report.readiness = ServerReadiness::Ready;
    else
        report.readiness = ServerReadiness::Invalid;
    return report;
}

QString ServerTestMessage(const ServerTestReport &report)
{
    const auto text = [](const char *key) { return GetLocalizedString(QLatin1String(key), QStringLiteral("PublishAction")); };
    switch (report.readiness) {
    case ServerReadiness::NotReady:
        return text("MessageServerIsNotReady") + u'\n' + report.lastError;
    case ServerReadiness::AlbumExists:
        return text("MessageAlbumExistsOnServer");
    case ServerReadiness::Ready:
        return text("MessageServerIsReady");
    case ServerReadiness::Invalid:
        return text("MessageServerIsInvalid") + u'\n' + report.lastError;
    }
    return QString();
}
