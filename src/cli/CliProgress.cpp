#include "cli/CliProgress.h"

#include <QLocale>
#include <QTextStream>
#include <csignal>
#include <unistd.h>

namespace {

constexpr qint64 RedrawMs = 200;

int interruptPipe = -1;

extern "C" void OnInterrupt(int)
{
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = write(interruptPipe, &byte, 1);
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

InterruptCancels::InterruptCancels(std::function<void()> cancel)
{
    if (pipe(pipeEnds) != 0)
        return;
    interruptPipe = pipeEnds[1];
    notifier = std::make_unique<QSocketNotifier>(pipeEnds[0], QSocketNotifier::Read);
    QObject::connect(notifier.get(), &QSocketNotifier::activated, [this, cancel = std::move(cancel)] {
        char byte = 0;
        [[maybe_unused]] const ssize_t taken = read(pipeEnds[0], &byte, 1);
        cancel();
    });
    std::signal(SIGINT, OnInterrupt);
}

InterruptCancels::~InterruptCancels()
{
    std::signal(SIGINT, SIG_DFL);
    interruptPipe = -1;
    notifier.reset();
    for (const int end : pipeEnds) {
        if (end >= 0)
            close(end);
    }
}
