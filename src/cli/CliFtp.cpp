#include "cli/CliGroups.h"
#include "cli/CliOutput.h"
#include "cli/CliPassword.h"
#include "cli/CliProgress.h"

#include "net/FtpListing.h"
#include "net/OrvFTPEngine.h"

#include <QFileInfo>
#include <QTextStream>
#include <QUrl>

namespace {

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

std::optional<QString> Password(const Target &target)
{
    return FtpPassword(QStringLiteral("Password for %1@%2: ").arg(target.user, target.host));
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
int RunVerb(OrvFTPEngine &engine, const QString &verb, const Target &target, const QStringList &rest, bool longListing)
{
    const QString local = rest.value(0);
    if (verb == QLatin1String("ls")) {
        const QString listing = engine.List(target.path);
        if (!engine.LastError().isEmpty())
            return Fail(Failure(engine));
        if (longListing) {
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
        return std::pair(0, 0);
    if (verb == QLatin1String("get"))
        return std::pair(0, 1);
    if (verb == QLatin1String("put") || verb == QLatin1String("rename"))
        return std::pair(1, 1);
    if (verb == QLatin1String("mkdir") || verb == QLatin1String("rmdir") || verb == QLatin1String("rm"))
        return std::pair(0, 0);
    return std::nullopt;
}

int Ftp(const CliArguments &args)
{
    const QString verb = args.Verb();
    const std::optional<std::pair<int, int>> counts = ArgumentsOf(verb);
    const QStringList rest = args.positional.mid(1);
    if (!counts || args.positional.isEmpty() || rest.size() < counts->first || rest.size() > counts->second)
        return args.UsageError(QStringLiteral("wrong number of arguments for ftp %1").arg(verb));
    QString problem;
    std::optional<Target> target = ParseTarget(args.positional.at(0), problem);
    if (!target)
        return args.UsageError(problem);
    if (verb != QLatin1String("ls") && (target->path.isEmpty() || target->path == QLatin1String("/")))
        return args.UsageError(QStringLiteral("ftp %1 needs a PATH in the address").arg(verb));
    if (target->user.isEmpty())
        target->user = QStringLiteral("anonymous");

    const std::optional<QString> password = Password(*target);
    if (!password)
        return Fail(QStringLiteral("no password: set ORVANA_FTP_PASSWORD or run on a terminal"));
    OrvFTPEngine engine;
    if (!engine.ConnectToServer(target->host, target->port, target->user, *password))
        return Fail(Failure(engine));
    const int status = RunVerb(engine, verb, *target, rest, args.Has("--long"));
    engine.Disconnect();
    return status;
}

} // namespace

const CliGroup &FtpCommands()
{
    static const char *const Address = "ftp://USER@HOST[:PORT]/PATH";
    static const CliGroup group{
        "ftp",
        "files and folders on an FTP server",
        {
            {"ls", Address, "prints one name a line, folders too", {{"--long", nullptr, "the server's own listing instead"}}, Ftp},
            {"get", "ftp://USER@HOST[:PORT]/PATH [LOCAL]", "without LOCAL saves under the remote name in the current folder", {}, Ftp},
            {"put", "ftp://USER@HOST[:PORT]/PATH LOCAL", "to a PATH ending in \"/\" keeps the local name", {}, Ftp},
            {"mkdir", Address, "makes a folder", {}, Ftp},
            {"rmdir", Address, "removes an empty folder", {}, Ftp},
            {"rm", Address, "removes a file", {}, Ftp},
            {"rename", "ftp://USER@HOST[:PORT]/PATH NEWNAME", "a NEWNAME without \"/\" stays in the folder of PATH", {}, Ftp},
        },
        "Works on an FTP server in passive mode with binary transfers. The password comes from the\n"
        "variable ORVANA_FTP_PASSWORD, else it is asked for on the terminal; never put it in the address.",
    };
    return group;
}
