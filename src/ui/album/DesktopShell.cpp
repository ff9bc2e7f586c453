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

// A portal method taking (parent window, file, options): the file goes as an open descriptor,
// which also works from a sandbox. Without a session bus, or when the portal fails, `fallback`.
void CallPortalWithFile(const QString &interface, const QString &method, const QString &path, const QVariantMap &options,
                        QObject *context, const std::function<void()> &fallback)
{
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0 || !QDBusConnection::sessionBus().isConnected()) {
        if (descriptor >= 0)
            ::close(descriptor);
        fallback();
        return;
    }
    QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.portal.Desktop"),
                                                       QStringLiteral("/org/freedesktop/portal/desktop"), interface, method);
    call << QString() << QVariant::fromValue(QDBusUnixFileDescriptor(descriptor)) << options;
    ::close(descriptor); // the message holds its own duplicate
    CallOr(call, context, fallback);
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
    QVariantMap options;
    options.insert(QStringLiteral("ask"), true);
    const auto fallback = [path] { OpenWithDefault(path); };
    CallPortalWithFile(QStringLiteral("org.freedesktop.portal.OpenURI"), QStringLiteral("OpenFile"), path, options, context, fallback);
}

void SetWallpaper(const QString &path, QObject *context, const std::function<void()> &failed)
{
    QVariantMap options;
    options.insert(QStringLiteral("show-preview"), true);
    options.insert(QStringLiteral("set-on"), QStringLiteral("background"));
    CallPortalWithFile(QStringLiteral("org.freedesktop.portal.Wallpaper"), QStringLiteral("SetWallpaperFile"), path, options, context,
                       failed);
}

} // namespace DesktopShell
