#include "CliProgress.h"

#include <QLocale>
#include <QTextStream>
#include <csignal>
#include <unistd.h>

namespace {

constexpr qint64 RedrawMs = 200;

void (*interruptAction)() = nullptr;

extern "C" void OnInterrupt(int)
{
    if (interruptAction)
        interruptAction();
}

} // namespace

ProgressLine::ProgressLine()
    : enabled(isatty(STDERR_FILENO) == 1)
{
}

ProgressLine::~ProgressLine()
{
    if (drawn)
        QTextStream(stderr) << '\n';
}

void ProgressLine::Show(qint64 done, qint64 total)
{
    if (!enabled || (sinceDrawn.isValid() && sinceDrawn.elapsed() < RedrawMs && done != total))
        return;
    sinceDrawn.start();
    drawn = true;
    const QLocale locale = QLocale::c();
    QString line = locale.formattedDataSize(done);
    if (total >= 0)
        line += QStringLiteral(" of %1").arg(locale.formattedDataSize(total));
    QTextStream(stderr) << '\r' << line << QStringLiteral("   ") << Qt::flush;
}

InterruptCancels::InterruptCancels(void (*cancel)())
{
    interruptAction = cancel;
    std::signal(SIGINT, OnInterrupt);
}

InterruptCancels::~InterruptCancels()
{
    std::signal(SIGINT, SIG_DFL);
    interruptAction = nullptr;
}
