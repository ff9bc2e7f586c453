#include "cli/CliGroups.h"
#include "cli/CliOutput.h"
#include "cli/CliProgress.h"

#include "net/OrvHTTPEngine.h"

#include <QTextStream>
#include <QUrl>

namespace {

int Get(const CliArguments &args)
{
    const QStringList &rest = args.positional;
    if (rest.size() != 2)
        return args.UsageError(QStringLiteral("http get takes an address and OUT"));
    const QUrl url(rest.at(0));
    if (!url.isValid() || url.scheme() != QLatin1String("http") || url.host().isEmpty())
        return args.UsageError(QStringLiteral("\"%1\" is not an http://HOST/PATH address").arg(rest.at(0)));
    QString path = url.path(QUrl::FullyEncoded);
    if (path.isEmpty())
        path = QStringLiteral("/");
    if (url.hasQuery())
        path += u'?' + url.query(QUrl::FullyEncoded);

    OrvHTTPEngine engine;
    ProgressLine line;
    engine.SetProgressHandler([&line](qint64 done, qint64 total) { line.Show(done, total); });
    const InterruptCancels interrupts([&engine] { engine.SetCancel(true); });
    const bool done = engine.HTTPGet(url.host(), url.port(80), path, rest.at(1));
    if (!done)
        return Fail(engine.LastError());
    if (args.Has("--headers"))
        QTextStream(stdout) << engine.LastResponse() << '\n';
    return engine.Cancel() ? Fail(QStringLiteral("cancelled; the file is incomplete")) : ExitDone;
}

} // namespace

const CliGroup &HttpCommands()
{
    static const CliGroup group{
        "http",
        "one resource into a file",
        {{"get", "http://HOST[:PORT]/PATH OUT",
          "Fetches one resource over HTTP/1.0 into OUT, whatever the status: an error page is stored like any other content.",
          {{"--headers", nullptr, "prints the response's status and header lines"}},
          Get}},
    };
    return group;
}
