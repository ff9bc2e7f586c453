#pragma once

#include "app/AppEnvironment.h"

#include <QDate>
#include <QMap>
#include <QTemporaryDir>
#include <memory>

// A machine of the test's own: Documents, install and applications folders in a temporary
// directory, a chosen locale and date. The install folder's Resources are the program's real ones
// unless a test writes language files of its own.
class FakeEnvironment : public AppEnvironment {
public:
    QString documents;
    QString install;
    QString applications;
    QString locale = QStringLiteral("en_US");
    QDate today = QDate(2026, 11, 22);
    QStringList volumes;

    QString DocumentsFolder() const override { return documents; }
    QString InstallFolder() const override { return install; }
    QString SystemLocaleName() const override { return locale; }
    QDate Today() const override { return today; }
    QString ApplicationsFolder() const override { return applications; }
    QStringList MountedVolumes() const override { return volumes; }
};

class ScopedTestEnvironment {
public:
    ScopedTestEnvironment();
    ~ScopedTestEnvironment();
    ScopedTestEnvironment(const ScopedTestEnvironment &) = delete;
    ScopedTestEnvironment &operator=(const ScopedTestEnvironment &) = delete;

    FakeEnvironment &Env() { return *environment; }
    QString Root() const { return root.path(); }
    QString UserData() const;
    QString SettingsPath() const;

    // Replaces the shipped resources by language files holding exactly these texts
    // (language folder -> file content).
    void UseLanguageFiles(const QMap<QString, QByteArray> &files);

private:
    QTemporaryDir root;
    std::shared_ptr<FakeEnvironment> environment;
    std::shared_ptr<const AppEnvironment> previous;
};

QByteArray ReadAll(const QString &path);
void WriteAll(const QString &path, const QByteArray &content);
