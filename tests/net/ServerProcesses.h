#pragma once

#include <QProcess>
#include <QTemporaryDir>

// Real servers on loopback, each started on a free port with a temporary root folder and stopped
// when the object goes.

// Debian's Python, which holds python3-pyftpdlib, ahead of any other python3 on PATH.
QString SystemPython();

class ServerProcess {
public:
    ~ServerProcess();
    quint16 Port() const { return port; }
    QString Root() const { return root.path(); }
    bool Started() const { return port != 0; }

protected:
    // Starts the program and reads the port from the first line of its output that `portOf`
    // understands.
    void Start(const QStringList &arguments, quint16 (*portOf)(const QByteArray &line));

private:
    QTemporaryDir root;
    QProcess process;
    quint16 port = 0;
};

// pyftpdlib with one user and password who may do everything in the root folder.
class FtpServerProcess : public ServerProcess {
public:
    static constexpr const char *User = "photographer";
    static constexpr const char *Password = "s3cret pass";
    FtpServerProcess();
};

// python3 -m http.server serving the root folder.
class HttpServerProcess : public ServerProcess {
public:
    HttpServerProcess();
};
