#pragma once

#include <QImage>
#include <QList>
#include <QRectF>
#include <QString>

class QPagedPaintDevice;
class QPrinter;

// Photos laid out on printed pages: one, two, four or nine to a page, each fitted inside its
// cell or filling it (the overflow cut off), with its note as a caption under it.
struct PrintedPhoto {
    QImage image;
    QString caption;
};

struct SheetOptions {
    int perPage = 1;      // 1, 2, 4 or 9
    bool fill = false;    // fill the cell, else fit inside it
    bool captions = true; // the photo's note under it
};

// The cells of one page, row by row: 2 to a page stack on a portrait page and sit side by side on
// a landscape one.
QList<QRectF> SheetCells(const QRectF &page, int perPage);
// Where the photo goes in its cell: fitted inside it, or covering it.
QRectF PlacePhoto(const QRectF &cell, const QSizeF &photo, bool fill);
// Pages needed.
int SheetPageCount(qsizetype photos, int perPage);
// Paints every page onto the printer (or a PDF writer), starting a new page as needed.
void PrintPhotoSheets(QPrinter &printer, const QList<PrintedPhoto> &photos, const SheetOptions &options);
