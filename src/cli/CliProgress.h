#pragma once

#include <QElapsedTimer>
#include <QtGlobal>

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

// Until it is destroyed, Ctrl-C calls `cancel` (which must be safe in a signal handler, such as
// storing to a lock-free atomic) instead of ending the program, so that a transfer can stop and
// say so.
class InterruptCancels {
public:
    explicit InterruptCancels(void (*cancel)());
    ~InterruptCancels();
    InterruptCancels(const InterruptCancels &) = delete;
    InterruptCancels &operator=(const InterruptCancels &) = delete;
};
