#include "ServerProcess.h"

#include <QFileInfo>
#include <QRegularExpression>

ServerProcess::ServerProcess(Kind kind)
{
    const QString debianPython = QStringLiteral("/usr/bin/python3");
    const QStringList arguments = kind == Ftp
        ? QStringList{QStringLiteral(ORVANA_SOURCE_DIR "/tests/net/ftp_server.py"), Root(), QString::fromLatin1(User), QString::fromLatin1(Password)}
        : QStringList{QStringLiteral("-m"), QStringLiteral("http.server"), QStringLiteral("0"), QStringLiteral("--bind"),
                      QStringLiteral("127.0.0.1"), QStringLiteral("--directory"), Root()};
    process.start(QFileInfo(debianPython).isExecutable() ? debianPython : QStringLiteral("python3"), QStringList{QStringLiteral("-u")} + arguments);
    // ftp_server.py says "PORT n", http.server "Serving HTTP on 127.0.0.1 port n ...".
    static const QRegularExpression Listening(QStringLiteral("(?:PORT|port) (\\d+)"));
    QString output;
    while (port == 0 && process.waitForReadyRead(10000)) {
        output += QString::fromUtf8(process.readAllStandardOutput());
        port = Listening.match(output).captured(1).toUShort();
    }
}

ServerProcess::~ServerProcess()
{
    process.terminate();
    if (!process.waitForFinished(3000))
        process.kill();
    process.waitForFinished(3000);
}
