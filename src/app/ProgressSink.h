#pragma once

#include <QString>
#include <QtGlobal>

// Told how a long operation is going, and asked whether the user has cancelled it. The windows
// show a progress window with a Cancel button, orvana-cli a line on stderr, tests nothing. Calls
// come from the thread doing the work; keep them quick.
class ProgressSink {
public:
    virtual ~ProgressSink() = default;
    // A new stage of the work, with its localised title ("Matching", ...).
    virtual void Begin(const QString &title) { (void)title; }
    // done of total units; total is -1 when it is not known.
    virtual void Progress(qint64 done, qint64 total) = 0;
    virtual bool Cancelled() const = 0;
};
