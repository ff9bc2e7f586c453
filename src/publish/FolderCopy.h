#pragma once

#include "app/Result.h"

#include <QString>

class ProgressSink;

// Copies a folder and everything in it to `target`, which must not exist yet; stops between
// files when cancelled. What was copied stays.
Result CopyFolder(const QString &source, const QString &target, ProgressSink &progress);

// The first of "<base>.data", "<base> (1).data", "<base> (2).data" ... in `folder` that names
// nothing yet; with `reuseFirst` the first name whether free or not.
QString FreeDataFolderName(const QString &folder, const QString &base, bool reuseFirst);
