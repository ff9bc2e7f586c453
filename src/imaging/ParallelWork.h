#pragma once

#include <QtGlobal>
#include <functional>

// Calls work(0) .. work(count - 1) on one thread per core, each index once, and returns when
// all are done. Items are handed out one at a time, so a slow item does not hold the others.
void RunInParallel(qsizetype count, const std::function<void(qsizetype)> &work);
