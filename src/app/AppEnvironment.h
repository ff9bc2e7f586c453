#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <memory>

// What the program learns from the machine it runs on. Every reader goes through the current
// environment on each call, so tests (and orvana-cli) can substitute their own without any
// value being cached along the way.
class AppEnvironment {
public:
    virtual ~AppEnvironment() = default;

    virtual QString DocumentsFolder() const = 0;
    // The folder of the running executable (AppPath).
    virtual QString InstallFolder() const = 0;
    // The system's locale name, such as "zh_TW" or "en_GB".
    virtual QString SystemLocaleName() const = 0;
    virtual QDate Today() const = 0;
    // Where desktop entries of the user live (~/.local/share/applications).
    virtual QString ApplicationsFolder() const = 0;
    // The roots of the mounted volumes a camera, a card or a phone can appear as.
    virtual QStringList MountedVolumes() const = 0;
};

// The real machine, through QStandardPaths, QLocale and the clock.
class SystemEnvironment : public AppEnvironment {
public:
    QString DocumentsFolder() const override;
    QString InstallFolder() const override;
    QString SystemLocaleName() const override;
    QDate Today() const override;
    QString ApplicationsFolder() const override;
    QStringList MountedVolumes() const override;
};

const AppEnvironment &Environment();

// Replaces the process-wide environment; returns the previous one.
std::shared_ptr<const AppEnvironment> SetEnvironment(std::shared_ptr<const AppEnvironment> environment);
