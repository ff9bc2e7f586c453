#include "library/AlbumDocument.h"
#include "library/KeptOriginals.h"
#include "library/OrvAlbumImporter.h"
#include "library/PhotoEditing.h"
#include "app/ProgressSink.h"
#include "TestEnvironment.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>

// The originals an album keeps at each photo's first edit, on real photos.
class KeptOriginalsTest : public QObject {
    Q_OBJECT
private slots:
    void init() { environment = std::make_unique<ScopedTestEnvironment>(); }
    void cleanup() { environment.reset(); }
    void keptOriginals_data();
    void keptOriginals();

private:
    std::unique_ptr<ScopedTestEnvironment> environment;
};

namespace {

const QString Corpus = QStringLiteral(ORVANA_SOURCE_DIR "/../shared/corpus/photos/");
const QString Photo = QStringLiteral("exif-samples-DSCN0010.jpg");

} // namespace

void KeptOriginalsTest::keptOriginals_data()
{
    QTest::addColumn<QStringList>("steps"); // on the album's one photo: left, sepia, crop, badcrop, revert, letgo
    QTest::addColumn<bool>("kept");         // an original is kept afterwards, as the photo was imported
    QTest::addColumn<bool>("asImported");   // the photo file is as imported
    QTest::newRow("a turn keeps the photo as it was") << QStringList{"left"} << true << false;
    QTest::newRow("later edits keep the first original") << QStringList{"sepia", "left", "crop"} << true << false;
    QTest::newRow("an edit that fails keeps nothing") << QStringList{"badcrop"} << false << true;
    QTest::newRow("revert puts it back and keeps no copy") << QStringList{"sepia", "revert"} << false << true;
    QTest::newRow("an edit after a revert keeps anew") << QStringList{"crop", "revert", "left"} << true << false;
    QTest::newRow("let go, there is nothing to revert to") << QStringList{"sepia", "letgo", "revert"} << false << false;
}

void KeptOriginalsTest::keptOriginals()
{
    QFETCH(QStringList, steps);
    QFETCH(bool, kept);
    QFETCH(bool, asImported);
    const QString folder = environment->Root() + QStringLiteral("/Album");
    QDir().mkpath(folder);
    std::unique_ptr<AlbumDocument> album = AlbumDocument::Open(folder).document;
    OrvAlbumImporter importer;
    importer.SetDocument(album.get());
    NoProgress quiet;
    importer.ImportFiles({Corpus + Photo}, quiet);
    const QString photo = album->PhotoFilePath(1);
    const QByteArray imported = ReadAll(photo);
    const QDateTime importedTime = QFileInfo(photo).lastModified();

    for (const QString &step : steps) {
        if (step == QLatin1String("left"))
            QCOMPARE(RotatePhotos(*album, {1}, Turn::Left, quiet), 1);
        else if (step == QLatin1String("sepia"))
            QCOMPARE(ApplyEffectToPhotos(*album, {1}, PhotoEffect::Sepia, quiet), 1);
        else if (step == QLatin1String("crop"))
            QCOMPARE(CropPhoto(*album, 1, {10, 10, 200, 100}), 1);
        else if (step == QLatin1String("badcrop"))
            QCOMPARE(CropPhoto(*album, 1, {5000, 5000, 6000, 6000}), 0);
        else if (step == QLatin1String("revert"))
            RevertPhotos(*album, {1}, quiet);
        else if (step == QLatin1String("letgo"))
            QVERIFY(KeptOriginals::LetGo(folder));
    }
    const QString original = KeptOriginals::PathOf(folder, Photo);
    QCOMPARE(QFileInfo::exists(original), kept);
    QCOMPARE(KeptOriginals::RoomTaken(folder), kept ? imported.size() : 0);
    if (kept) {
        QCOMPARE(ReadAll(original), imported);
        QCOMPARE(QFileInfo(original).lastModified(), importedTime);
    }
    QCOMPARE(ReadAll(photo) == imported, asImported);
}

QTEST_MAIN(KeptOriginalsTest)
#include "tst_KeptOriginals.moc"
