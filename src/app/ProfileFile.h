#pragma once

#include "Result.h"

#include <QString>

// An INI file read and written one value at a time, never held open. A write goes to a temporary
// file that is then renamed over the old one, so a crash or a full disk never leaves half a file;
// a new file is readable by its owner only, because it holds passwords.
namespace ProfileFile {

QString ReadString(const QString &path, const QString &section, const QString &key);

Result WriteString(const QString &path, const QString &section, const QString &key,
                   const QString &value);

} // namespace ProfileFile
