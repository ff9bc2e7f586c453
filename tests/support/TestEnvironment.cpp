#include "TestEnvironment.h"

#include "app/Language.h"
#include "app/RecentDocs.h"

#include <QDir>
#include <QFile>
#include <QTest>

ScopedTestEnvironment::ScopedTestEnvironment()
    : environment(std::make_shared<FakeEnvironment>())
{
    environment->documents = root.path() + QStringLiteral("/Documents");
    environment->install = root.path() + QStringLiteral("/install");
    environment->applications = root.path() + QStringLiteral("/applications");
    QDir().mkpath(environment->documents);
    QDir().mkpath(environment->install);
    QFile::link(QStringLiteral(ORVANA_SOURCE_DIR "/resources"), environment->install + QStringLiteral("/Resources"));
    previous = SetEnvironment(environment);
    SetCurrentLanguage(QString());
    RecentDocs().Clear();
}

ScopedTestEnvironment::~ScopedTestEnvironment()
{
    SetEnvironment(previous);
    SetCurrentLanguage(QString());
    RecentDocs().Clear();
}

QString ScopedTestEnvironment::UserData() const
{
    return environment->documents + QStringLiteral("/Orvana User Data");
}

QString ScopedTestEnvironment::SettingsPath() const
{
    return UserData() + QStringLiteral("/Orvana.ini");
}

void ScopedTestEnvironment::UseLanguageFiles(const QMap<QString, QByteArray> &files)
{
    const QString resources = environment->install + QStringLiteral("/Resources");
    QFile::remove(resources);
    for (auto it = files.begin(); it != files.end(); ++it) {
        QDir().mkpath(resources + u'/' + it.key());
        WriteAll(resources + u'/' + it.key() + QStringLiteral("/Localizable.ini"), it.value());
    }
    QDir().mkpath(resources);
}

QByteArray ReadAll(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

void WriteAll(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        QFAIL(qPrintable(QStringLiteral("cannot write ") + path));
}
