#include "library/AlbumOpening.h"
#include "gps/GpsStore.h"
#include "gps/GpxImport.h"
#include "gps/PhotoMatching.h"
#include "library/OrvAlbumImporter.h"
#include "library/PhotoEditing.h"
#include "library/PhotoRecord.h"
#include "library/PhotoTransfer.h"
#include "app/ProgressSink.h"
#include "app/Prompter.h"
#include "TestEnvironment.h"

#include <QDir>
#include <QTest>
#include <functional>

// A view model knows the album only through the document's signals: a list kept from them alone
// must equal the document's records after every operation.
class AlbumSignalsTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void mirrorFollowsTheSignals_data();
    void mirrorFollowsTheSignals();

private:
    std::unique_ptr<ScopedTestEnvironment> environment;
    QByteArray oldDataHome;
};

namespace {

const QString Corpus = QStringLiteral(ORVANA_SOURCE_DIR "/../shared/corpus/photos/");

using Record = QMap<QString, QString>;

// A key never written reads as "": empty values are left out on both sides.
Record RecordAt(const AlbumDocument &album, int index)
{
    Record record;
    const DataList &list = album.List();
    for (const DataList::Entry &entry : list.ItemAt(index)) {
        if (!entry.value.isEmpty())
            record.insert(list.KeyName(entry.key), entry.value);
    }
    return record;
}

QList<Record> Records(const AlbumDocument &album)
{
    QList<Record> records;
    for (int i = 1; i <= album.RecordCount(); ++i)
        records << RecordAt(album, i);
    return records;
}

class YesPrompter : public Prompter {
public:
    bool AskYesNo(const QString &, const QString &) override { return true; }
    void Inform(const QString &, const QString &) override {}
    void Error(const QString &, const QString &) override {}
    std::optional<QString> AskText(const QString &, const QString &, const QString &) override { return QStringLiteral("by the lake"); }
};

// The list a view would hold, kept only from the signals.
struct Mirror {
    QList<Record> records;
    bool modified = false;
    QStringList faults;

    void Follow(AlbumDocument &album, QObject *context)
    {
        records = Records(album);
        modified = album.IsModified();
        QObject::connect(&album, &AlbumDocument::RecordsInserted, context, [this, &album](int first, int count) {
            for (int i = 0; i < count; ++i)
                records.insert(first - 1 + i, RecordAt(album, first + i));
            Check(album, "inserted");
        });
        QObject::connect(&album, &AlbumDocument::RecordsRemoved, context, [this, &album](int first, int count) {
            records.remove(first - 1, count);
            Check(album, "removed");
        });
        QObject::connect(&album, &AlbumDocument::RecordsChanged, context, [this, &album](const QList<int> &indices, const QStringList &keys) {
            for (const int index : indices) {
                for (const QString &key : keys) {
                    const QString value = album.Record(key, index);
                    if (value.isEmpty())
                        records[index - 1].remove(key);
                    else
                        records[index - 1].insert(key, value);
                }
            }
        });
        QObject::connect(&album, &AlbumDocument::RecordsReordered, context, [this, &album](const QList<int> &oldIndexOfNew) {
            QList<Record> reordered;
            for (const int old : oldIndexOfNew)
                reordered << records[old - 1];
            records = reordered;
            Check(album, "reordered");
        });
        QObject::connect(&album, &AlbumDocument::ModifiedChanged, context, [this](bool on) { modified = on; });
    }
    // Rows come and go after the change is made: the counts agree at every signal.
    void Check(const AlbumDocument &album, const char *signal)
    {
        if (records.size() != album.RecordCount())
            faults << QStringLiteral("%1: %2 rows, %3 records").arg(QLatin1String(signal)).arg(records.size()).arg(album.RecordCount());
    }
};

QString CopyInto(const QString &name, const QString &folder)
{
    QDir().mkpath(folder);
    QFile::copy(Corpus + name, folder + u'/' + name);
    return folder + u'/' + name;
}

// A track whose points lie at the photos' capture times, each at its own height.
QString TrackAtPhotos(const AlbumDocument &album, const QString &folder)
{
    QByteArray body;
    for (int i = 1; i <= album.RecordCount(); ++i) {
        const QString taken = album.Record(PhotoRecord::CaptureDate, i);
        body += QStringLiteral("<trkpt lat=\"%1.5\" lon=\"7.25\"><ele>%2</ele><time>%3Z</time></trkpt>")
                    .arg(40 + i).arg(100 * i).arg(QString(taken).replace(u' ', u'T')).toUtf8();
    }
    const QString path = folder + QStringLiteral("/track.gpx");
    WriteAll(path, "<?xml version=\"1.0\"?><gpx version=\"1.1\" creator=\"test\"><trk><trkseg>" + body + "</trkseg></trk></gpx>");
    return path;
}

using Operation = std::function<void(AlbumDocument &, const QString &root)>;

} // namespace

Q_DECLARE_METATYPE(Operation)

void AlbumSignalsTest::init()
{
    environment.reset();
    environment = std::make_unique<ScopedTestEnvironment>();
    QDir().mkpath(environment->UserData());
    oldDataHome = qgetenv("XDG_DATA_HOME");
    qputenv("XDG_DATA_HOME", (environment->Root() + QStringLiteral("/data-home")).toUtf8());
}

