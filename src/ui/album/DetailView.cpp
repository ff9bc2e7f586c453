#include "ui/album/DetailView.h"

#include "ui/album/AlbumRoles.h"
#include "ui/album/DetailPictures.h"

#include "app/Language.h"

#include <QAbstractItemModel>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>

#include <algorithm>

// The picture, drawn centred; scaled down when the view is smaller than the decoded picture
// (while a resize waits for its decode), never up.
class PictureCanvas : public QWidget {
public:
    using QWidget::QWidget;
    void SetImage(const QImage &shown)
    {
        image = shown;
        update();
    }
    const QImage &Image() const { return image; }

protected:
    void paintEvent(QPaintEvent *) override
    {
        if (image.isNull())
            return;
        QPainter painter(this);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        const qreal ratio = devicePixelRatioF();
        const QSize logical = (QSizeF(image.size()) / ratio).toSize();
        const QSize shown = logical.scaled(size(), Qt::KeepAspectRatio).boundedTo(logical);
        painter.drawImage(QRect(QPoint((width() - shown.width()) / 2, (height() - shown.height()) / 2), shown), image);
    }

private:
    QImage image;
};

namespace {

// The facts beside the photo, in the order they are shown; the camera joins maker and model.
const QStringList &FactKeys()
{
    static const QStringList keys = {
        QStringLiteral("CaptureDate"), QStringLiteral("CameraModel"), QStringLiteral("Aperture"),
        QStringLiteral("ShutterSpeed"), QStringLiteral("FocalLength"), QStringLiteral("ISOSpeed"),
        QStringLiteral("Flash"), QStringLiteral("Latitude"), QStringLiteral("Longitude"), QStringLiteral("Elevation"),
    };
    return keys;
}

QString FactValue(const QVariantMap &record, const QString &key)
{
    if (key != QLatin1String("CameraModel"))
        return record.value(key).toString();
    const QString maker = record.value(QStringLiteral("CameraMaker")).toString().trimmed();
    QString model = record.value(key).toString().trimmed();
    // Many models already start with their maker's name.
    if (maker.isEmpty() || model.startsWith(maker, Qt::CaseInsensitive))
        return model;
    return model.isEmpty() ? maker : maker + u' ' + model;
}

} // namespace

OrvDetailView::OrvDetailView(QWidget *parent)
    : QWidget(parent), pictures(new DetailPictures(this)), scroller(new QScrollArea(this)), canvas(new PictureCanvas),
      fileName(new QLabel(this)), facts(new QFormLayout)
{
    setObjectName(QStringLiteral("OrvDetailView"));
    setFocusPolicy(Qt::StrongFocus);
    scroller->setWidget(canvas);
    scroller->setWidgetResizable(true);
    scroller->setAlignment(Qt::AlignCenter);
    scroller->setFrameShape(QFrame::NoFrame);
    scroller->setFocusPolicy(Qt::NoFocus);
    scroller->viewport()->installEventFilter(this);
    canvas->installEventFilter(this);
    canvas->setBackgroundRole(QPalette::Dark);
    canvas->setAutoFillBackground(true);

    auto *side = new QWidget(this);
    auto *sideLayout = new QVBoxLayout(side);
    fileName->setWordWrap(true);
    QFont bold = fileName->font();
    bold.setBold(true);
    fileName->setFont(bold);
    sideLayout->addWidget(fileName);
    for (const QString &key : FactKeys()) {
        auto *value = new QLabel(side);
        value->setObjectName(key);
        value->setTextInteractionFlags(Qt::TextSelectableByMouse);
        value->setWordWrap(true);
        facts->addRow(GetLocalizedString(key, QStringLiteral("InfoList")), value);
    }
    sideLayout->addLayout(facts);
    sideLayout->addStretch();
    side->setFixedWidth(240);

    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(scroller, 1);
    layout->addWidget(side);

    connect(pictures, &DetailPictures::Ready, this, &OrvDetailView::PictureReady);
    resized.setSingleShot(true);
    resized.setInterval(120);
    connect(&resized, &QTimer::timeout, this, &OrvDetailView::Refresh);
}

