#include "ui/SplashWindow.h"

#include "ui/main/AboutWindow.h"
#include "app/Language.h"
#include "app/Paths.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QLabel>
#include <QPixmap>
#include <QScreen>
#include <QVBoxLayout>

namespace {

constexpr int FadeStepMs = 20;
constexpr double FadeStep = 0.08;

// A language may ship its own picture; English's is the fallback. Without either, the splash
// shows what the about window shows.
QString SplashPicture()
{
    QString localised = ResourcesFolder() + u'/' + CurrentLanguage() + QStringLiteral("/OrvWelcome.jpg");
    if (QFileInfo::exists(localised))
        return localised;
    return ResourcesFolder() + QStringLiteral("/English/OrvWelcome.jpg");
}

} // namespace

SplashWindow::SplashWindow(QWidget *parent)
    : QWidget(parent, Qt::SplashScreen | Qt::FramelessWindowHint)
{
    setObjectName(QStringLiteral("SplashWindow"));
    auto *layout = new QVBoxLayout(this);
    const QPixmap pixmap(SplashPicture());
    if (!pixmap.isNull()) {
        auto *picture = new QLabel(this);
        picture->setPixmap(pixmap);
        picture->setAlignment(Qt::AlignCenter);
        layout->addWidget(picture);
    } else {
        layout->setContentsMargins(48, 32, 48, 32);
        layout->addWidget(new AboutPanel(this));
    }
    adjustSize();
    if (const QScreen *screen = QGuiApplication::primaryScreen())
        move(screen->availableGeometry().center() - rect().center());
    setWindowOpacity(0.0);
    connect(&fade, &QTimer::timeout, this, [this] {
        setWindowOpacity(std::min(1.0, windowOpacity() + FadeStep));
        if (windowOpacity() >= 1.0)
            fade.stop();
    });
    fade.start(FadeStepMs);
}

void SplashWindow::NormalShow()
{
    fade.stop();
    setWindowOpacity(1.0);
    show();
}
