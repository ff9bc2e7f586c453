#include "ui/print/PhotoSheet.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPrinter>
#include <algorithm>
#include <cmath>

namespace {

// Space between cells and under each photo for its caption, as shares of the page's short side.
constexpr double GapShare = 0.03;
constexpr double CaptionShare = 0.035;

} // namespace

QList<QRectF> SheetCells(const QRectF &page, int perPage)
{
    int columns = 1;
    int rows = 1;
    if (perPage == 2) {
        (page.width() > page.height() ? columns : rows) = 2;
    } else if (perPage == 4) {
        columns = rows = 2;
    } else if (perPage == 9) {
        columns = rows = 3;
    }
    const double gap = std::min(page.width(), page.height()) * GapShare;
    const double width = (page.width() - gap * (columns - 1)) / columns;
    const double height = (page.height() - gap * (rows - 1)) / rows;
    QList<QRectF> cells;
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column)
            cells << QRectF(page.left() + column * (width + gap), page.top() + row * (height + gap), width, height);
    }
    return cells;
}

QRectF PlacePhoto(const QRectF &cell, const QSizeF &photo, bool fill)
{
    if (photo.isEmpty())
        return {};
    const double across = cell.width() / photo.width();
    const double down = cell.height() / photo.height();
    const double scale = fill ? std::max(across, down) : std::min(across, down);
    const QSizeF size = photo * scale;
    return QRectF(cell.center().x() - size.width() / 2, cell.center().y() - size.height() / 2, size.width(), size.height());
}

int SheetPageCount(qsizetype photos, int perPage)
{
    return perPage < 1 ? 0 : static_cast<int>((photos + perPage - 1) / perPage);
}

void PrintPhotoSheets(QPrinter &printer, const QList<PrintedPhoto> &photos, const SheetOptions &options)
{
    QPainter painter(&printer);
    if (!painter.isActive())
        return;
    const QRectF page = printer.pageLayout().paintRectPixels(printer.resolution()).translated(
        -printer.pageLayout().paintRectPixels(printer.resolution()).topLeft());
    const QList<QRectF> cells = SheetCells(page, options.perPage);
    const double captionHeight = options.captions ? std::min(page.width(), page.height()) * CaptionShare : 0;
    QFont font = painter.font();
    font.setPixelSize(std::max(1, static_cast<int>(captionHeight * 0.7)));
    painter.setFont(font);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    for (qsizetype i = 0; i < photos.size(); ++i) {
        const qsizetype slot = i % cells.size();
        if (slot == 0 && i > 0)
            printer.newPage();
        const QRectF cell = cells[slot];
        const QRectF photoArea(cell.left(), cell.top(), cell.width(), cell.height() - captionHeight);
        const PrintedPhoto &photo = photos[i];
        painter.save();
        painter.setClipRect(photoArea);
        painter.drawImage(PlacePhoto(photoArea, photo.image.size(), options.fill), photo.image);
        painter.restore();
        if (options.captions && !photo.caption.isEmpty()) {
            const QRectF captionArea(cell.left(), photoArea.bottom(), cell.width(), captionHeight);
            const QString shown = QFontMetricsF(painter.font()).elidedText(photo.caption, Qt::ElideRight, captionArea.width());
            painter.drawText(captionArea, Qt::AlignCenter, shown);
        }
    }
}
