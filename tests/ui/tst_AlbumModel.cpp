#include "ui/album/AlbumModel.h"
#include "library/AlbumDocument.h"
#include "library/OrvAlbumImporter.h"
#include "library/PhotoRecord.h"
#include "app/ProgressSink.h"
#include "TestEnvironment.h"

#include <QAbstractItemModelTester>
#include <QDir>
#include <QSignalSpy>
#include <QTest>
#include <functional>

// The album model over a real album: Qt's model tester watches every signal while the album
// changes, and the rows, their roles, a persistent index and the highlights follow their records.
class AlbumModelTest : public QObject {
    Q_OBJECT
private slots:
    void rowsFollowTheAlbum_data();
    void rowsFollowTheAlbum();
};

namespace {

// Corpus photos imported (copied) into the album.
void Import(AlbumDocument &album, const QStringList &names)
{
    QStringList paths;
    for (const QString &name : names)
        paths << QStringLiteral(ORVANA_SOURCE_DIR "/../shared/corpus/photos/") + name;
    NoProgress quiet;
    OrvAlbumImporter importer;
    importer.SetDocument(&album);
    importer.ImportFiles(paths, quiet);
}

using Change = std::function<void(AlbumDocument &)>;

} // namespace

Q_DECLARE_METATYPE(Change)

void AlbumModelTest::rowsFollowTheAlbum_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<QList<int>>("changedRoles"); // of every dataChanged; empty: none expected
    QTest::newRow("import") << Change([](AlbumDocument &album) { Import(album, {QStringLiteral("drewnoakes-Nikon_D1X.jpg"), QStringLiteral("drewnoakes-HTC_Desire.jpg")}); })
                            << QList<int>{};
    QTest::newRow("scattered records removed") << Change([](AlbumDocument &album) { album.RemoveRecords({4, 1, 3}); }) << QList<int>{};
    QTest::newRow("arrange by name") << Change([](AlbumDocument &album) { QVERIFY(album.ArrangePhotos(PhotoRecord::File, true, false, nullptr)); }) << QList<int>{};
    QTest::newRow("one note for many") << Change([](AlbumDocument &album) { album.SetNoteForPhotos({2, 3}, QStringLiteral("harbour")); })
                                       << QList<int>{RecordRole, DescriptionRole};
}

void AlbumModelTest::rowsFollowTheAlbum()
{
    QFETCH(Change, change);
    QFETCH(QList<int>, changedRoles);
    ScopedTestEnvironment environment;
    QDir().mkpath(environment.Root() + QStringLiteral("/Album"));
    AlbumDocument::OpenResult opened = AlbumDocument::Open(environment.Root() + QStringLiteral("/Album"));
    AlbumDocument &album = *opened.document;
    Import(album, {QStringLiteral("exif-samples-DSCN0010.jpg"), QStringLiteral("drewnoakes-Canon_PowerShot_S330.jpg"), QStringLiteral("drewnoakes-Sony_DSC-HX5V_2.jpg"),
                   QStringLiteral("drewnoakes-Olympus_X-2.jpg"), QStringLiteral("drewnoakes-Apple_iPhone_4.jpg")});
    QCOMPARE(album.RecordCount(), 5);

    AlbumModel model(album);
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.SetHighlighted({5});
    const QString highlighted = album.Record(PhotoRecord::File, 5);
    const QPersistentModelIndex kept = model.index(4);
    QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
    QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);

    change(album);
    if (QTest::currentTestFailed())
        return;

    QCOMPARE(resets.size(), 0);
    QCOMPARE(model.rowCount(), album.RecordCount());
    for (int row = 0; row < model.rowCount(); ++row) {
        const QModelIndex index = model.index(row);
        QCOMPARE(index.data(RecordIndexRole).toInt(), row + 1);
        QCOMPARE(index.data().toString(), album.Record(PhotoRecord::File, row + 1));
        QCOMPARE(index.data(ThumbnailPathRole).toString(), album.ThumbnailFilePath(row + 1));
        QCOMPARE(index.data(DescriptionRole).toString(), album.Record(PhotoRecord::Description, row + 1));
        QCOMPARE(index.data(StarRole).toBool(), album.Record(PhotoRecord::Star, row + 1) == QLatin1String("1"));
        QCOMPARE(index.data(RecordRole).toMap().value(PhotoRecord::CaptureDate).toString(), album.Record(PhotoRecord::CaptureDate, row + 1));
    }
    QCOMPARE(kept.data().toString(), highlighted);
    QCOMPARE(model.Highlighted(), QList<int>{kept.row() + 1});
    for (const QList<QVariant> &signal : changes)
        QCOMPARE(signal.at(2).value<QList<int>>(), changedRoles);
    QCOMPARE(changes.isEmpty(), changedRoles.isEmpty());
}

QTEST_GUILESS_MAIN(AlbumModelTest)
#include "tst_AlbumModel.moc"
