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
    // The engines block while they wait, so the pipe is watched by a thread of its own; it ends
    // when the write end closes.
    watcher = std::thread([readEnd = pipeEnds[0], cancel = std::move(cancel)] {
        char byte = 0;
        while (read(readEnd, &byte, 1) == 1)
            cancel();
    });
    std::signal(SIGINT, OnInterrupt);
}

InterruptCancels::~InterruptCancels()
{
    std::signal(SIGINT, SIG_DFL);
    interruptPipe = -1;
    if (pipeEnds[1] >= 0)
        close(pipeEnds[1]);
    if (watcher.joinable())
        watcher.join();
    if (pipeEnds[0] >= 0)
        close(pipeEnds[0]);
}
