#include "ui/common/PhotoDecode.h"
#include "ui/print/PhotoSheet.h"

#include <QFile>
#include <QPrinter>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString Corpus = QStringLiteral(ORVANA_SOURCE_DIR "/../shared/corpus/photos/");

// The pages of a PDF file: its page objects, not the page tree.
qsizetype PdfPages(const QString &path)
{
    QFile pdf(path);
    if (!pdf.open(QIODevice::ReadOnly))
        return -1;
    return QString::fromLatin1(pdf.readAll()).count(QRegularExpression(QStringLiteral("/Type\\s*/Page(?!s)")));
}

} // namespace

class PrintSheetsTest : public QObject {
    Q_OBJECT
private slots:
    void fourPhotosToPdf_data();
    void fourPhotosToPdf();
};

void PrintSheetsTest::fourPhotosToPdf_data()
{
    QTest::addColumn<int>("perPage");
    QTest::addColumn<bool>("fill");
    QTest::addColumn<int>("pages");
    QTest::newRow("one to a page") << 1 << false << 4;
    QTest::newRow("two to a page, filled") << 2 << true << 2;
    QTest::newRow("four to a page") << 4 << false << 1;
    QTest::newRow("nine to a page") << 9 << true << 1;
}

// Four real photos printed to a PDF file, as the print dialog's PDF printer does.
void PrintSheetsTest::fourPhotosToPdf()
{
    QFETCH(int, perPage);
    QFETCH(bool, fill);
    QFETCH(int, pages);
    QList<PrintedPhoto> photos;
    for (const char *name : {"drewnoakes-Canon_PowerShot_S330.jpg", "drewnoakes-HTC_Desire.jpg", "exif-samples-DSCN0010.jpg",
                             "exif-samples-DSCN0021.jpg"}) {
        const QImage image = DecodePhotoToFit(Corpus + QLatin1String(name), QSize(800, 800));
        QVERIFY2(!image.isNull(), name);
        photos.append({image, QStringLiteral("Note of %1").arg(QLatin1String(name))});
    }
    QTemporaryDir folder;
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(folder.filePath(QStringLiteral("photos.pdf")));
    PrintPhotoSheets(printer, photos, {perPage, fill, true});
    QCOMPARE(PdfPages(printer.outputFileName()), qsizetype(pages));
    QCOMPARE(SheetPageCount(photos.size(), perPage), pages);
    // Every photo's cell lies inside the page and a filled photo covers its cell.
    const QRectF page(0, 0, 1000, 1400);
    for (const QRectF &cell : SheetCells(page, perPage)) {
        QVERIFY(page.contains(cell));
        const QRectF placed = PlacePhoto(cell, photos.front().image.size(), fill);
        QVERIFY(fill ? placed.contains(cell.adjusted(1, 1, -1, -1)) : cell.adjusted(-1, -1, 1, 1).contains(placed));
    }
}

QTEST_MAIN(PrintSheetsTest)
#include "tst_PrintSheets.moc"
