#include "AlbumOpening.h"
#include "AppState.h"
#include "OrvAlbumImporter.h"
#include "PhotoEditing.h"
#include "PhotoRecord.h"
#include "ProgressSink.h"
#include "Prompter.h"
#include "Settings.h"
#include "TestEnvironment.h"

#include <QDir>
#include <QTest>

class ImporterTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void freeNames_data();
    void freeNames();
    void dropFolderAtOpening();
    void datesAndTimes();
    void parallelRunMatchesOneAtATime();
    void cancelKeepsWhatIsDone();
    void outsideChanges();
    void rotationSwapsSides();

private:
    std::unique_ptr<AlbumDocument> NewAlbum(const QString &name);
    QStringList Files(const AlbumDocument &album) const;
    std::unique_ptr<ScopedTestEnvironment> environment;
    NoProgress quiet;
};

namespace {

const QString Corpus = QStringLiteral(ORVANA_SOURCE_DIR "/../shared/corpus/photos/");
const QString Jpeg = Corpus + QStringLiteral("drewnoakes-Canon_PowerShot_S330.jpg");

class Answer : public Prompter {
public:
    explicit Answer(bool yes) : yes(yes) {}
    bool AskYesNo(const QString &, const QString &) override { return yes; }
    void Inform(const QString &, const QString &) override {}
    void Error(const QString &, const QString &) override {}
    std::optional<QString> AskText(const QString &, const QString &, const QString &) override { return std::nullopt; }

private:
    bool yes;
};

// Stops a run after the first step it reports.
class CancelAtOnce : public NoProgress {
public:
    void Advance(int) override { cancelled = true; }
    bool Cancelled() const override { return cancelled; }

private:
    bool cancelled = false;
};

QString CopyAs(const QString &source, const QString &target)
{
    QDir().mkpath(QFileInfo(target).absolutePath());
    QFile::copy(source, target);
    return target;
}

} // namespace

void ImporterTest::init()
{
    environment.reset();
    environment = std::make_unique<ScopedTestEnvironment>();
    QDir().mkpath(environment->UserData());
    AppState() = {};
    AppState().checkModifiedWhenOpenFolder = true;
}

std::unique_ptr<AlbumDocument> ImporterTest::NewAlbum(const QString &name)
{
    const QString path = environment->Root() + u'/' + name;
    QDir().mkpath(path);
    Answer no(false);
    return OpenAlbumDocument(path, {}, no, quiet).document;
}

QStringList ImporterTest::Files(const AlbumDocument &album) const
{
    QStringList files;
    for (int i = 1; i <= album.RecordCount(); ++i)
        files << album.Record(PhotoRecord::File, i);
    return files;
}

void ImporterTest::freeNames_data()
{
    QTest::addColumn<QStringList>("imported"); // names given to copies of real photos
    QTest::addColumn<bool>("allowNonJpeg");
    QTest::addColumn<QStringList>("leftoverThumbnails");
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QStringList>("thumbnails");
    QTest::newRow("a.jpg twice") << QStringList{"a.jpg", "a.jpg"} << false << QStringList{} << QStringList{"a.jpg", "a(1).jpg"} << QStringList{"a(1).jpg", "a.jpg"};
    QTest::newRow("b.png twice") << QStringList{"b.png", "b.png"} << true << QStringList{} << QStringList{"b.png", "b(1).png"} << QStringList{"b(1).png.jpg", "b.png.jpg"};
    QTest::newRow("PNG in a JPEG-only album") << QStringList{"b.png", "a.jpg"} << false << QStringList{} << QStringList{"a.jpg"} << QStringList{"a.jpg"};
    QTest::newRow("a thumbnail left over") << QStringList{"c.jpg"} << false << QStringList{"c.jpg"} << QStringList{"c(1).jpg"} << QStringList{"c(1).jpg", "c.jpg"};
}

