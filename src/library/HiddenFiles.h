#pragma once

#include <QSet>
#include <QString>

// Hidden files as the common Linux file managers understand them: a name starting with ".", or
// a name listed in its folder's ".hidden" file.
bool IsHidden(const QString &path);
// The names a folder's ".hidden" file lists, read once for a whole folder.
QSet<QString> HiddenNames(const QString &folder);
// Adds the name to its folder's ".hidden" file; errors are ignored.
void SetHidden(const QString &path);
