#include "ui/SplashWindow.h"

#include "app/Language.h"
#include "app/Paths.h"
#include "app/Version.h"

#include <QFileInfo>
#include <QLabel>
#include <QPixmap>
#include <QVBoxLayout>

namespace {

constexpr int FadeStepMs = 20;
constexpr double FadeStep = 0.08;

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
    auto *picture = new QLabel(this);
    const QPixmap pixmap(SplashPicture());
    if (!pixmap.isNull()) {
        picture->setPixmap(pixmap);
    } else {
        picture->setText(QStringLiteral("<h1>Orvana</h1><p>%1</p>").arg(QLatin1String(OrvanaVersion)));
        picture->setMargin(40);
    }
    picture->setAlignment(Qt::AlignCenter);
    layout->addWidget(picture);
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
