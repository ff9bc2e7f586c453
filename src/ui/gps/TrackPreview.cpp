#include "ui/gps/TrackPreview.h"

#include "gps/GpsStore.h"
#include "gps/TrackPoints.h"

#include <QCoreApplication>
#include <QPainter>
#include <QPainterPath>
#include <QPointer>
#include <QThreadPool>
#include <cmath>

namespace {

// More points than the widget has pixels add nothing to the drawing.
constexpr int MostShapePoints = 4000;

std::shared_ptr<const TrackDetails> ReadDetails(const Track &track)
{
    auto details = std::make_shared<TrackDetails>();
    TrackPoints points;
    LoadTrackPoints(track, points, nullptr);
    details->statistics = ComputeTrackStatistics(track, points);
    const int step = std::max(1, points.Count() / MostShapePoints);
    for (int i = 0; i < points.Count(); i += step) {
        bool latOk = false;
        bool lonOk = false;
        const double lat = points.String(i, TrackPoints::Lat).toDouble(&latOk);
        const double lon = points.String(i, TrackPoints::Lon).toDouble(&lonOk);
        if (latOk && lonOk)
            details->shape << QPointF(lon, lat);
    }
    return details;
}

} // namespace

void TrackDetailsCache::Request(const Track &track, const Ready &ready)
{
    const QString key = GpsStore::TrackFilePath(track) + u'\n' + track.name;
    if (const auto found = known.constFind(key); found != known.constEnd()) {
        ready(*found);
        return;
    }
    QPointer<TrackDetailsCache> guard(this);
    QThreadPool::globalInstance()->start([guard, key, track, ready] {
        std::shared_ptr<const TrackDetails> details = ReadDetails(track);
        // The application object outlives the window: the answer is dropped there when the cache
        // went meanwhile.
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [guard, key, details, ready] {
                if (!guard)
                    return;
                guard->known.insert(key, details);
                ready(details);
            },
            Qt::QueuedConnection);
    });
}

TrackPreview::TrackPreview(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("PictureTrackPreview"));
    setMinimumSize(160, 120);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);
}

void TrackPreview::SetShape(const QPolygonF &points)
{
    shape = points;
    update();
}

void TrackPreview::paintEvent(QPaintEvent *)
{
    if (shape.isEmpty())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF bounds = shape.boundingRect();
    const QRectF area = QRectF(rect()).adjusted(8, 8, -8, -8);
    // A degree of longitude is shorter than one of latitude away from the equator: scaled by the
    // cosine of the middle latitude, the shape keeps the proportions of a map.
    const double across = std::max(1e-9, bounds.width() * std::cos(bounds.center().y() * M_PI / 180));
    const double up = std::max(1e-9, bounds.height());
    const double scale = std::min(area.width() / across, area.height() / up);
    const QPointF middle = area.center();
    const double widthScale = scale * std::cos(bounds.center().y() * M_PI / 180);
    auto place = [&](const QPointF &point) {
        return QPointF(middle.x() + (point.x() - bounds.center().x()) * widthScale, middle.y() - (point.y() - bounds.center().y()) * scale);
    };
    QPainterPath path(place(shape.first()));
    for (const QPointF &point : shape)
        path.lineTo(place(point));
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawPath(path);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::darkGreen);
    painter.drawEllipse(place(shape.first()), 4, 4);
    painter.setBrush(Qt::darkRed);
    painter.drawEllipse(place(shape.last()), 4, 4);
}
