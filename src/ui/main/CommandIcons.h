#pragma once

#include <QIcon>
#include <QString>

// The desktop theme's icon of that freedesktop name, else the one shipped in Resources/icons.
QIcon CommandIcon(const QString &name);
