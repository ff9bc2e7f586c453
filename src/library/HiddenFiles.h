#pragma once

#include <QString>

// Hidden files as the common Linux file managers understand them: a name starting with ".", or
// a name listed in its folder's ".hidden" file.
bool IsHidden(const QString &path);
// Adds the name to its folder's ".hidden" file; errors are ignored.
void SetHidden(const QString &path);
