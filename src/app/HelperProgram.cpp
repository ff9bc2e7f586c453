#include "app/HelperProgram.h"

#include "app/Paths.h"

#include <QFileInfo>
#include <QStandardPaths>

QString HelperProgram(const QString &name)
{
    QString shipped = ResourcesFolder() + u'/' + name;
    if (QFileInfo(shipped).isExecutable())
        return shipped;
    const QString onPath = QStandardPaths::findExecutable(name);
    return onPath.isEmpty() ? name : onPath;
}
