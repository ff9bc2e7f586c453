#include "library/AlbumDocument.h"
#include "library/OrvAlbumImporter.h"
#include "library/PhotoRecord.h"
#include "app/ProgressSink.h"
#include "ui/album/AlbumWindow.h"
#include "ui/edit/AdjustImageWindow.h"
#include "ui/edit/CropImageWindow.h"
#include "ui/edit/CropPreview.h"
#include "ui/common/FileChooser.h"
#include "ui/main/OptionsWindow.h"
#include "library/KeptOriginals.h"
#include "TestEnvironment.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QListView>
#include <QMessageBox>
#include <QTimer>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QSlider>
#include <QTest>

// The adjust and crop windows' controls, and the album window's edits reaching the photo files.
class EditWindowsTest : public QObject {
    Q_OBJECT
private slots:
    void init() { environment = std::make_unique<ScopedTestEnvironment>(); }
    void cleanup() { environment.reset(); }
    void adjustSliders_data();
    void adjustSliders();
    void cropRectangle_data();
    void cropRectangle();
    void albumEdits_data();
    void albumEdits();
    void optionsLetOriginalsGo();

private:
    std::unique_ptr<ScopedTestEnvironment> environment;
};

namespace {

const QString Corpus = QStringLiteral(ORVANA_SOURCE_DIR "/../shared/corpus/photos/");
const QString Photo = QStringLiteral("drewnoakes-Canon_PowerShot_S330.jpg"); // 800 x 600
constexpr double PhotoWidth = 800, PhotoHeight = 600;

QImage Shown(const QWidget &window)
{
    return window.findChild<QLabel *>(QStringLiteral("PicturePreview"))->pixmap().toImage();
}

} // namespace

void EditWindowsTest::adjustSliders_data()
{
    QTest::addColumn<QStringList>("steps");      // "Name=value" moves a slider, "check" ticks the box, "revert"
    QTest::addColumn<QList<int>>("positions");   // contrast, red, green, blue afterwards
    QTest::addColumn<bool>("previewChanged");    // from the photo as it is
    using Positions = QList<int>;
    QTest::newRow("a colour moves alone") << QStringList{"SliderGreen=180"} << Positions{100, 150, 180, 150} << true;
    QTest::newRow("kept in balance, the others follow") << QStringList{"check", "SliderBlue=120"} << Positions{100, 120, 120, 120} << true;
    QTest::newRow("contrast is never coupled") << QStringList{"check", "SliderContrast=170"} << Positions{170, 150, 150, 150} << true;
    QTest::newRow("ticking the box meets at the average") << QStringList{"SliderRed=190", "SliderBlue=121", "check"} << Positions{100, 154, 154, 154} << true;
    QTest::newRow("revert brings all back") << QStringList{"check", "SliderRed=200", "SliderContrast=40", "revert"} << Positions{100, 150, 150, 150} << false;
}

void EditWindowsTest::adjustSliders()
{
    QFETCH(QStringList, steps);
    QFETCH(QList<int>, positions);
    QFETCH(bool, previewChanged);
    AdjustImageWindow window;
    QSignalSpy ready(&window, &AdjustImageWindow::PreviewReady);
    window.InitWithImageFile(Corpus + Photo);
    QVERIFY(ready.wait(20000));
    const QImage neutral = Shown(window);
    QCOMPARE(neutral.size(), QSize(480, 360));
    for (const QString &step : steps) {
        if (step == QLatin1String("check"))
            window.findChild<QCheckBox *>(QStringLiteral("CheckKeepColorBalance"))->click();
        else if (step == QLatin1String("revert"))
            window.findChild<QPushButton *>(QStringLiteral("ButtonRevert"))->click();
        else
            window.findChild<QSlider *>(step.section(u'=', 0, 0))->setValue(step.section(u'=', 1).toInt());
    }
    const AdjustSliders sliders = window.Sliders();
    QCOMPARE((QList<int>{sliders.contrast, sliders.red, sliders.green, sliders.blue}), positions);
    QCOMPARE(Shown(window) != neutral, previewChanged);
}

