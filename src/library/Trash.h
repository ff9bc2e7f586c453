#pragma once

#include "app/Result.h"

#include <QString>

// Moves a file to the desktop's trash, where the user can restore it.
Result MoveToTrash(const QString &path);