void ImporterTest::freeNames()
{
    QFETCH(QStringList, imported);
    QFETCH(bool, allowNonJpeg);
    QFETCH(QStringList, leftoverThumbnails);
    QFETCH(QStringList, files);
    QFETCH(QStringList, thumbnails);
    WriteSetting(QStringLiteral("System"), QStringLiteral("AllowNonJPEG"), allowNonJpeg ? QStringLiteral("1") : QStringLiteral("0"));
    auto album = NewAlbum(QStringLiteral("Names"));
    for (const QString &name : leftoverThumbnails)
        CopyAs(Jpeg, AlbumFormat::ThumbnailFolder(album->Path()) + u'/' + name);
    OrvAlbumImporter importer;
    importer.SetDocument(album.get());
    for (int i = 0; i < imported.size(); ++i) {
        const QString source = imported[i].endsWith(QLatin1String(".png")) ? Corpus + QStringLiteral("exiv2-ReaganSmallPng.png") : Jpeg;
        importer.ImportFiles({CopyAs(source, environment->Root() + QStringLiteral("/in%1/").arg(i) + imported[i])}, quiet);
    }
    QCOMPARE(Files(*album), files);
    QCOMPARE(QDir(AlbumFormat::ThumbnailFolder(album->Path())).entryList(QDir::Files, QDir::Name), thumbnails);
    QCOMPARE(QFileInfo(environment->Root() + QStringLiteral("/in0/") + imported[0]).exists(), true); // copies leave their source
}

void ImporterTest::dropFolderAtOpening()
{
    const QString path = environment->Root() + QStringLiteral("/Drop");
    const QString drop = path + QStringLiteral("/raw.files");
    CopyAs(Jpeg, drop + QStringLiteral("/a.jpg"));
    WriteAll(CopyAs(Jpeg, drop + QStringLiteral("/notes.txt")), "not a photo");
    CopyAs(Jpeg, path + QStringLiteral("/non-photo.files/notes.txt"));
    Answer no(false);
    auto album = OpenAlbumDocument(path, {}, no, quiet).document;
    QCOMPARE(Files(*album), QStringList{"a.jpg"});
    QVERIFY(QFileInfo::exists(path + QStringLiteral("/a.jpg")));
    QVERIFY(!QFileInfo::exists(drop));
    QCOMPARE(ReadAll(path + QStringLiteral("/non-photo.files/notes(1).txt")), QByteArray("not a photo"));
    QVERIFY(!album->IsModified()); // saved
    QCOMPARE(Files(*AlbumDocument::Open(path).document), QStringList{"a.jpg"});
}

void ImporterTest::datesAndTimes()
{
    auto album = NewAlbum(QStringLiteral("Dates"));
    const QString undated = CopyAs(Corpus + QStringLiteral("drewnoakes-Nokia_3110c_Mobile_Phone.jpg"), environment->Root() + QStringLiteral("/in/undated.jpg"));
    const QString dated = CopyAs(Jpeg, environment->Root() + QStringLiteral("/in/dated.jpg"));
    const QDateTime then(QDate(2019, 5, 4), QTime(13, 14, 15));
    for (const QString &file : {undated, dated}) {
        QFile handle(file);
        QVERIFY(handle.open(QIODevice::ReadWrite) && handle.setFileTime(then, QFileDevice::FileModificationTime));
    }
    OrvAlbumImporter importer;
    importer.SetDocument(album.get());
    importer.ImportFiles({environment->Root() + QStringLiteral("/in")}, quiet);
    QCOMPARE(Files(*album), (QStringList{"dated.jpg", "undated.jpg"}));
    QCOMPARE(album->Record(PhotoRecord::Modified, 2), QStringLiteral("2019-05-04 13:14:15")); // copies keep their time
    QCOMPARE(album->Record(PhotoRecord::CaptureDate, 2), QStringLiteral("2019-05-04 13:14:15"));
    QCOMPARE(album->Record(PhotoRecord::CaptureDate, 1), QStringLiteral("2002-11-16 15:27:01"));
    QCOMPARE(album->Record(PhotoRecord::Width, 1), QStringLiteral("800"));
    const QStringList keys = album->List().ItemAt(1).size() >= 17 ? PhotoRecord::AllKeys().mid(0, 17) : QStringList();
    QStringList written;
    for (const DataList::Entry &entry : album->List().ItemAt(1))
        written << album->List().KeyName(entry.key);
    QCOMPARE(written.mid(0, 17), keys);
}