void AlbumSignalsTest::cleanup()
{
    if (oldDataHome.isNull())
        qunsetenv("XDG_DATA_HOME");
    else
        qputenv("XDG_DATA_HOME", oldDataHome);
}

void AlbumSignalsTest::mirrorFollowsTheSignals_data()
{
    QTest::addColumn<Operation>("operation");
    static NoProgress quiet;
    static YesPrompter yes;
    const auto import = [](AlbumDocument &album, const QStringList &paths) {
        OrvAlbumImporter importer;
        importer.SetDocument(&album);
        importer.ImportFiles(paths, quiet);
    };
    QTest::newRow("import") << Operation([import](AlbumDocument &album, const QString &root) {
        import(album, {CopyInto(QStringLiteral("drewnoakes-Nikon_D1X.jpg"), root + QStringLiteral("/in")),
                       CopyInto(QStringLiteral("drewnoakes-HTC_Desire.jpg"), root + QStringLiteral("/in"))});
    });
    QTest::newRow("outside changes: new, changed and removed files") << Operation([](AlbumDocument &album, const QString &) {
        CopyInto(QStringLiteral("drewnoakes-Olympus_X-2.jpg"), album.PhotoFilesFolder());
        QFile changed(album.PhotoFilePath(1));
        QVERIFY(changed.open(QIODevice::Append) && changed.write("more bytes") > 0);
        changed.close();
        QVERIFY(QFile::remove(album.PhotoFilePath(2)));
        ActionCheckModified(album, yes, quiet);
    });
    QTest::newRow("delete") << Operation([](AlbumDocument &album, const QString &) {
        QCOMPARE(album.DeleteItems({3, 1}).failures.size(), 0);
    });
    QTest::newRow("arrange by time") << Operation([](AlbumDocument &album, const QString &) { QVERIFY(album.ActionArrangeByTimeDesc(yes)); });
    QTest::newRow("arrange by name") << Operation([](AlbumDocument &album, const QString &) { QVERIFY(album.ActionArrangeByFile(yes)); });
    QTest::newRow("one note for many") << Operation([](AlbumDocument &album, const QString &) {
        QVERIFY(album.ActionSetNoteForSelectedPhotos({1, 3}, yes));
    });
    QTest::newRow("keywords paste") << Operation([](AlbumDocument &album, const QString &) {
        album.ActionKeywordsPaste({2, 3}, QStringLiteral("sea;sun;"));
    });
    QTest::newRow("paste of copied photos") << Operation([](AlbumDocument &album, const QString &) {
        QVERIFY(ActionCopy(album, {1, 2}));
        QCOMPARE(ActionPaste(album, quiet).imported.size(), 2);
    });
    QTest::newRow("rotate") << Operation([](AlbumDocument &album, const QString &) {
        QCOMPARE(ActionRotateRight(album, {1, 3}, quiet), 2);
    });
    QTest::newRow("GPS match") << Operation([](AlbumDocument &album, const QString &root) {
        GpsStore store;
        QVERIFY(ImportGPXFile(store, TrackAtPhotos(album, root)).ok);
        const MatchReport report = MatchPhotosWithTracks(album, MatchScope::AllPhotos, album.ActionSelectAllPhotos(), store,
                                                         DefaultMatchWindow(0), yes, nullptr);
        QCOMPARE(report.located, album.RecordCount());
    });
}

void AlbumSignalsTest::mirrorFollowsTheSignals()
{
    QFETCH(Operation, operation);
    const QString root = environment->Root();
    QDir().mkpath(root + QStringLiteral("/Album"));
    AlbumDocument::OpenResult opened = AlbumDocument::Open(root + QStringLiteral("/Album"));
    QVERIFY(opened.document);
    AlbumDocument &album = *opened.document;
    {
        OrvAlbumImporter importer;
        importer.SetDocument(&album);
        NoProgress quiet;
        const QString in = root + QStringLiteral("/first");
        importer.ImportFiles({CopyInto(QStringLiteral("drewnoakes-Canon_PowerShot_S330.jpg"), in),
                              CopyInto(QStringLiteral("exif-samples-DSCN0010.jpg"), in),
                              CopyInto(QStringLiteral("drewnoakes-Sony_DSC-HX5V_2.jpg"), in)}, quiet);
        QCOMPARE(album.RecordCount(), 3);
        QVERIFY(album.SaveDocumentToFile().ok);
    }
    const QList<Record> before = Records(album);
    Mirror mirror;
    mirror.Follow(album, this);
    operation(album, root);
    if (QTest::currentTestFailed())
        return;
    QVERIFY2(Records(album) != before, "the operation changed nothing");
    QCOMPARE(mirror.faults, QStringList());
    QCOMPARE(mirror.records, Records(album));
    QVERIFY(mirror.modified);
    QCOMPARE(mirror.modified, album.IsModified());
}

QTEST_GUILESS_MAIN(AlbumSignalsTest)
#include "tst_AlbumSignals.moc"
