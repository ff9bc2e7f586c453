#include "publish/SharedService.h"

#include "net/OrvHTTPEngine.h"

#include <QUrl>

SharedService::SharedService(const QString &baseAddress, const QString &user, const QString &secret)
    : base(baseAddress.trimmed()), login(user), password(secret)
{
    while (base.endsWith(u'/'))
        base.chop(1);
}

std::optional<DataList> SharedService::Ask(const QString &request, const QList<std::pair<QString, QString>> &query) const
{
    if (base.isEmpty())
        return std::nullopt;
    const QUrl url(base.contains(QLatin1String("://")) ? base : QStringLiteral("http://") + base);
    QString path = url.path(QUrl::FullyEncoded) + QStringLiteral("/websync/") + request + QStringLiteral("/?");
    QList<std::pair<QString, QString>> pairs = {{QStringLiteral("username"), login}, {QStringLiteral("password"), password}};
    pairs += query;
    for (qsizetype i = 0; i < pairs.size(); ++i) {
        if (i > 0)
            path += u'&';
        path += pairs[i].first + u'=' + QString::fromLatin1(QUrl::toPercentEncoding(pairs[i].second));
    }
    OrvHTTPEngine engine;
    QString text;
    if (!engine.HTTPGetText(url.host(), url.port(80), path, text) || !text.contains(QLatin1String("</plist>")))
        return std::nullopt;
    const qsizetype start = text.indexOf(QLatin1String("<?xml"));
    DataList reply;
    if (start < 0 || !reply.LoadFromBytes(text.mid(start).toUtf8()))
        return std::nullopt;
    return reply;
}

std::optional<SharedService::FtpAccount> SharedService::GetFtpAccount(const QString &language, QString *message) const
{
    const std::optional<DataList> reply = Ask(QStringLiteral("getftp"), {{QStringLiteral("language"), language}});
    const QString said = reply ? reply->GetDocumentProperty(QStringLiteral("Message")) : QString();
    if (message)
        *message = said;
    if (said != QLatin1String("OK"))
        return std::nullopt;
    const auto value = [&](const char *key) { return reply->GetDocumentProperty(QLatin1String(key)); };
    const int port = value("FTPPort").toInt();
    return FtpAccount{value("FTPHost"), port > 0 ? port : 21, value("FTPLogin"), value("FTPPassword"), value("FTPDirectory")};
}

QString SharedService::AnnounceSync(const QString &album) const
{
    const std::optional<DataList> reply = Ask(QStringLiteral("pre-sync"), {{QStringLiteral("album"), album}});
    return reply ? reply->GetDocumentProperty(QStringLiteral("Message")) : QString();
}

void SharedService::ReportEnd(const QString &album, bool cancelled, bool failed) const
{
    Ask(QStringLiteral("post-sync"), {{QStringLiteral("album"), album},
                                      {QStringLiteral("cancel"), cancelled ? QStringLiteral("1") : QStringLiteral("0")},
                                      {QStringLiteral("error"), failed ? QStringLiteral("1") : QStringLiteral("0")}});
}

QString SharedService::ShowAlbum(const QString &album) const
{
    const std::optional<DataList> reply = Ask(QStringLiteral("showalbum"), {{QStringLiteral("album"), album}});
    if (!reply)
        return QString();
    const QString url = reply->GetDocumentProperty(QStringLiteral("URL"));
    if (url.startsWith(QLatin1String("http://")) || url.startsWith(QLatin1String("https://")))
        return url;
    for (const QString &key : reply->DocumentKeys()) {
        const QString value = reply->GetDocumentProperty(key);
        if (value.startsWith(QLatin1String("http://")) || value.startsWith(QLatin1String("https://")))
            return value;
    }
    return QString();
}
