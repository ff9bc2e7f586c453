#include "ServerProcesses.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace {

quint16 FtpPortOf(const QByteArray &line)
{
    return line.startsWith("PORT ") ? line.mid(5).trimmed().toUShort() : 0;
}

quint16 HttpPortOf(const QByteArray &line)
{
    static const QRegularExpression Serving(QStringLiteral("port (\\d+)"));
    const QRegularExpressionMatch match = Serving.match(QString::fromUtf8(line));
    return match.hasMatch() ? match.captured(1).toUShort() : 0;
}

} // namespace

QString SystemPython()
{
    const QString debian = QStringLiteral("/usr/bin/python3");
    return QFileInfo(debian).isExecutable() ? debian : QStringLiteral("python3");
}

ServerProcess::~ServerProcess()
{
    process.terminate();
    if (!process.waitForFinished(3000))
        process.kill();
    process.waitForFinished(3000);
}

void ServerProcess::Start(const QStringList &arguments, quint16 (*portOf)(const QByteArray &line))
{
    process.setProcessChannelMode(QProcess::SeparateChannels);
    process.start(SystemPython(), QStringList{QStringLiteral("-u")} + arguments);
    QByteArray pending;
    while (port == 0 && process.waitForReadyRead(10000)) {
        pending += process.readAllStandardOutput();
        for (const QByteArray &line : pending.split('\n')) {
            if ((port = portOf(line)) != 0)
                break;
        }
    }
}

FtpServerProcess::FtpServerProcess()
{
    Start({QStringLiteral(ORVANA_SOURCE_DIR "/tests/net/ftp_server.py"), Root(), QString::fromLatin1(User),
           QString::fromLatin1(Password)},
          FtpPortOf);
}

HttpServerProcess::HttpServerProcess()
{
    Start({QStringLiteral("-m"), QStringLiteral("http.server"), QStringLiteral("0"), QStringLiteral("--bind"),
           QStringLiteral("127.0.0.1"), QStringLiteral("--directory"), Root()},
          HttpPortOf);
}
