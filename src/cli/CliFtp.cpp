#include "CliOutput.h"
#include "CliProgress.h"

#include "FtpListing.h"
#include "OrvFTPEngine.h"

#include <QFileInfo>
#include <QTextStream>
#include <QUrl>
#include <cstdio>
#include <termios.h>
#include <unistd.h>

namespace {

const QString Usage = QStringLiteral(
    "orvana-cli ftp ls ftp://USER@HOST[:PORT]/PATH [--long]\n"
    "       orvana-cli ftp get ftp://USER@HOST[:PORT]/PATH [LOCAL]\n"
    "       orvana-cli ftp put ftp://USER@HOST[:PORT]/PATH LOCAL\n"
    "       orvana-cli ftp mkdir|rmdir|rm ftp://USER@HOST[:PORT]/PATH\n"
    "       orvana-cli ftp rename ftp://USER@HOST[:PORT]/PATH NEWNAME\n"
    "Works on an FTP server in passive mode with binary transfers. The password comes from the\n"
    "variable ORVANA_FTP_PASSWORD, else it is asked for on the terminal; never put it in the\n"
    "address. ls prints one name a line (folders too), --long the server's own listing. get\n"
    "without LOCAL saves under the remote name in the current folder; put to a PATH ending in \"/\"\n"
    "keeps the local name. A NEWNAME without \"/\" stays in the folder of PATH.");


struct Target {
    QString host;
    int port = 21;
    QString user;
    QString path;
};

std::optional<Target> ParseTarget(const QString &text, QString &problem)
{
    const QUrl url(text);
    if (!url.isValid() || url.scheme() != QLatin1String("ftp") || url.host().isEmpty()) {
        problem = QStringLiteral("\"%1\" is not an ftp://USER@HOST/PATH address").arg(text);
        return std::nullopt;
    }
    if (!url.password().isEmpty()) {
        problem = QStringLiteral("a password in the address can be read by other users; use ORVANA_FTP_PASSWORD");
        return std::nullopt;
    }
    return Target{url.host(), url.port(21), url.userName(QUrl::FullyDecoded), url.path(QUrl::FullyDecoded)};
}

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

std::optional<QString> Password(const Target &target)
{
    if (qEnvironmentVariableIsSet("ORVANA_FTP_PASSWORD"))
        return qEnvironmentVariable("ORVANA_FTP_PASSWORD");
    if (isatty(STDIN_FILENO) != 1)
        return std::nullopt;
    return ReadPasswordFromTerminal(QStringLiteral("Password for %1@%2: ").arg(target.user, target.host));
}

// The engine's text, and the server's own words when it gave any.
QString Failure(const OrvFTPEngine &engine)
{
    const QString reply = engine.LastResponse().trimmed().section(QLatin1String("\r\n"), -1);
    return reply.isEmpty() ? engine.LastError() : QStringLiteral("%1 (server: %2)").arg(engine.LastError(), reply);
}

QString FolderOf(const QString &path)
{
    const qsizetype slash = path.lastIndexOf(u'/');
    return slash < 0 ? QString() : path.left(slash + 1);
}

QString NameOf(const QString &path)
{
    return path.mid(path.lastIndexOf(u'/') + 1);
}

// One verb on a logged-in engine; returns the exit code.
int RunVerb(OrvFTPEngine &engine, const QString &verb, const Target &target, const QStringList &rest)
{
    const QString local = rest.value(0);
    if (verb == QLatin1String("ls")) {
        const QString listing = engine.List(target.path);
        if (!engine.LastError().isEmpty())
            return Fail(Failure(engine));
        if (rest.contains(QLatin1String("--long"))) {
            QTextStream(stdout) << listing;
            return ExitDone;
        }
        for (const QString &name : NamesFromListing(listing)) {
            if (!name.isEmpty())
                PrintOut(name);
        }
        return ExitDone;
    }
    if (verb == QLatin1String("get") || verb == QLatin1String("put")) {
        ProgressLine line;
        engine.SetProgressHandler([&line](qint64 done, qint64 total) { line.Show(done, total); });
        const InterruptCancels interrupts([&engine] { engine.SetCancel(true); });
        bool done = false;
        if (verb == QLatin1String("get")) {
            QString destination = local.isEmpty() ? NameOf(target.path) : local;
            if (QFileInfo(destination).isDir())
                destination += u'/' + NameOf(target.path);
            done = engine.GetFile(target.path, destination);
        } else {
            const QString remote = target.path.endsWith(u'/') ? target.path + QFileInfo(local).fileName() : target.path;
            done = engine.PutFile(local, remote);
        }
        if (engine.Cancel())
            return Fail(QStringLiteral("cancelled; the file is incomplete"));
        return done ? ExitDone : Fail(Failure(engine));
    }
    bool done = false;
    if (verb == QLatin1String("mkdir"))
        done = engine.MakeDirectory(target.path);
    else if (verb == QLatin1String("rmdir"))
        done = engine.RemoveDirectory(target.path);
    else if (verb == QLatin1String("rm"))
        done = engine.RemoveFile(target.path);
    else if (verb == QLatin1String("rename"))
        done = engine.ChangeFileName(target.path, local.contains(u'/') ? local : FolderOf(target.path) + local);
    return done ? ExitDone : Fail(Failure(engine));
}

// How many arguments after the address each verb takes: at least, at most.
std::optional<std::pair<int, int>> ArgumentsOf(const QString &verb)
{
    if (verb == QLatin1String("ls"))
        return std::pair(0, 1);
    if (verb == QLatin1String("get"))
        return std::pair(0, 1);
    if (verb == QLatin1String("put") || verb == QLatin1String("rename"))
        return std::pair(1, 1);
    if (verb == QLatin1String("mkdir") || verb == QLatin1String("rmdir") || verb == QLatin1String("rm"))
        return std::pair(0, 0);
    return std::nullopt;
}

} // namespace