void EditWindowsTest::cropRectangle_data()
{
    QTest::addColumn<QString>("ratio");   // the option chosen first
    QTest::addColumn<QString>("grip");    // where the drag starts: a corner of the rectangle or its centre
    QTest::addColumn<QList<QPoint>>("drags"); // one after another, each from the grip as it is then, in widget pixels
    QTest::addColumn<double>("expected"); // width / height
    QTest::addColumn<QString>("edge");    // the photo's edge the rectangle ends against ("" for none)
    using Drags = QList<QPoint>;
    QTest::newRow("4:3 fills the photo") << "Option4to3" << "" << Drags{} << 4.0 / 3 << "right";
    QTest::newRow("corner pushed in, then pulled far out, stops at the photo") << "Option16to9" << "bottomRight" << Drags{{-300, -300}, {900, 900}} << 16.0 / 9 << "right";
    QTest::newRow("corner pushed in keeps the ratio") << "Option5to7" << "topLeft" << Drags{{60, 10}} << 5.0 / 7 << "";
    QTest::newRow("dragged past the left edge stays inside") << "Option1to1" << "centre" << Drags{{-700, 30}} << 1.0 << "left";
    QTest::newRow("portrait 3.5:5 moved right stays inside") << "Option35to5" << "centre" << Drags{{500, 40}} << 3.5 / 5 << "right";
}

void EditWindowsTest::cropRectangle()
{
    QFETCH(QString, ratio);
    QFETCH(QString, grip);
    QFETCH(QList<QPoint>, drags);
    QFETCH(double, expected);
    QFETCH(QString, edge);
    CropImageWindow window;
    QSignalSpy ready(&window, &CropImageWindow::PreviewReady);
    window.InitWithImageFile(Corpus + Photo);
    QVERIFY(ready.wait(20000));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    window.findChild<QRadioButton *>(ratio)->click();
    auto *preview = window.findChild<CropPreview *>(QStringLiteral("PicturePreview"));
    bool reached = drags.isEmpty();
    for (const QPoint &by : drags) {
        const QRectF now = window.Frame().Rect();
        const QPointF corner = grip == QLatin1String("centre") ? now.center() : grip == QLatin1String("topLeft") ? now.topLeft() : now.bottomRight();
        const QPoint start = preview->ToWidget(corner).toPoint();
        QTest::mousePress(preview, Qt::LeftButton, {}, start);
        QTest::mouseMove(preview, start + by / 2);
        QTest::mouseRelease(preview, Qt::LeftButton, {}, start + by);
        reached = reached || window.Frame().Rect() != now;
    }
    const QRectF rect = window.Frame().Rect();
    QVERIFY2(reached, "the drags took hold of the rectangle");
    QVERIFY2(qAbs(rect.width() / rect.height() - expected) < 1e-6, qPrintable(QString::number(rect.width() / rect.height())));
    QVERIFY(rect.left() >= 0 && rect.top() >= 0 && rect.right() <= PhotoWidth + 1e-9 && rect.bottom() <= PhotoHeight + 1e-9);
    const QMap<QString, bool> against = {{"left", rect.left() < 1e-9}, {"right", rect.right() > PhotoWidth - 1e-9}, {"bottom", rect.bottom() > PhotoHeight - 1e-9}};
    if (!edge.isEmpty())
        QVERIFY2(against.value(edge), qPrintable(edge));
    const CropRectangle pixels = window.Rectangle();
    QVERIFY(pixels.right - pixels.left > 0 && pixels.right <= PhotoWidth && pixels.bottom <= PhotoHeight);
}

void EditWindowsTest::albumEdits_data()
{
    QTest::addColumn<QStringList>("steps"); // commands run on the first photo; "+OK" accepts the window they open
    QTest::addColumn<bool>("original");     // the file and its record are as imported afterwards
    QTest::addColumn<QString>("width");     // the record's width afterwards
    QTest::newRow("rotate, sepia, revert give the original back") << QStringList{"mnuRotateRight", "mnuSepiaEffect", "mnuRevertOriginal"} << true << "800";
    QTest::newRow("adjusted through its window") << QStringList{"mnuAdjustImage+OK"} << false << "800";
    QTest::newRow("cropped square through its window") << QStringList{"mnuCropImage+OK"} << false << "600";
    QTest::newRow("black and white, then enhanced") << QStringList{"mnuBWEffect", "mnuEnhanceImage"} << false << "800";
    QTest::newRow("turned sideways") << QStringList{"mnuRotateLeft"} << false << "600";
}

