#pragma once

#include <QProcess>
#include <QTemporaryDir>

// A real server on loopback, started on a free port with a temporary root folder and stopped
// when the object goes. Debian's Python is used, which holds python3-pyftpdlib.
class ServerProcess {
public:
    enum Kind { Ftp, Http };
    // Ftp: pyftpdlib with User and Password allowed everything in the root. Http: http.server.
    explicit ServerProcess(Kind kind);
    ~ServerProcess();

    static constexpr const char *User = "photographer";
    static constexpr const char *Password = "s3cret pass";

    quint16 Port() const { return port; }
    QString Root() const { return root.path(); }
    bool Started() const { return port != 0; }

private:
    QTemporaryDir root;
    QProcess process;
    quint16 port = 0;
};
