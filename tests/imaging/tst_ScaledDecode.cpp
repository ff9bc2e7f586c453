#include "ImagingTestSupport.h"
#include "TestEnvironment.h"
#include "imaging/Picture.h"
#include "imaging/Thumbnail.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

// Every JPEG of the corpus, sound or damaged, decoded to fit a box gives the picture the real
// vipsthumbnail gives: the same size and orientation, pixels within rounding of each other; and a
// file vipsthumbnail cannot read fails cleanly here, or decodes, never worse.
class ScaledDecode : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void sameAsVipsThumbnail_data();
    void sameAsVipsThumbnail();
};

namespace {

constexpr int Box = 640; // the export's standard size: most photos decode at a reduced scale

QStringList CorpusJpegs()
{
    QStringList jpegs;
    for (const QString &folder : {QStringLiteral("photos"), QStringLiteral("photos-malformed")}) {
        const QDir dir(CorpusPath(folder));
        for (const QString &name : dir.entryList({"*.jpg", "*.jpeg", "*.JPG"}, QDir::Files, QDir::Name))
            jpegs << dir.filePath(name);
    }
    return jpegs;
}

QTemporaryDir made;

// Mean of the absolute differences over every sample; -1 when the sizes differ.
double MeanDifference(const QByteArray &a, const QByteArray &b)
{
    if (a.size() != b.size() || a.isEmpty())
        return -1;
    double sum = 0;
    for (qsizetype i = 0; i < a.size(); ++i)
        sum += std::abs(int(uchar(a[i])) - int(uchar(b[i])));
    return sum / double(a.size());
}

} // namespace

// One vipsthumbnail run for the whole corpus; it goes on past the files it cannot read.
void ScaledDecode::initTestCase()
{
    QProcess::execute(QStringLiteral("vipsthumbnail"),
                      QStringList{"--size", QStringLiteral("%1x%1>").arg(Box), "-o", made.filePath(QStringLiteral("%s.png"))} + CorpusJpegs());
}

void ScaledDecode::sameAsVipsThumbnail_data()
{
    QTest::addColumn<QString>("photo");
    for (const QString &photo : CorpusJpegs())
        QTest::newRow(qPrintable(QFileInfo(photo).fileName())) << photo;
}

void ScaledDecode::sameAsVipsThumbnail()
{
    QFETCH(QString, photo);
    const QString theirs = made.filePath(QFileInfo(photo).completeBaseName() + QStringLiteral(".png"));
    const Picture ours = LoadPictureToFit(photo, Box, Box);
    if (!QFileInfo::exists(theirs))
        return; // decoded or null, but it came back: nothing was read out of bounds (ASan)
    QVERIFY2(!ours.IsNull(), "vipsthumbnail reads this photo");
    const Picture reference = Picture::Load(theirs);
    QCOMPARE(QSize(ours.Width(), ours.Height()), QSize(reference.Width(), reference.Height()));
    const double difference = MeanDifference(ours.RgbPixels(), reference.RgbPixels());
    QVERIFY2(difference >= 0 && difference < 3.0, qPrintable(QString::number(difference)));
}

QTEST_GUILESS_MAIN(ScaledDecode)
#include "tst_ScaledDecode.moc"
