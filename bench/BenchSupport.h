#pragma once

// What the benchmark programs share: a prompter that answers nothing, and best-of-N timing.
#include "app/Prompter.h"

#include <QElapsedTimer>
#include <algorithm>

class NoQuestions : public Prompter {
public:
    bool AskYesNo(const QString &, const QString &) override { return false; }
    void Inform(const QString &, const QString &) override {}
    void Error(const QString &, const QString &) override {}
    std::optional<QString> AskText(const QString &, const QString &, const QString &) override { return std::nullopt; }
};

// The shortest of `runs` runs of the work, in milliseconds.
template <typename Work>
double BestMs(int runs, Work work)
{
    double best = 1e18;
    for (int run = 0; run < runs; ++run) {
        QElapsedTimer clock;
        clock.start();
        work();
        best = std::min(best, clock.nsecsElapsed() / 1e6);
    }
    return best;
}
