#pragma once

#include <QElapsedTimer>
#include <thread>
#include <QtGlobal>
#include <functional>
#include <memory>

// A progress line on stderr for long work, drawn only when stderr is a terminal (scripts and
// logs get no carriage-return noise) and redrawn at most a few times a second.
class ProgressLine {
public:
    ProgressLine();
    ~ProgressLine();
    ProgressLine(const ProgressLine &) = delete;
    ProgressLine &operator=(const ProgressLine &) = delete;

    // `total` is -1 when unknown.
    void Show(qint64 done, qint64 total);

private:
    bool enabled;
    bool drawn = false;
    QElapsedTimer sinceDrawn;
};

// Until it is destroyed, Ctrl-C calls `cancel` instead of ending the program, so that a transfer
// can stop and say so. The signal only writes to a pipe; `cancel` runs on a thread that watches
// it, so it must be safe to call from any thread (the engines' SetCancel is).
class InterruptCancels {
public:
    explicit InterruptCancels(std::function<void()> cancel);
    ~InterruptCancels();
    InterruptCancels(const InterruptCancels &) = delete;
    InterruptCancels &operator=(const InterruptCancels &) = delete;

private:
    int pipeEnds[2] = {-1, -1};
    std::thread watcher;
};
