#include "gps/MapSearch.h"

#include "app/Settings.h"
#include "net/OrvHTTPEngine.h"

#include <QUrl>

QString ChosenMapServer()
{
    return ReadSetting(QStringLiteral("System"), QStringLiteral("MapServer")).trimmed();
}

MapTemplates MapTemplatesFromSettings(const QString &builtInHost)
{
    const QString chosen = ChosenMapServer();
    return MakeMapTemplates(chosen.isEmpty() ? builtInHost : chosen, ReadSetting(QStringLiteral("System"), QStringLiteral("SharedServer")));
}

std::optional<GeoPosition> SearchPlace(const MapTemplates &templates, const QString &typed, OrvHTTPEngine &engine)
{
    const QString address = typed.trimmed();
    if (const std::optional<QString> local = LocalGeoCodeReply(address))
        return ParseGeoCode(*local);
    const QUrl url(MapSearchUrl(templates, address), QUrl::StrictMode);
    if (!url.isValid() || url.host().isEmpty())
        return std::nullopt;
    QString reply;
    if (!engine.HTTPGetText(url.host(), url.port(80), url.toString(QUrl::RemoveScheme | QUrl::RemoveAuthority | QUrl::FullyEncoded), reply))
        return std::nullopt;
    return ParseGeoCode(reply);
}
