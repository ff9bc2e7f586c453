#include "ui/slideshow/SlideShowWindow.h"

#include <QPointer>
#include <QTest>

namespace {

const QString Corpus = QStringLiteral(ORVANA_SOURCE_DIR "/../shared/corpus/photos/");

} // namespace

class SlideShowTest : public QObject {
    Q_OBJECT
private slots:
    void keysAndTimer_data();
    void keysAndTimer();
};

void SlideShowTest::keysAndTimer_data()
{
    QTest::addColumn<QString>("keys");     // pressed once the first photo is up
    QTest::addColumn<int>("intervalMs");
    QTest::addColumn<int>("shown");        // the photo on show afterwards; -1: the show has closed
    QTest::addColumn<bool>("paused");
    const int long_ = 60000;
    QTest::newRow("the arrow steps on") << "Right" << long_ << 1 << false;
    QTest::newRow("back from the first is the last") << "Left" << long_ << 2 << false;
    QTest::newRow("End, then Home") << "End,Home" << long_ << 0 << false;
    QTest::newRow("Space pauses") << "Space" << long_ << 0 << true;
    QTest::newRow("Escape leaves") << "Escape" << long_ << -1 << false;
    QTest::newRow("the timer moves on") << "" << 300 << 1 << false;
}

void SlideShowTest::keysAndTimer()
{
    QFETCH(QString, keys);
    QFETCH(int, intervalMs);
    QFETCH(int, shown);
    QFETCH(bool, paused);
    QList<SlideShowWindow::Slide> slides;
    for (const char *name : {"drewnoakes-Canon_PowerShot_S330.jpg", "drewnoakes-HTC_Desire.jpg", "exif-samples-DSCN0010.jpg"})
        slides.append({Corpus + QLatin1String(name), QStringLiteral("A note")});
    QPointer<SlideShowWindow> show = new SlideShowWindow(slides, {intervalMs, false, true});
    show->show();
    QTRY_COMPARE(show->Current(), 0);
    const QMap<QString, Qt::Key> named = {{"Right", Qt::Key_Right}, {"Left", Qt::Key_Left}, {"End", Qt::Key_End},
                                          {"Home", Qt::Key_Home}, {"Space", Qt::Key_Space}, {"Escape", Qt::Key_Escape}};
    for (const QString &key : keys.split(u',', Qt::SkipEmptyParts))
        QTest::keyClick(show, named.value(key));
    if (shown < 0) {
        QTRY_VERIFY(show.isNull());
        return;
    }
    // A step shows once its photo is decoded.
    QTRY_COMPARE_WITH_TIMEOUT(show->Current(), shown, 10000);
    QCOMPARE(show->IsPaused(), paused);
    delete show;
}

QTEST_MAIN(SlideShowTest)
#include "tst_SlideShow.moc"
