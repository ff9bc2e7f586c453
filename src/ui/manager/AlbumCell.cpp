#include "ui/manager/AlbumCell.h"

#include "library/AlbumFormat.h"

#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QRandomGenerator>
#include <QTimer>

OrvAlbumCell::OrvAlbumCell(QWidget *parent) : QWidget(parent), timer(new QTimer(this))
{
    setObjectName(QStringLiteral("OrvAlbumCell"));
    setFixedSize(CellSize());
    // The cells of a folder step out of time with each other, so the grid does not flash at once.
    timer->setInterval(StepMs + static_cast<int>(QRandomGenerator::global()->bounded(StepMs / 2)));
    connect(timer, &QTimer::timeout, this, &OrvAlbumCell::Step);
}

void OrvAlbumCell::SetAlbumPath(const QString &path)
{
    albumPath = path;
    name = AlbumTitleFromPath(path);
    photos.clear();
    next = 0;
    picture = QImage();
    timer->stop();
    setToolTip(path);
    update();
}

void OrvAlbumCell::AddPhotoFile(const QString &file)
{
    photos << file;
    if (photos.size() == 1)
        Step(); // the first picture at once
    else if (!timer->isActive())
        timer->start();
}

void OrvAlbumCell::SetAlbumInfo(const QString &text)
{
    info = text;
    update();
}

void OrvAlbumCell::SelectCell(bool on)
{
    selected = on;
    update();
}

void OrvAlbumCell::SetImage(const QString &file, const QImage &image)
{
    if (file != asked)
        return;
    picture = image;
    update();
}

void OrvAlbumCell::Step()
{
    // A cell out of view keeps its picture: nothing is decoded for what nobody sees.
    if (photos.isEmpty() || (HasImage() && visibleRegion().isEmpty()))
        return;
    asked = photos[next];
    next = (next + 1) % photos.size();
    emit ImageWanted(this, asked);
}

void OrvAlbumCell::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRect frame = rect().adjusted(1, 1, -2, -2);
    painter.fillRect(frame, selected ? palette().highlight() : palette().base());
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(frame);
    const QRect pictureArea((width() - PictureSize().width()) / 2, 6, PictureSize().width(), PictureSize().height());
    if (!picture.isNull()) {
        const QSize shown = picture.size().scaled(pictureArea.size(), Qt::KeepAspectRatio);
        painter.drawImage(QRect(pictureArea.center() - QPoint(shown.width() / 2, shown.height() / 2), shown), picture);
    } else {
        painter.fillRect(pictureArea, palette().alternateBase());
    }
    painter.setPen(palette().color(selected ? QPalette::HighlightedText : QPalette::Text));
    const int textTop = pictureArea.bottom() + 4;
    const QFontMetrics metrics(font());
    painter.drawText(QRect(4, textTop, width() - 8, metrics.height()), Qt::AlignCenter,
                     metrics.elidedText(name, Qt::ElideMiddle, width() - 8));
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * 0.85);
    painter.setFont(small);
    painter.drawText(QRect(4, textTop + metrics.height(), width() - 8, metrics.height()), Qt::AlignCenter,
                     QFontMetrics(small).elidedText(info, Qt::ElideRight, width() - 8));
}

void OrvAlbumCell::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton || event->button() == Qt::RightButton)
        emit Clicked(this);
}

void OrvAlbumCell::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        emit Activated(this);
}

void OrvAlbumCell::contextMenuEvent(QContextMenuEvent *event)
{
    emit MenuWanted(this, event->globalPos());
}
