#include "cli/CliPassword.h"

#include <cstdio>
#include <termios.h>
#include <unistd.h>

namespace {

QString ReadPasswordFromTerminal(const QString &prompt)
{
    FILE *terminal = std::fopen("/dev/tty", "r+");
    if (!terminal)
        return QString();
    const int fd = fileno(terminal);
    termios saved{};
    const bool canHideEcho = tcgetattr(fd, &saved) == 0;
    if (canHideEcho) {
        termios hidden = saved;
        hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        tcsetattr(fd, TCSAFLUSH, &hidden);
    }
    std::fputs(prompt.toLocal8Bit().constData(), terminal);
    std::fflush(terminal);
    char line[1024] = {};
    const bool read = std::fgets(line, sizeof line, terminal) != nullptr;
    if (canHideEcho)
        tcsetattr(fd, TCSAFLUSH, &saved);
    std::fputs("\n", terminal);
    std::fclose(terminal);
    if (!read)
        return QString();
    QString password = QString::fromLocal8Bit(line);
    while (password.endsWith(u'\n') || password.endsWith(u'\r'))
        password.chop(1);
    return password;
}

} // namespace

std::optional<QString> FtpPassword(const QString &prompt)
{
    if (qEnvironmentVariableIsSet("ORVANA_FTP_PASSWORD"))
        return qEnvironmentVariable("ORVANA_FTP_PASSWORD");
    if (isatty(STDIN_FILENO) != 1)
        return std::nullopt;
    return ReadPasswordFromTerminal(prompt);
}