void EditWindowsTest::albumEdits()
{
    QFETCH(QStringList, steps);
    QFETCH(bool, original);
    QFETCH(QString, width);
    const QString folder = environment->Root() + QStringLiteral("/Trip");
    QDir().mkpath(folder);
    std::unique_ptr<AlbumDocument> album = AlbumDocument::Open(folder).document;
    OrvAlbumImporter importer;
    importer.SetDocument(album.get());
    NoProgress quiet;
    importer.ImportFiles({Corpus + Photo, Corpus + QStringLiteral("exif-samples-DSCN0010.jpg")}, quiet);
    album->SaveDocumentToFile();
    const QStringList keys = {PhotoRecord::Size, PhotoRecord::Modified, PhotoRecord::Width, PhotoRecord::Height};
    QStringList imported;
    for (const QString &key : keys)
        imported << album->Record(key, 1);
    const QString photo = album->PhotoFilePath(1);
    const QByteArray bytes = ReadAll(photo);

    AlbumWindow window(std::move(album));
    window.resize(900, 600);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    auto *grid = window.findChild<QListView *>(QStringLiteral("OrvThumbnailView"));
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, grid->visualRect(grid->model()->index(0, 0)).center());
    for (const QString &step : steps) {
        QVERIFY(window.RunCommand(step.section(u'+', 0, 0)));
        if (step.endsWith(QLatin1String("+OK"))) {
            QDialog *edit = window.findChild<QDialog *>(step.contains(QLatin1String("Crop")) ? "frmCropImage" : "frmAdjustImage");
            QVERIFY(edit);
            if (auto *contrast = edit->findChild<QSlider *>("SliderContrast")) {
                QTRY_VERIFY_WITH_TIMEOUT(!Shown(*edit).isNull(), 20000);
                contrast->setValue(160);
            } else {
                QTRY_VERIFY_WITH_TIMEOUT(edit->findChild<QPushButton *>("ButtonOK")->isEnabled(), 20000);
                edit->findChild<QRadioButton *>("Option1to1")->click();
            }
            edit->findChild<QPushButton *>("ButtonOK")->click();
        }
        QTRY_VERIFY_WITH_TIMEOUT(!window.IsWorking(), 60000);
    }
    QStringList now;
    for (const QString &key : keys)
        now << window.Document().Record(key, 1);
    QCOMPARE(ReadAll(photo) == bytes, original);
    QCOMPARE(now == imported, original);
    QCOMPARE(window.Document().Record(PhotoRecord::Width, 1), width);
    QCOMPARE(window.Document().IsModified(), true);
    // Every edit leaves the original kept; a revert takes it back.
    QCOMPARE(QFile::exists(folder + QStringLiteral("/studio.data/originals/") + Photo), !original);
}

// The options window sizes the open albums' kept originals and, once the user agrees, lets them go.
void EditWindowsTest::optionsLetOriginalsGo()
{
    const QString album = environment->Root() + QStringLiteral("/Trip");
    QDir().mkpath(KeptOriginals::Folder(album));
    QVERIFY(QFile::copy(Corpus + Photo, KeptOriginals::PathOf(album, Photo)));
    DialogFileChooser chooser;
    OptionsWindow window(chooser, {album});
    window.show();
    auto *room = window.findChild<QLabel *>(QStringLiteral("KeptOriginalsRoom"));
    QVERIFY(room->text().contains(QLocale().formattedDataSize(QFileInfo(Corpus + Photo).size())));
    QTimer::singleShot(0, &window, [] {
        if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget()))
            box->button(QMessageBox::Yes)->click();
    });
    window.findChild<QPushButton *>(QStringLiteral("LetOriginalsGo"))->click();
    QTRY_VERIFY(!QFileInfo::exists(KeptOriginals::Folder(album)));
    QVERIFY(room->text().contains(QLocale().formattedDataSize(0)));
}

QTEST_MAIN(EditWindowsTest)
#include "tst_EditWindows.moc"