// Thumbnails and tags are made on every core, yet the list is the one a file-by-file run makes.
void ImporterTest::parallelRunMatchesOneAtATime()
{
    auto together = NewAlbum(QStringLiteral("Together"));
    auto single = NewAlbum(QStringLiteral("Single"));
    OrvAlbumImporter importer;
    importer.SetDocument(together.get());
    importer.ImportFiles({Corpus}, quiet);
    importer.SetDocument(single.get());
    for (const QFileInfo &file : QDir(Corpus).entryInfoList(QDir::Files, QDir::Name))
        importer.ImportFiles({file.absoluteFilePath()}, quiet);
    QVERIFY(together->RecordCount() > 100);
    QCOMPARE(together->RecordCount(), single->RecordCount());
    for (int i = 1; i <= together->RecordCount(); ++i) {
        for (const QString &key : PhotoRecord::AllKeys()) {
            if (key != PhotoRecord::Archived && key != PhotoRecord::Created)
                QCOMPARE(together->Record(key, i), single->Record(key, i));
        }
        QVERIFY(QFileInfo::exists(together->ThumbnailFilePath(i)) || together->Record(PhotoRecord::Width, i) == QLatin1String("0"));
    }
}

void ImporterTest::cancelKeepsWhatIsDone()
{
    auto album = NewAlbum(QStringLiteral("Cancelled"));
    OrvAlbumImporter importer;
    importer.SetDocument(album.get());
    CancelAtOnce cancel;
    const QList<int> added = importer.ImportFiles({Corpus}, cancel).imported;
    QVERIFY(!added.isEmpty());
    QVERIFY(added.size() < 100);
    // Every photo that reached the album has its record, and no record lacks its photo.
    const QStringList onDisk = QDir(album->Path()).entryList(QDir::Files, QDir::Name);
    QStringList recorded = Files(*album);
    recorded.sort();
    QCOMPARE(onDisk, recorded);
}

void ImporterTest::outsideChanges()
{
    auto album = NewAlbum(QStringLiteral("Outside"));
    OrvAlbumImporter importer;
    importer.SetDocument(album.get());
    importer.ImportFiles({CopyAs(Jpeg, environment->Root() + QStringLiteral("/in/a.jpg")), CopyAs(Jpeg, environment->Root() + QStringLiteral("/in/b.jpg"))}, quiet);
    album->SaveDocumentToFile();
    // Outside the program: a photo appears, one is rewritten, one disappears.
    CopyAs(Jpeg, album->Path() + QStringLiteral("/new.jpg"));
    QFile rewritten(album->Path() + QStringLiteral("/a.jpg"));
    QVERIFY(rewritten.open(QIODevice::Append) && rewritten.write("trailing bytes") > 0);
    rewritten.close();
    QFile::remove(album->Path() + QStringLiteral("/b.jpg"));

    Answer keep(false);
    ActionCheckModified(*album, keep, quiet);
    QCOMPARE(Files(*album), (QStringList{"a.jpg", "b.jpg", "new.jpg"}));
    QCOMPARE(album->Record(PhotoRecord::Size, 1), QString::number(QFileInfo(album->Path() + QStringLiteral("/a.jpg")).size()));
    QVERIFY(QFileInfo::exists(album->ThumbnailFilePath(3)));
    Answer remove(true);
    ActionCheckModified(*album, remove, quiet);
    QCOMPARE(Files(*album), (QStringList{"a.jpg", "new.jpg"}));
}

void ImporterTest::rotationSwapsSides()
{
    auto album = NewAlbum(QStringLiteral("Turns"));
    OrvAlbumImporter importer;
    importer.SetDocument(album.get());
    importer.ImportFiles({CopyAs(Jpeg, environment->Root() + QStringLiteral("/in/a.jpg"))}, quiet);
    const QString width = album->Record(PhotoRecord::Width, 1);
    const QString height = album->Record(PhotoRecord::Height, 1);
    QCOMPARE(RotatePhotos(*album, {1}, Turn::Right, quiet), 1);
    QCOMPARE(album->Record(PhotoRecord::Width, 1), height);
    QCOMPARE(album->Record(PhotoRecord::Size, 1), QString::number(QFileInfo(album->PhotoFilePath(1)).size()));
    QCOMPARE(RotatePhotos(*album, {1}, Turn::Right, quiet), 1);
    QCOMPARE(album->Record(PhotoRecord::Width, 1), width);
    QVERIFY(!QFileInfo::exists(album->PhotoFilePath(1) + QStringLiteral(".tmp")));
}

QTEST_GUILESS_MAIN(ImporterTest)
#include "tst_Importer.moc"
