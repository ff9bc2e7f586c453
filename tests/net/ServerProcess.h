#pragma once

#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

// A real server on loopback, started on a free port with a temporary root folder and stopped
// when the object goes. Debian's Python is used, which holds python3-pyftpdlib.
class ServerProcess {
public:
    enum Kind { Ftp, Http };
    static constexpr const char *User = "photographer";
    static constexpr const char *Password = "s3cret pass";

    // Ftp: pyftpdlib with User and Password allowed everything in the root. Http: http.server.
    explicit ServerProcess(Kind kind)
    {
        const QStringList arguments = kind == Ftp
            ? QStringList{QStringLiteral(ORVANA_SOURCE_DIR "/tests/net/ftp_server.py"), Root(), QString::fromLatin1(User), QString::fromLatin1(Password)}
            : QStringList{"-m", "http.server", "0", "--bind", "127.0.0.1", "--directory", Root()};
        const QString debianPython = QStringLiteral("/usr/bin/python3");
        process.start(QFileInfo(debianPython).isExecutable() ? debianPython : QStringLiteral("python3"), QStringList{"-u"} + arguments);
        // ftp_server.py says "PORT n", http.server "Serving HTTP on 127.0.0.1 port n ...".
        static const QRegularExpression Listening(QStringLiteral("(?:PORT|port) (\\d+)"));
        QString output;
        while (port == 0 && process.waitForReadyRead(10000)) {
            output += QString::fromUtf8(process.readAllStandardOutput());
            port = Listening.match(output).captured(1).toUShort();
        }
    }
    ~ServerProcess()
    {
        process.terminate();
        if (!process.waitForFinished(3000))
            process.kill();
        process.waitForFinished(3000);
    }

    quint16 Port() const { return port; }
    QString Root() const { return root.path(); }
    bool Started() const { return port != 0; }

private:
    QTemporaryDir root;
    QProcess process;
    quint16 port = 0;
};
