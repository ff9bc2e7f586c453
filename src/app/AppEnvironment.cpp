#include "app/AppEnvironment.h"

#include <QCoreApplication>
#include <QDir>
#include <QLocale>
#include <QStandardPaths>

namespace {

std::shared_ptr<const AppEnvironment> &Current()
{
    static std::shared_ptr<const AppEnvironment> environment = std::make_shared<SystemEnvironment>();
    return environment;
}

} // namespace

QString SystemEnvironment::DocumentsFolder() const
{
    QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (documents.isEmpty())
        documents = QDir::homePath();
    return QDir::cleanPath(documents);
}

QString SystemEnvironment::InstallFolder() const
{
    return QCoreApplication::applicationDirPath();
}

QString SystemEnvironment::SystemLocaleName() const
{
    return QLocale::system().name();
}

QDate SystemEnvironment::Today() const
{
    return QDate::currentDate();
}

QString SystemEnvironment::ApplicationsFolder() const
{
    return QStandardPaths::writableLocation(QStandardPaths::ApplicationsLocation);
}

const AppEnvironment &Environment()
{
    return *Current();
}

std::shared_ptr<const AppEnvironment> SetEnvironment(std::shared_ptr<const AppEnvironment> environment)
{
    std::swap(Current(), environment);
    return environment;
}
