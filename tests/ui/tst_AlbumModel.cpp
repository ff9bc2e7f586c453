#include "ui/album/AlbumModel.h"
#include "library/AlbumDocument.h"
#include "library/OrvAlbumImporter.h"
#include "library/PhotoRecord.h"
#include "app/ProgressSink.h"
#include "app/Prompter.h"
#include "TestEnvironment.h"

#include <QAbstractItemModelTester>
#include <QDir>
#include <QSignalSpy>
#include <QTest>
#include <functional>

// The album model over a real album: Qt's model tester watches every signal while the album
// changes, and the rows, their roles, the persistent indexes and the highlights follow.
class AlbumModelTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void rowsFollowTheAlbum_data();
    void rowsFollowTheAlbum();

private:
    std::unique_ptr<ScopedTestEnvironment> environment;
    QByteArray oldDataHome;
};

namespace {

const QString Corpus = QStringLiteral(ORVANA_SOURCE_DIR "/../shared/corpus/photos/");

class YesPrompter : public Prompter {
public:
    bool AskYesNo(const QString &, const QString &) override { return true; }
    void Inform(const QString &, const QString &) override {}
    void Error(const QString &, const QString &) override {}
    std::optional<QString> AskText(const QString &, const QString &, const QString &) override { return QStringLiteral("harbour"); }
};

QStringList Copies(const QStringList &names, const QString &folder)
{
    QDir().mkpath(folder);
    QStringList paths;
    for (const QString &name : names) {
        QFile::copy(Corpus + name, folder + u'/' + name);
        paths << folder + u'/' + name;
    }
    return paths;
}

using Change = std::function<void(AlbumDocument &, const QString &root)>;

} // namespace

Q_DECLARE_METATYPE(Change)

void AlbumModelTest::init()
{
    environment.reset();
    environment = std::make_unique<ScopedTestEnvironment>();
    oldDataHome = qgetenv("XDG_DATA_HOME");
    qputenv("XDG_DATA_HOME", (environment->Root() + QStringLiteral("/data-home")).toUtf8());
}

void AlbumModelTest::cleanup()
{
    if (oldDataHome.isNull())
        qunsetenv("XDG_DATA_HOME");
    else
        qputenv("XDG_DATA_HOME", oldDataHome);
}

void AlbumModelTest::rowsFollowTheAlbum_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<QList<int>>("changedRoles"); // of the dataChanged signals; empty: none expected
    static YesPrompter yes;
    QTest::newRow("import") << Change([](AlbumDocument &album, const QString &root) {
        NoProgress quiet;
        OrvAlbumImporter importer;
        importer.SetDocument(&album);
        importer.ImportFiles(Copies({QStringLiteral("drewnoakes-Nikon_D1X.jpg"), QStringLiteral("drewnoakes-HTC_Desire.jpg")}, root + QStringLiteral("/more")), quiet);
    }) << QList<int>{};
    QTest::newRow("delete scattered photos") << Change([](AlbumDocument &album, const QString &) {
        QCOMPARE(album.DeleteItems({4, 1, 3}).failures.size(), 0);
    }) << QList<int>{};
    QTest::newRow("arrange by name") << Change([](AlbumDocument &album, const QString &) { QVERIFY(album.ActionArrangeByFile(yes)); })
                                     << QList<int>{};
    QTest::newRow("arrange by time") << Change([](AlbumDocument &album, const QString &) { QVERIFY(album.ActionArrangeByTime(yes)); })
                                     << QList<int>{};
    QTest::newRow("one note for many") << Change([](AlbumDocument &album, const QString &) {
        QVERIFY(album.ActionSetNoteForSelectedPhotos({2, 3}, yes));
    }) << QList<int>{RecordRole, DescriptionRole};
    QTest::newRow("star") << Change([](AlbumDocument &album, const QString &) { album.ActionStar({4}, true); })
                          << QList<int>{RecordRole, StarRole};
}

void AlbumModelTest::rowsFollowTheAlbum()
{
    QFETCH(Change, change);
    QFETCH(QList<int>, changedRoles);
    const QString root = environment->Root();
    QDir().mkpath(root + QStringLiteral("/Album"));
    AlbumDocument::OpenResult opened = AlbumDocument::Open(root + QStringLiteral("/Album"));
    AlbumDocument &album = *opened.document;
    NoProgress quiet;
    OrvAlbumImporter importer;
    importer.SetDocument(&album);
    importer.ImportFiles(Copies({QStringLiteral("exif-samples-DSCN0010.jpg"), QStringLiteral("drewnoakes-Canon_PowerShot_S330.jpg"),
                                 QStringLiteral("drewnoakes-Sony_DSC-HX5V_2.jpg"), QStringLiteral("drewnoakes-Olympus_X-2.jpg"),
                                 QStringLiteral("drewnoakes-Apple_iPhone_4.jpg")},
                                root + QStringLiteral("/in")),
                         quiet);
    QCOMPARE(album.RecordCount(), 5);

    AlbumModel model(album);
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.SetHighlighted({3, 5});
    const QString highlightedFile = album.Record(PhotoRecord::File, 5);
    QStringList highlightedFiles{album.Record(PhotoRecord::File, 3), highlightedFile};
    highlightedFiles.sort();
    const QPersistentModelIndex kept = model.index(4);
    QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
    QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);

    change(album, root);
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
    // The highlight and a persistent index stay with their record wherever it went.
    if (kept.isValid()) {
        QCOMPARE(kept.data().toString(), highlightedFile);
        QVERIFY(kept.data(HighlightRole).toBool());
    }
    QStringList stillHighlighted;
    for (const QString &file : highlightedFiles) {
        if (album.FindRecord(file) > 0)
            stillHighlighted << file;
    }
    QStringList shown;
    for (const int index : model.Highlighted())
        shown << album.Record(PhotoRecord::File, index);
    shown.sort();
    QCOMPARE(shown, stillHighlighted);
    for (const QList<QVariant> &signal : changes)
        QCOMPARE(signal.at(2).value<QList<int>>(), changedRoles);
    QCOMPARE(changes.isEmpty(), changedRoles.isEmpty());
}

QTEST_GUILESS_MAIN(AlbumModelTest)
#include "tst_AlbumModel.moc"
