#include "CliOutput.h"
#include "CliProgress.h"

#include "OrvHTTPEngine.h"

#include <QTextStream>
#include <QUrl>

namespace {

const QString Usage = QStringLiteral(
    "orvana-cli http get http://HOST[:PORT]/PATH OUT [--headers]\n"
    "Fetches one resource over HTTP/1.0 into OUT, whatever the status: an error page is stored\n"
    "like any other content. --headers prints the response's status and header lines.");


} // namespace

int RunHttp(const QStringList &arguments)
{
    if (WantsHelp(arguments)) {
        PrintOut(QStringLiteral("usage: ") + Usage);
        return ExitDone;
    }
    QStringList rest = arguments;
    const bool headers = rest.removeAll(QStringLiteral("--headers")) > 0;
    if (rest.value(0) != QLatin1String("get"))
        return UsageError(rest.isEmpty() ? QStringLiteral("http needs a verb") : QStringLiteral("unknown verb \"%1\"").arg(rest.first()), Usage);
    if (rest.size() != 3)
        return UsageError(QStringLiteral("http get takes an address and OUT"), Usage);
    const QUrl url(rest.at(1));
    if (!url.isValid() || url.scheme() != QLatin1String("http") || url.host().isEmpty())
        return UsageError(QStringLiteral("\"%1\" is not an http://HOST/PATH address").arg(rest.at(1)), Usage);
    QString path = url.path(QUrl::FullyEncoded);
    if (path.isEmpty())
        path = QStringLiteral("/");
    if (url.hasQuery())
        path += u'?' + url.query(QUrl::FullyEncoded);

    OrvHTTPEngine engine;
    ProgressLine line;
    engine.SetProgressHandler([&line](qint64 done, qint64 total) { line.Show(done, total); });
    const InterruptCancels interrupts([&engine] { engine.SetCancel(true); });
    const bool done = engine.HTTPGet(url.host(), url.port(80), path, rest.at(2));
    if (!done)
        return Fail(engine.LastError());
    if (headers)
        QTextStream(stdout) << engine.LastResponse() << '\n';
    return engine.Cancel() ? Fail(QStringLiteral("cancelled; the file is incomplete")) : ExitDone;
}
