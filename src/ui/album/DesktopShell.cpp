#include "ui/album/DesktopShell.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusUnixFileDescriptor>
#include <QDesktopServices>
#include <QFile>
#include <QFileInfo>
#include <QUrl>
#include <QVariantMap>

#include <functional>

#include <fcntl.h>
#include <unistd.h>

namespace {

// Sends the call; when it fails (no such service, refused), runs the fallback instead.
void CallOr(const QDBusMessage &call, QObject *context, const std::function<void()> &fallback)
{
    auto *watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context, [watcher, fallback] {
        if (watcher->isError())
            fallback();
        watcher->deleteLater();
    });
}

} // namespace

namespace DesktopShell {

void OpenFolder(const QString &path)
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

void OpenWithDefault(const QString &path)
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

void ShowFile(const QString &path, QObject *context)
{
    const QString folder = QFileInfo(path).absolutePath();
    if (!QDBusConnection::sessionBus().isConnected()) {
        OpenFolder(folder);
        return;
    }
    QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.FileManager1"),
                                                       QStringLiteral("/org/freedesktop/FileManager1"),
                                                       QStringLiteral("org.freedesktop.FileManager1"),
                                                       QStringLiteral("ShowItems"));
    call << QStringList{QUrl::fromLocalFile(path).toString()} << QString();
    CallOr(call, context, [folder] { OpenFolder(folder); });
}

void OpenWithChosen(const QString &path, QObject *context)
{
    // The portal takes the file as an open descriptor, which also works from a sandbox.
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0 || !QDBusConnection::sessionBus().isConnected()) {
        if (descriptor >= 0)
            ::close(descriptor);
        OpenWithDefault(path);
        return;
    }
    QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.portal.Desktop"),
                                                       QStringLiteral("/org/freedesktop/portal/desktop"),
                                                       QStringLiteral("org.freedesktop.portal.OpenURI"),
                                                       QStringLiteral("OpenFile"));
    QVariantMap options;
    options.insert(QStringLiteral("ask"), true);
    call << QString() << QVariant::fromValue(QDBusUnixFileDescriptor(descriptor)) << options;
    ::close(descriptor); // the message holds its own duplicate
    CallOr(call, context, [path] { OpenWithDefault(path); });
}

void SetWallpaper(const QString &path, QObject *context, const std::function<void()> &failed)
{
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0 || !QDBusConnection::sessionBus().isConnected()) {
        if (descriptor >= 0)
            ::close(descriptor);
        failed();
        return;
    }
    QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.portal.Desktop"),
                                                       QStringLiteral("/org/freedesktop/portal/desktop"),
                                                       QStringLiteral("org.freedesktop.portal.Wallpaper"),
                                                       QStringLiteral("SetWallpaperFile"));
    QVariantMap options;
    options.insert(QStringLiteral("show-preview"), true);
    options.insert(QStringLiteral("set-on"), QStringLiteral("background"));
    call << QString() << QVariant::fromValue(QDBusUnixFileDescriptor(descriptor)) << options;
    ::close(descriptor); // the message holds its own duplicate
    CallOr(call, context, failed);
}

} // namespace DesktopShell
