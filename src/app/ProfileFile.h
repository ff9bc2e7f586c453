#pragma once

#include "app/Result.h"

#include <QString>

// An INI file read and written one value at a time, never held open. A write goes to a temporary
// file that is then renamed over the old one, so a crash or a full disk never leaves half a file;
// a new file is readable by its owner only, because it holds passwords. Writers, in this process
// or another, take turns through a lock file beside the file ("Orvana.ini.lock"), and each rereads
// the file under the lock, so a write replaces its own key and keeps every key written meanwhile.
// A file that exists but cannot be read is never written over.
namespace ProfileFile {

QString ReadString(const QString &path, const QString &section, const QString &key);

Result WriteString(const QString &path, const QString &section, const QString &key,
                   const QString &value);

// Writes the whole content, under the same lock, only when there is no file yet.
Result CreateIfMissing(const QString &path, const QByteArray &content);

} // namespace ProfileFile