int RunFtp(const QStringList &arguments)
{
    if (WantsHelp(arguments)) {
        PrintOut(QStringLiteral("usage: ") + Usage);
        return ExitDone;
    }
    const QString verb = arguments.value(0);
    const std::optional<std::pair<int, int>> counts = ArgumentsOf(verb);
    if (!counts)
        return UsageError(verb.isEmpty() ? QStringLiteral("ftp needs a verb") : QStringLiteral("unknown verb \"%1\"").arg(verb), Usage);
    const QStringList rest = arguments.mid(2);
    if (arguments.size() < 2 || rest.size() < counts->first || rest.size() > counts->second)
        return UsageError(QStringLiteral("wrong number of arguments for ftp %1").arg(verb), Usage);
    if (verb == QLatin1String("ls") && !rest.isEmpty() && rest.first() != QLatin1String("--long"))
        return UsageError(QStringLiteral("ftp ls takes only --long after the address"), Usage);
    QString problem;
    std::optional<Target> target = ParseTarget(arguments.at(1), problem);
    if (!target)
        return UsageError(problem, Usage);
    if (verb != QLatin1String("ls") && (target->path.isEmpty() || target->path == QLatin1String("/")))
        return UsageError(QStringLiteral("ftp %1 needs a PATH in the address").arg(verb), Usage);
    if (target->user.isEmpty())
        target->user = QStringLiteral("anonymous");

    const std::optional<QString> password = Password(*target);
    if (!password)
        return Fail(QStringLiteral("no password: set ORVANA_FTP_PASSWORD or run on a terminal"));
    OrvFTPEngine engine;
    if (!engine.ConnectToServer(target->host, target->port, target->user, *password))
        return Fail(Failure(engine));
    const int status = RunVerb(engine, verb, *target, rest);
    engine.Disconnect();
    return status;
}
