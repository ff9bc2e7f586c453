#pragma once

#include <QString>

// The outcome of an internal step that can fail: callers that must report a failure get its
// reason; callers whose contract is to swallow errors simply ignore it.
struct Result {
    bool ok = true;
    QString message;

    static Result Success() { return {}; }
    static Result Failure(const QString &why) { return {false, why}; }
    explicit operator bool() const { return ok; }
};
