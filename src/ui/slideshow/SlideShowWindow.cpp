#include "ui/slideshow/SlideShowWindow.h"

#include "app/Settings.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>

namespace {

constexpr int FadeMs = 600;
constexpr int DefaultSeconds = 5;

} // namespace

SlideShowWindow::Options SlideShowWindow::ReadOptions()
{
    const auto value = [](const char *key) { return ReadSetting(QStringLiteral("SlideShow"), QString::fromLatin1(key)); };
    Options options;
    const int seconds = SettingInteger(value("TimerInterval"));
    options.intervalMs = (seconds > 0 ? seconds : DefaultSeconds) * 1000;
    options.animate = SettingInteger(value("NoAnimation")) == 0;
    options.showNotes = SettingInteger(value("NoPhotoDescription")) == 0;
    return options;
}

SlideShowWindow::SlideShowWindow(QList<Slide> shown, const Options &chosen, QWidget *parent)
    : QWidget(parent, Qt::Window), slides(std::move(shown)), options(chosen)
{
    setObjectName(QStringLiteral("frmSlideShow"));
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setCursor(Qt::BlankCursor);
    setFocusPolicy(Qt::StrongFocus);
    timer.setInterval(options.intervalMs);
    connect(&timer, &QTimer::timeout, this, [this] { Step(1); });
    fade.setDuration(options.animate ? FadeMs : 0);
    fade.setStartValue(0.0);
    fade.setEndValue(1.0);
    connect(&fade, &QVariantAnimation::valueChanged, this, qOverload<>(&QWidget::update));
    connect(&pictures, &DetailPictures::Ready, this, [this](const QString &path) { PictureReady(path); });
    if (!slides.isEmpty())
        Request(0);
    timer.start();
}

QSize SlideShowWindow::Box() const
{
    // The screen's size, known before the window is shown full screen on it.
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen ? screen->size() * screen->devicePixelRatio() : QSize(1920, 1080);
}

void SlideShowWindow::Request(int index)
{
    wanted = index;
    const QImage picture = pictures.Picture(slides[index].path, Box());
    // The next one is decoded while this one is on show.
    if (index + 1 < slides.size())
        pictures.Picture(slides[index + 1].path, Box());
    if (!picture.isNull())
        ShowSlide(index);
}

void SlideShowWindow::PictureReady(const QString &path)
{
    if (wanted != current && wanted < slides.size() && slides[wanted].path == path)
        Request(wanted);
}

void SlideShowWindow::ShowSlide(int index)
{
    leaving = shown;
    shown = pictures.Picture(slides[index].path, Box());
    current = index;
    fade.stop();
    fade.start();
    update();
}

void SlideShowWindow::Step(int by)
{
    if (slides.isEmpty())
        return;
    // At the end the show starts again from the first photo.
    const int next = int((current + by + slides.size()) % slides.size());
    Request(next);
    if (!paused)
        timer.start();
}

void SlideShowWindow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const auto draw = [&](const QImage &image, double opacity) {
        if (image.isNull() || opacity <= 0)
            return;
        const QSize size = image.size().scaled(this->size(), Qt::KeepAspectRatio);
        painter.setOpacity(opacity);
        painter.drawImage(QRect(QPoint((width() - size.width()) / 2, (height() - size.height()) / 2), size), image);
    };
    const double progress = fade.state() == QAbstractAnimation::Running ? fade.currentValue().toDouble() : 1.0;
    draw(leaving, 1.0 - progress);
    draw(shown, progress);
    painter.setOpacity(1.0);
    if (options.showNotes && current >= 0 && !slides[current].note.isEmpty()) {
        QFont font = painter.font();
        font.setPixelSize(std::max(14, height() / 30));
        painter.setFont(font);
        const QRect band(0, height() - font.pixelSize() * 3, width(), font.pixelSize() * 2);
        painter.setPen(QColor(0, 0, 0, 180));
        painter.drawText(band.translated(1, 1), Qt::AlignCenter | Qt::TextWordWrap, slides[current].note);
        painter.setPen(Qt::white);
        painter.drawText(band, Qt::AlignCenter | Qt::TextWordWrap, slides[current].note);
    }
}

void SlideShowWindow::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
    case Qt::Key_Q:
        close();
        break;
    case Qt::Key_Space:
        paused = !paused;
        paused ? timer.stop() : timer.start();
        break;
    case Qt::Key_Right:
    case Qt::Key_Down:
    case Qt::Key_PageDown:
        Step(1);
        break;
    case Qt::Key_Left:
    case Qt::Key_Up:
    case Qt::Key_PageUp:
        Step(-1);
        break;
    case Qt::Key_Home:
        Step(-std::max(current, 0));
        break;
    case Qt::Key_End:
        Step(int(slides.size()) - 1 - std::max(current, 0));
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

void SlideShowWindow::mousePressEvent(QMouseEvent *)
{
    close();
}