void OrvDetailView::SetModel(QAbstractItemModel *rows)
{
    model = rows;
    connect(model, &QAbstractItemModel::dataChanged, this, [this](const QModelIndex &from, const QModelIndex &to) {
        if (current.isValid() && current.row() >= from.row() && current.row() <= to.row())
            ShowFacts();
    });
}

int OrvDetailView::CurrentRow() const
{
    return current.isValid() ? current.row() : -1;
}

void OrvDetailView::ShowRow(int row)
{
    if (!model || row < 0 || row >= model->rowCount())
        return;
    const bool changed = !current.isValid() || current.row() != row;
    current = model->index(row, 0);
    canvas->SetImage({});
    Refresh();
    ShowFacts();
    if (changed)
        emit CurrentRowChanged(row);
}

void OrvDetailView::SetActualSize(bool on)
{
    actualSize = on;
    canvas->setMinimumSize(0, 0);
    Refresh();
}

void OrvDetailView::ForgetPictures()
{
    pictures->Clear();
}

QString OrvDetailView::PathOfRow(int row) const
{
    return row >= 0 && row < model->rowCount() ? model->index(row, 0).data(PhotoPathRole).toString() : QString();
}

QSize OrvDetailView::Box() const
{
    if (actualSize)
        return DetailPictures::FullSize();
    return scroller->viewport()->size() * devicePixelRatioF();
}

void OrvDetailView::Refresh()
{
    if (!current.isValid())
        return;
    const QSize box = Box();
    const QImage image = pictures->Picture(PathOfRow(current.row()), box);
    if (image.isNull())
        return; // PictureReady follows
    canvas->SetImage(image);
    if (actualSize && canvas->minimumSize() != (QSizeF(image.size()) / devicePixelRatioF()).toSize()) {
        canvas->setMinimumSize((QSizeF(image.size()) / devicePixelRatioF()).toSize());
        // 100% opens on the middle of the photo, once the scroll bars know its size.
        QTimer::singleShot(0, this, [this] {
            for (QScrollBar *bar : {scroller->horizontalScrollBar(), scroller->verticalScrollBar()})
                bar->setValue((bar->minimum() + bar->maximum()) / 2);
        });
    }
    // The neighbours, at the same size, while the user looks at this one.
    pictures->Picture(PathOfRow(current.row() + 1), box);
    pictures->Picture(PathOfRow(current.row() - 1), box);
}

void OrvDetailView::PictureReady(const QString &path, const QSize &box)
{
    if (current.isValid() && path == PathOfRow(current.row()) && box == Box())
        Refresh();
}

void OrvDetailView::ShowFacts()
{
    const QVariantMap record = current.data(RecordRole).toMap();
    fileName->setText(current.data(FileRole).toString());
    for (int row = 0; row < facts->rowCount(); ++row) {
        auto *value = static_cast<QLabel *>(facts->itemAt(row, QFormLayout::FieldRole)->widget());
        const QString text = FactValue(record, value->objectName());
        value->setText(text);
        facts->setRowVisible(row, !text.isEmpty());
    }
}

void OrvDetailView::Step(int by)
{
    if (current.isValid())
        ShowRow(std::clamp(current.row() + by, 0, model->rowCount() - 1));
}

void OrvDetailView::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_PageUp:
    case Qt::Key_Left:
    case Qt::Key_Up:
        Step(-1);
        return;
    case Qt::Key_PageDown:
    case Qt::Key_Right:
    case Qt::Key_Down:
    case Qt::Key_Space:
        Step(1);
        return;
    case Qt::Key_Escape:
        emit BackRequested();
        return;
    case Qt::Key_Z:
        SetActualSize(!actualSize);
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

bool OrvDetailView::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonDblClick) {
        SetActualSize(!actualSize);
        return true;
    }
    // A window being dragged to a new size is decoded for once it stops.
    if (watched == scroller->viewport() && event->type() == QEvent::Resize && !actualSize)
        resized.start();
    return QWidget::eventFilter(watched, event);
}
