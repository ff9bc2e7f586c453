#include "ui/main/CommandIcons.h"

#include "app/Paths.h"

#include <QFileInfo>

QIcon CommandIcon(const QString &name)
{
    if (name.isEmpty())
        return {};
    const QString shipped = ResourcesFolder() + QStringLiteral("/icons/") + name + QStringLiteral(".svg");
    return QIcon::fromTheme(name, QFileInfo::exists(shipped) ? QIcon(shipped) : QIcon());
}
