#pragma once

#include "datalist/DataList.h"
#include "app/Result.h"

#include <QString>
#include <functional>

class Prompter;

// Stores that matter keep their previous version as name + ".bak": it is made before every save,
// and read in place of a file that exists but no longer loads.
namespace StoreFiles {

QString BackupPath(const QString &path);

// Keeps the file at path (when there is one) as its backup, then writes it anew with write.
// The old version is copied rather than renamed, so that a failed write never leaves the store
// without its file.
Result SaveWithBackup(const QString &path, const std::function<bool(const QString &path, QString *error)> &write);

// Moves a finished file into place, keeping what was there as its backup.
Result ReplaceWithBackup(const QString &finished, const QString &path);

// Loads path with load(); when the file exists but fails and a backup exists, tells the user the
// localised DataFileError through the prompter and loads the backup instead; only a backup that
// loads is copied over the damaged file. A missing file is Unreadable, and nothing is said; a
// damaged file without a usable backup is left exactly as it is, and its failure returned.
DataList::LoadResult LoadWithBackup(const QString &path, const std::function<DataList::LoadResult(const QString &from)> &load,
                                    Prompter *prompter);

} // namespace StoreFiles
