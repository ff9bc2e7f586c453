#include "library/AlbumOpening.h"
#include "gps/GpxImport.h"
#include "gps/PhotoMatching.h"
#include "library/PhotoEditing.h"
#include "library/PhotoTransfer.h"
#include "app/AppState.h"
#include "library/HiddenFiles.h"
#include "library/OrvAlbumImporter.h"
#include "library/OutsideChanges.h"
#include "app/Paths.h"
#include "library/PhotoRecord.h"
#include "app/ProgressSink.h"
#include "app/Prompter.h"
#include "library/RecordEdit.h"
#include "app/Settings.h"
#include "TestEnvironment.h"
#include "gps/GpsStore.h"

#include <QDir>
#include <QEventLoop>
#include <QThread>
#include <QRegularExpression>
#include <QTest>

// Albums on disk, their records and documents, and the importer.
class AlbumTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void names_data();
    void names();
    void blankPackage();
    void opening_data();
    void opening();
    void streamedList_data();
    void streamedList();
    void conversion_data();
    void conversion();
    void classification_data();
    void classification();
    void arrangeAsksFirst();
    void nameRule_data();
    void nameRule();
    void starsAndSelections();
    void unsafeNamesAreLeftAlone();
    void deletion();
    void outsideChangeRule_data();
    void outsideChangeRule();
    void freeNames_data();
    void freeNames();
    void datesAndTimes();
    void importOnAWorkerThread();
    void signalsTellEveryChange_data();
    void signalsTellEveryChange();
    void reimportKeepsWhatTheUserSet();

private:
    std::unique_ptr<AlbumDocument> MakeAlbum(const QList<QStringList> &records); // File, CaptureDate, Size, Star
    std::unique_ptr<AlbumDocument> NewAlbum(const QString &name);                 // opened as its window opens it
    std::unique_ptr<ScopedTestEnvironment> environment;
    QString albumPath;
    NoProgress quiet;
};

namespace {

const QString Corpus = QStringLiteral(ORVANA_SOURCE_DIR "/../shared/corpus/photos/");
const QString Jpeg = Corpus + QStringLiteral("drewnoakes-Canon_PowerShot_S330.jpg");

class ScriptedPrompter : public Prompter {
public:
    bool answer = true;
    QStringList asked;
    bool AskYesNo(const QString &title, const QString &text) override
    {
        asked << title + u'|' + text;
        return answer;
    }
    void Inform(const QString &, const QString &) override {}
    void Error(const QString &, const QString &) override {}
    std::optional<QString> AskText(const QString &, const QString &, const QString &) override
    {
        return answer ? std::optional<QString>(QStringLiteral("by the lake")) : std::nullopt;
    }
};

QStringList Files(const AlbumDocument &album)
{
    QStringList files;
    for (int i = 1; i <= album.RecordCount(); ++i)
        files << album.Record(PhotoRecord::File, i);
    return files;
}

QStringList FilesAt(const AlbumDocument &album, const QList<int> &indices)
{
    QStringList files;
    for (const int index : indices)
        files << album.Record(PhotoRecord::File, index);
    return files;
}

const QList<QStringList> Holiday = {
    {"c.jpg", "2026-07-02 09:15:00", "300", "0"},
    {"a.jpg", "2026-07-01 18:40:10", "100", "1"},
    {"d.jpg", "", "400", ""},
    {"b.jpg", "2026-07-02 09:59:59", "200", "1"},
};


QString CopyAs(const QString &source, const QString &target)
{
    QDir().mkpath(QFileInfo(target).absolutePath());
    QFile::copy(source, target);
    return target;
}

} // namespace

void AlbumTest::init()
{
    environment.reset(); // the old one restores what it replaced: it must go before the new one comes
    environment = std::make_unique<ScopedTestEnvironment>();
    QDir().mkpath(environment->UserData());
    AppState() = {};
    AppState().checkModifiedWhenOpenFolder = true;
    albumPath = environment->Root() + QStringLiteral("/Holiday");
}

std::unique_ptr<AlbumDocument> AlbumTest::NewAlbum(const QString &name)
{
    QDir().mkpath(environment->Root() + u'/' + name);
    ScriptedPrompter no;
    no.answer = false;
    return OpenAlbumDocument(environment->Root() + u'/' + name, {}, no, quiet).document;
}

void AlbumTest::names_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("album");
    QTest::addColumn<QString>("title");
    QTest::newRow("package name") << "/p/Trip.album" << true << "Trip";
    QTest::newRow("upper-case suffix") << "/p/Trip.ALBUM" << true << "Trip";
    QTest::newRow("trailing slash") << "/p/Trip.Album/" << true << "Trip";
    QTest::newRow("plain folder") << "/p/Trip" << false << "Trip";
    QTest::newRow("longer suffix") << "/p/Trip.albums" << false << "Trip.albums";
    QTest::newRow("suffix alone") << "/p/.album" << true << "";
}

void AlbumTest::names()
{
    QFETCH(QString, path);
    QFETCH(bool, album);
    QFETCH(QString, title);
    QCOMPARE(IsAlbum(path), album);
    QCOMPARE(AlbumTitleFromPath(path), title);
}

void AlbumTest::blankPackage()
{
    const QString album = environment->Root() + QStringLiteral("/Holiday.album");
    QDir().mkpath(album);
    QVERIFY(CreateBlankStudioPackage(album).ok);
    DataList list;
    QVERIFY(list.Load(AlbumFormat::StudioPlistPath(album)));
    QStringList written;
    for (const QString &key : list.DocumentKeys())
        written << key + u'=' + (key == QLatin1String("Identification") ? QString() : list.GetDocumentProperty(key));
    QCOMPARE(written.join(u' '), QStringLiteral("Format=com.veltrix.orvana.studio.datalist Version=1.0 Language=English Title=Holiday Identification= Category= "
        "Description= _Exporter.NeedExportThumbnail=1 _Exporter.NeedExportPreview=1 _Exporter.NeedExportStandard=1 _Exporter.NeedExportFull=0 "
        "_Exporter.StandardWidth=640 _Exporter.StandardHeight=640 _Exporter.NeedAddWatermark=0 _Exporter.PlaceWatermarkAtLeftTop=0 "
        "_Exporter.PlaceWatermarkAtLeftBottom=0 _Exporter.PlaceWatermarkAtRightTop=1 _Exporter.PlaceWatermarkAtRightBottom=0 "
        "_Exporter.PlaceWatermarkAtCenter=0 _Exporter.IsSharedServer=0 _Exporter.FTPServerAddress= _Exporter.FTPLoginName= "
        "_Exporter.FTPPassword= _Exporter.FTPDirectory="));
    QVERIFY(FolderExists(AlbumFormat::ThumbnailFolder(album)));

    // Identifications are time-based UUIDs and never repeat, even when made in the same moment.
    static const QRegularExpression uuid7(QStringLiteral("^[0-9a-f]{8}-[0-9a-f]{4}-7[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}$"));
    QSet<QString> seen;
    for (int i = 0; i < 1000; ++i)
        seen.insert(NewAlbumIdentification());
    QCOMPARE(seen.size(), 1000);
    const QString identification = list.GetDocumentProperty(QStringLiteral("Identification"));
    QVERIFY2(uuid7.match(identification).hasMatch(), qPrintable(identification));
}

void AlbumTest::opening_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("format");
    QTest::addColumn<bool>("hasData");
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("dataHidden");
    QTest::addColumn<bool>("desktopIni");
    const int ready = int(OpenAlbumStatus::Ready);
    const int refused = int(OpenAlbumStatus::Refused);
    QTest::newRow("plain folder becomes a folder album") << "Trip" << 0 << false << ready << true << false;
    QTest::newRow(".album with format 0 opens as a folder album") << "Trip.album" << 0 << false << ready << true << true;
    QTest::newRow("package without its data folder") << "Trip.ALBUM" << 1 << false << refused << false << false;
    QTest::newRow("package with its data folder") << "Trip.album" << 1 << true << ready << false << false;
    QTest::newRow("plain folder with format 1") << "Trip" << 1 << false << ready << true << false;
    QTest::newRow("missing folder") << "" << 0 << false << refused << false << false;
}

void AlbumTest::opening()
{
    QFETCH(QString, name);
    QFETCH(int, format);
    QFETCH(bool, hasData);
    QFETCH(int, status);
    QFETCH(bool, dataHidden);
    QFETCH(bool, desktopIni);
    AppState().defaultAlbumFormat = format;
    const QString album = environment->Root() + u'/' + (name.isEmpty() ? QStringLiteral("missing") : name);
    if (!name.isEmpty())
        QDir().mkpath(album);
    if (hasData)
        QDir().mkpath(AlbumFormat::StudioDataPath(album));

    const AlbumDocument::OpenResult opened = AlbumDocument::Open(album);
    QCOMPARE(int(opened.status), status);
    QCOMPARE(opened.document != nullptr, status == int(OpenAlbumStatus::Ready));
    if (opened.document) {
        QVERIFY(opened.load);
        QCOMPARE(opened.document->List().GetDocumentProperty(QStringLiteral("Title")), QStringLiteral("Trip"));
    }
    QCOMPARE(IsHidden(AlbumFormat::StudioDataPath(album)), dataHidden);
    QCOMPARE(QFileInfo::exists(album + QStringLiteral("/Desktop.ini")), desktopIni);
    if (desktopIni) {
        QCOMPARE(ReadAll(album + QStringLiteral("/Desktop.ini")),
                 QByteArray("[.ShellClassInfo]\r\nInfoTip = Orvana photo album\r\n"
                            "IconFile = %SystemRoot%\\system32\\mydocs.dll\r\nIconIndex = -101\r\n"));
        QVERIFY(IsHidden(album + QStringLiteral("/Desktop.ini")));
    }
    QCOMPARE(int(AlbumDocument::Open(QString()).status), int(OpenAlbumStatus::Nothing));
}

void AlbumTest::streamedList_data()
{
    QTest::addColumn<QByteArray>("list");
    QTest::addColumn<bool>("loads");
    QTest::addColumn<bool>("batched"); // came in batches, not all at once
    DataList big;
    for (int i = 1; i <= 12000; ++i) {
        big.AddItem(i);
        big.SetItemProperty(PhotoRecord::File, QStringLiteral("IMG_%1 & <\u00e9>.JPG").arg(i), i);
        big.SetItemProperty(PhotoRecord::Star, QString::number(i % 2), i);
    }
    big.SetDocumentProperty(QStringLiteral("Title"), QStringLiteral("Big"));
    const QByteArray own = big.ToBytes();
    QTest::newRow("the program's own form, in batches") << own << true << true;
    // Met only after batches have gone: they are taken back, and the list read whole.
    QByteArray typed = own;
    typed.replace(typed.lastIndexOf("<string>1</string>"), 18, "<integer>1</integer>");
    typed.insert(typed.lastIndexOf("</dict>"), "<!-- kept --><key>Nested</key><dict><key>a</key><true/></dict>");
    QTest::newRow("other value types and nested values, read whole") << typed << true << true;
    QTest::newRow("damaged after many records") << own.chopped(200) << false << true;
}

// The grid's first screen comes from the first batch; whatever way the list came in, the
// document ends as a whole load leaves it, and saves the same file.
void AlbumTest::streamedList()
{
    QFETCH(QByteArray, list);
    QFETCH(bool, loads);
    QFETCH(bool, batched);
    const QString album = environment->Root() + QStringLiteral("/Streamed");
    QDir().mkpath(AlbumFormat::StudioDataPath(album));
    WriteAll(AlbumFormat::StudioPlistPath(album), list);
    AlbumDocument::OpenResult opened = AlbumDocument::Prepare(album);
    QVERIFY(opened.document);
    AlbumDocument &document = *opened.document;
    QList<int> inserted;
    connect(&document, &AlbumDocument::RecordsInserted, this, [&](int first, int count) {
        QCOMPARE(first, document.RecordCount() - count + 1);
        inserted << count;
    });
    const DataList::LoadResult load = StreamAlbumRecords(document, quiet);
    QCOMPARE(bool(load), loads);
    QCOMPARE(document.IsNoSave(), !loads);
    QCOMPARE(document.IsModified(), false);
    QVERIFY(!inserted.isEmpty());
    QCOMPARE(inserted.size() > 1, batched);
    if (!loads) {
        QCOMPARE(document.RecordCount(), 0);
        document.DocumentWasModified();
        QVERIFY(!document.SaveDocumentToFile().ok);
        QCOMPARE(ReadAll(AlbumFormat::StudioPlistPath(album)), list);
        return;
    }
    DataList whole;
    QVERIFY(whole.LoadFromBytes(list));
    QCOMPARE(document.List().ToBytes(), whole.ToBytes());
    QCOMPARE(document.List().GetDocumentProperty(QStringLiteral("Title")), QStringLiteral("Big"));
}

void AlbumTest::conversion_data()
{
    QTest::addColumn<QStringList>("entries"); // names ending in "/" are folders
    QTest::addColumn<int>("format");
    QTest::addColumn<bool>("allowNonJpeg");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("photoAt"); // where a.jpg is found afterwards, relative to the root
    const int converted = int(ConvertStatus::Converted);
    const int refused = int(ConvertStatus::NonPhotoContained);
    QTest::newRow("photos only") << QStringList{"a.jpg", "b.JPEG"} << 0 << false << converted << "Pics.album/a.jpg";
    QTest::newRow("hidden subfolder is fine") << QStringList{"a.jpg", ".thumbs/"} << 0 << false << converted << "Pics.album/a.jpg";
    QTest::newRow("subfolder listed as hidden is fine") << QStringList{"a.jpg", "cache/", ".hidden=cache"} << 0 << false << converted << "Pics.album/a.jpg";
    QTest::newRow("visible subfolder") << QStringList{"a.jpg", "more/"} << 0 << false << refused << "Pics/a.jpg";
    QTest::newRow("visible text file") << QStringList{"a.jpg", "notes.txt"} << 0 << false << refused << "Pics/a.jpg";
    QTest::newRow("PNG without AllowNonJPEG") << QStringList{"a.jpg", "c.PNG"} << 0 << false << refused << "Pics/a.jpg";
    QTest::newRow("PNG with AllowNonJPEG") << QStringList{"a.jpg", "c.PNG"} << 0 << true << converted << "Pics.album/a.jpg";
    QTest::newRow("target exists") << QStringList{"a.jpg", "../Pics.album/"} << 0 << false << int(ConvertStatus::TargetExists) << "Pics/a.jpg";
}

void AlbumTest::conversion()
{
    QFETCH(QStringList, entries);
    QFETCH(int, format);
    QFETCH(bool, allowNonJpeg);
    QFETCH(int, status);
    QFETCH(QString, photoAt);
    AppState().defaultAlbumFormat = format;
    WriteSetting(QStringLiteral("System"), QStringLiteral("AllowNonJPEG"), allowNonJpeg ? QStringLiteral("1") : QStringLiteral("0"));
    const QString folder = environment->Root() + QStringLiteral("/Pics");
    QDir().mkpath(folder);
    for (const QString &entry : entries) {
        if (entry.endsWith(u'/'))
            QDir().mkpath(folder + u'/' + entry);
        else if (entry.startsWith(QLatin1String(".hidden=")))
            WriteAll(folder + QStringLiteral("/.hidden"), entry.mid(8).toUtf8() + '\n');
        else
            WriteAll(folder + u'/' + entry, "photo bytes");
    }
    const ConvertResult result = ConvertDoc(folder);
    QCOMPARE(int(result.status), status);
    QVERIFY(QFileInfo::exists(environment->Root() + u'/' + photoAt));
    if (status == int(ConvertStatus::Converted))
        QCOMPARE(result.albumPath, folder + QStringLiteral(".album"));
}

std::unique_ptr<AlbumDocument> AlbumTest::MakeAlbum(const QList<QStringList> &records)
{
    QDir().mkpath(albumPath);
    auto opened = AlbumDocument::Open(albumPath);
    for (const QStringList &record : records) {
        const QStringList keys = {PhotoRecord::File, PhotoRecord::CaptureDate, PhotoRecord::Size, PhotoRecord::Star};
        RecordValues values;
        for (qsizetype k = 0; k < record.size(); ++k)
            values.append({keys[k], record[k]});
        opened.document->AppendRecord(values);
    }
    opened.document->SaveDocumentToFile();
    return AlbumDocument::Open(albumPath).document;
}

void AlbumTest::classification_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("allowNonJpeg");
    QTest::addColumn<bool>("photo");
    QTest::addColumn<QString>("thumbnail");
    QTest::newRow("JPEG") << "IMG_0001.JPG" << false << true << "IMG_0001.JPG";
    QTest::newRow("PNG is not a photo in JPEG-only albums") << "map.PNG" << false << false << "map.PNG.jpg";
    QTest::newRow("PNG with AllowNonJPEG") << "map.PNG" << true << true << "map.PNG.jpg";
    QTest::newRow("PSD with AllowNonJPEG") << "layers.psd" << true << true << "layers.psd.jpg";
    QTest::newRow("camera raw never") << "IMG_0001.CR2" << true << false << "IMG_0001.CR2.jpg";
    QTest::newRow("no extension") << "README" << true << false << "README.jpg";
}

void AlbumTest::classification()
{
    QFETCH(QString, name);
    QFETCH(bool, allowNonJpeg);
    QFETCH(bool, photo);
    QFETCH(QString, thumbnail);
    QCOMPARE(PhotoRecord::IsPhotoFile(name, allowNonJpeg), photo);
    QCOMPARE(PhotoRecord::ThumbnailName(name), thumbnail);
}

void AlbumTest::arrangeAsksFirst()
{
    auto album = MakeAlbum(Holiday);
    ScriptedPrompter prompter;
    prompter.answer = false;
    QVERIFY(!album->ActionArrangeByTime(prompter));
    QCOMPARE(Files(*album), (QStringList{"c.jpg", "a.jpg", "d.jpg", "b.jpg"}));
    QVERIFY(!album->IsModified());
    QCOMPARE(prompter.asked, QStringList{"Arrange by Date Taken|Arrange all photos of this album by Date Taken?\r\nThe new order is saved with the album."});

    prompter.answer = true;
    QVERIFY(album->ActionArrangeByFileDesc(prompter));
    QCOMPARE(Files(*album), (QStringList{"d.jpg", "c.jpg", "b.jpg", "a.jpg"}));
    QVERIFY(prompter.asked.last().startsWith(QLatin1String("Arrange by File Name|")));
}

// One rule for every lookup of a photo by its name: an equal name wins; one differing only in
// case is taken only when it is the only name of that spelling on either side.
void AlbumTest::nameRule_data()
{
    QTest::addColumn<QStringList>("left");
    QTest::addColumn<QStringList>("right");
    QTest::addColumn<QList<int>>("matches");
    QTest::newRow("equal names") << QStringList{"a.jpg", "b.jpg"} << QStringList{"b.jpg", "a.jpg"} << QList<int>{1, 0};
    QTest::newRow("other case, alone") << QStringList{"IMG_1.JPG"} << QStringList{"x.jpg", "img_1.jpg"} << QList<int>{1};
    QTest::newRow("two cases: each its own") << QStringList{"IMG_1.JPG", "img_1.jpg"} << QStringList{"img_1.jpg", "IMG_1.JPG"} << QList<int>{1, 0};
    QTest::newRow("the other spelling is taken") << QStringList{"img_1.jpg", "Img_1.jpg"} << QStringList{"img_1.jpg"} << QList<int>{0, -1};
    QTest::newRow("ambiguous on the right") << QStringList{"Img_1.jpg"} << QStringList{"IMG_1.JPG", "img_1.jpg"} << QList<int>{-1};
    QTest::newRow("a name twice") << QStringList{"a.jpg", "A.JPG", "a.jpg"} << QStringList{"a.jpg", "a.jpg"} << QList<int>{0, -1, 0};
}

void AlbumTest::nameRule()
{
    QFETCH(QStringList, left);
    QFETCH(QStringList, right);
    QFETCH(QList<int>, matches);
    QCOMPARE(PhotoRecord::MatchNames(left, right), matches);
}

void AlbumTest::starsAndSelections()
{
    auto album = MakeAlbum(Holiday);
    const QList<int> starred = album->ActionSelectStarPhotos();
    QCOMPARE(FilesAt(*album, starred), (QStringList{"a.jpg", "b.jpg"}));
    const QList<int> others = album->ActionInverseSelection(starred);
    QCOMPARE(FilesAt(*album, others), (QStringList{"c.jpg", "d.jpg"}));
    album->ActionStar(others, true);
    QCOMPARE(FilesAt(*album, album->ActionSelectStarPhotos()), (QStringList{"c.jpg", "a.jpg", "d.jpg", "b.jpg"}));
    QVERIFY(album->IsModified());

    const QList<int> highlighted = album->ActionSelectHighlightPhotos({4, 2, 99, 2});
    QCOMPARE(FilesAt(*album, highlighted), (QStringList{"a.jpg", "b.jpg"}));
    album->ActionStar(highlighted, false);
    QCOMPARE(album->Record(PhotoRecord::Star, 2), QStringLiteral("0"));
    QCOMPARE(album->Record(PhotoRecord::Star, 1), QStringLiteral("1"));
    QCOMPARE(album->ActionSelectAllPhotos(), (QList<int>{1, 2, 3, 4}));
    QCOMPARE(FilesAt(*album, album->ActionSearch(QStringLiteral("B.J")).value()), QStringList{"b.jpg"});
    QVERIFY(!album->ActionSearch(QString()));
}

void AlbumTest::unsafeNamesAreLeftAlone()
{
    auto album = MakeAlbum({{"ok.jpg"}, {"../outside.jpg"}, {"/etc/passwd"}, {"sub/inner.jpg"}, {"..\\win.jpg"},
                            {"nul"}, {".."}, {"two..dots.jpg"}});
    album->SetRecordValue(6, PhotoRecord::File, QString::fromUtf8("nul\0.jpg", 8));
    QCOMPARE(album->UnsafeRecords(), (QList<int>{2, 3, 4, 5, 6, 7}));
    QDir().mkpath(AlbumFormat::StudioDataPath(albumPath) + QStringLiteral("/size_full")); // paths follow the layout found at opening
    QCOMPARE(album->PhotoFilePath(1), albumPath + QStringLiteral("/ok.jpg"));
    QCOMPARE(album->PhotoFilePath(8), albumPath + QStringLiteral("/two..dots.jpg"));
    for (int index = 2; index <= 7; ++index) {
        QCOMPARE(album->PhotoFilePath(index), QString());
        QCOMPARE(album->ThumbnailFilePath(index), QString());
    }
}

void AlbumTest::deletion()
{
    const QString dataHome = environment->Root() + QStringLiteral("/data-home");
    qputenv("XDG_DATA_HOME", dataHome.toUtf8());
    auto album = MakeAlbum(Holiday + QList<QStringList>{{"../outside.jpg"}});
    QDir().mkpath(AlbumFormat::ThumbnailFolder(albumPath));
    for (const char *name : {"a.jpg", "b.jpg"}) {
        WriteAll(albumPath + u'/' + QLatin1String(name), "photo");
        WriteAll(AlbumFormat::ThumbnailFolder(albumPath) + u'/' + QLatin1String(name), "thumbnail");
    }
    WriteAll(AlbumFormat::ThumbnailFolder(albumPath) + QStringLiteral("/d.jpg"), "thumbnail"); // its photo is gone
    ScriptedPrompter prompter;
    prompter.answer = false;
    QVERIFY(!album->ActionDelete({4}, AlbumDocument::View::Thumbnails, prompter));
    QCOMPARE(album->RecordCount(), 5);

    const QList<int> leftAlone = album->DeleteItems({2, 3, 5, 3}).leftAlone;
    QCOMPARE(leftAlone, QList<int>{5});
    QCOMPARE(Files(*album), (QStringList{"c.jpg", "b.jpg", "../outside.jpg"}));
    QVERIFY(!QFile::exists(albumPath + QStringLiteral("/a.jpg")));
    QCOMPARE(QDir(dataHome + QStringLiteral("/Trash/files")).entryList(QDir::Files), QStringList{"a.jpg"});
    QCOMPARE(QDir(AlbumFormat::ThumbnailFolder(albumPath)).entryList(QDir::Files), QStringList{"b.jpg"});
    QVERIFY(album->IsModified());
    qunsetenv("XDG_DATA_HOME");
}

void AlbumTest::outsideChangeRule_data()
{
    QTest::addColumn<qint64>("fileSize");
    QTest::addColumn<QString>("fileModified");
    QTest::addColumn<QString>("archived");
    QTest::addColumn<bool>("changed");
    // The record: 1000 bytes, modified 10:00:00.
    QTest::newRow("as recorded") << qint64(1000) << "2026-07-01 10:00:00" << "2026-07-01 10:05:00" << false;
    QTest::newRow("other length") << qint64(999) << "2026-07-01 10:00:00" << "2026-07-01 10:05:00" << true;
    QTest::newRow("touched 15 s after import: not a change") << qint64(1000) << "2026-07-01 10:05:15" << "2026-07-01 10:05:00" << false;
    QTest::newRow("touched 16 s after import") << qint64(1000) << "2026-07-01 10:05:16" << "2026-07-01 10:05:00" << true;
    QTest::newRow("older time, same length") << qint64(1000) << "2026-06-30 08:00:00" << "2026-07-01 10:05:00" << false;
    QTest::newRow("other time, no import moment") << qint64(1000) << "2026-07-01 10:00:01" << "" << true;
}

void AlbumTest::outsideChangeRule()
{
    QFETCH(qint64, fileSize);
    QFETCH(QString, fileModified);
    QFETCH(QString, archived);
    QFETCH(bool, changed);
    QCOMPARE(IsChangedOutside(QStringLiteral("1000"), QStringLiteral("2026-07-01 10:00:00"), archived, fileSize, fileModified), changed);
}

void AlbumTest::freeNames_data()
{
    QTest::addColumn<QStringList>("imported"); // names given to copies of real photos
    QTest::addColumn<bool>("allowNonJpeg");
    QTest::addColumn<QStringList>("leftoverThumbnails");
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QStringList>("thumbnails");
    QTest::newRow("a.jpg twice") << QStringList{"a.jpg", "a.jpg"} << false << QStringList{} << QStringList{"a.jpg", "a(1).jpg"} << QStringList{"a(1).jpg", "a.jpg"};
    QTest::newRow("b.png twice") << QStringList{"b.png", "b.png"} << true << QStringList{} << QStringList{"b.png", "b(1).png"} << QStringList{"b(1).png.jpg", "b.png.jpg"};
    QTest::newRow("PNG in a JPEG-only album") << QStringList{"b.png", "a.jpg"} << false << QStringList{} << QStringList{"a.jpg"} << QStringList{"a.jpg"};
    QTest::newRow("a name in another case is taken") << QStringList{"A.JPG", "a.jpg"} << false << QStringList{} << QStringList{"A.JPG", "a(1).jpg"} << QStringList{"A.JPG", "a(1).jpg"};
    QTest::newRow("a thumbnail left over") << QStringList{"c.jpg"} << false << QStringList{"c.jpg"} << QStringList{"c(1).jpg"} << QStringList{"c(1).jpg", "c.jpg"};
}

void AlbumTest::freeNames()
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

void AlbumTest::datesAndTimes()
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

// The window's way: the work runs on a worker thread, thumbnails and tags on every core, and each
// change to the document is carried to the interface thread, which serves its events meanwhile.
// The list ends as a file-by-file run on one thread leaves it, and the album opened on the worker
// (its drop folder imported there) ends living on the interface thread.
void AlbumTest::importOnAWorkerThread()
{
    struct InterfaceThreadLink : NoProgress {
        QObject *owner = nullptr;
        void Apply(const std::function<void()> &change) override { QMetaObject::invokeMethod(owner, [&change] { change(); }, Qt::BlockingQueuedConnection); }
    };
    auto single = NewAlbum(QStringLiteral("Single"));
    OrvAlbumImporter importer;
    importer.SetDocument(single.get());
    for (const QFileInfo &file : QDir(Corpus).entryInfoList(QDir::Files, QDir::Name))
        importer.ImportFiles({file.absoluteFilePath()}, quiet);
    QVERIFY(single->RecordCount() > 100);

    const QString dropped = environment->Root() + QStringLiteral("/Dropped");
    for (const QFileInfo &file : QDir(Corpus).entryInfoList(QDir::Files)) {
        QFile copy(CopyAs(file.absoluteFilePath(), dropped + u'/' + AlbumFormat::DropFolderName + u'/' + file.fileName()));
        QVERIFY(copy.open(QIODevice::ReadWrite) && copy.setFileTime(file.lastModified(), QFileDevice::FileModificationTime));
    }
    AlbumDocument::OpenResult opened;
    ScriptedPrompter no;
    no.answer = false;
    InterfaceThreadLink link;
    link.owner = this;
    std::unique_ptr<QThread> worker(QThread::create([&] { opened = OpenAlbumDocument(dropped, {}, no, link); }));
    QEventLoop loop;
    connect(worker.get(), &QThread::finished, &loop, &QEventLoop::quit);
    worker->start();
    loop.exec();
    worker->wait();
    QVERIFY(opened.document);
    QCOMPARE(opened.document->thread(), thread());

    const AlbumDocument *threaded = opened.document.get();
    QCOMPARE(Files(*threaded), Files(*single));
    for (int i = 1; i <= threaded->RecordCount(); ++i) {
        for (const QString &key : PhotoRecord::AllKeys()) {
            if (key != PhotoRecord::Archived && key != PhotoRecord::Created)
                QCOMPARE(threaded->Record(key, i), single->Record(key, i));
        }
        QVERIFY(QFileInfo::exists(threaded->ThumbnailFilePath(i)) || threaded->Record(PhotoRecord::Width, i) == QLatin1String("0"));
    }
}
void AlbumTest::reimportKeepsWhatTheUserSet()
{
    auto album = NewAlbum(QStringLiteral("Reread"));
    OrvAlbumImporter importer;
    importer.SetDocument(album.get());
    const QString placed = CopyAs(Corpus + QStringLiteral("exif-samples-DSCN0010.jpg"), environment->Root() + QStringLiteral("/in/placed.jpg"));
    importer.ImportFiles({placed, CopyAs(Corpus + QStringLiteral("drewnoakes-Nokia_3110c_Mobile_Phone.jpg"), environment->Root() + QStringLiteral("/in/undated.jpg"))}, quiet);
    QVERIFY(!album->Record(PhotoRecord::Latitude, 1).isEmpty()); // from its tags
    for (const auto &[key, value] : {std::pair{"CaptureDate", "2001-02-03 04:05:06"}, {"Latitude", "10.5"}, {"Longitude", "20.25"}, {"Elevation", "300"}, {"note", "mine"}})
        QVERIFY(SetRecordValue(*album, 1, EditableKey(QLatin1String(key)), QLatin1String(value)));
    QFile undated(album->PhotoFilePath(2));
    QVERIFY(undated.open(QIODevice::ReadWrite) && undated.setFileTime(QDateTime(QDate(2020, 1, 2), QTime(3, 4, 5)), QFileDevice::FileModificationTime));
    for (const int index : {1, 2})
        QVERIFY(importer.ReimportFile(index, quiet));
    QStringList kept;
    for (const QString &key : {PhotoRecord::CaptureDate, PhotoRecord::Latitude, PhotoRecord::Longitude, PhotoRecord::Elevation, PhotoRecord::Description})
        kept << album->Record(key, 1);
    QCOMPARE(kept, (QStringList{"2001-02-03 04:05:06", "10.500000", "20.250000", "300.0", "mine"}));
    QCOMPARE(album->Record(PhotoRecord::CaptureDate, 2), QStringLiteral("2020-01-02 03:04:05"));
}

namespace {

using RecordMap = QMap<QString, QString>;
using Operation = std::function<void(AlbumDocument &, const QString &root)>;

// A key never written reads as "": empty values are left out.
QList<RecordMap> Records(const AlbumDocument &album)
{
    QList<RecordMap> records(album.RecordCount());
    for (int i = 1; i <= album.RecordCount(); ++i) {
        for (const DataList::Entry &entry : album.List().ItemAt(i)) {
            if (!entry.value.isEmpty())
                records[i - 1].insert(album.List().KeyName(entry.key), entry.value);
        }
    }
    return records;
}

} // namespace

Q_DECLARE_METATYPE(Operation)

// A view model knows the album only through its signals: a list kept from them alone equals the
// document's records after every operation, and its row count agrees at every signal.
void AlbumTest::signalsTellEveryChange_data()
{
    QTest::addColumn<Operation>("operation");
    static ScriptedPrompter yes;
    static NoProgress none;
    QTest::newRow("import") << Operation([](AlbumDocument &album, const QString &) {
        OrvAlbumImporter importer;
        importer.SetDocument(&album);
        importer.ImportFiles({Corpus + QStringLiteral("drewnoakes-Nikon_D1X.jpg"), Corpus + QStringLiteral("drewnoakes-HTC_Desire.jpg")}, none);
    });
    QTest::newRow("outside changes: new, changed and removed files") << Operation([](AlbumDocument &album, const QString &) {
        CopyAs(Corpus + QStringLiteral("drewnoakes-Olympus_X-2.jpg"), album.PhotoFilesFolder() + QStringLiteral("/new.jpg"));
        QFile changed(album.PhotoFilePath(1));
        QVERIFY(changed.open(QIODevice::Append) && changed.write("more bytes") > 0);
        changed.close();
        QVERIFY(QFile::remove(album.PhotoFilePath(2)));
        ActionCheckModified(album, yes, none);
    });
    QTest::newRow("delete") << Operation([](AlbumDocument &album, const QString &) { // files gone already: no trash needed
        QVERIFY(QFile::remove(album.PhotoFilePath(1)) && QFile::remove(album.PhotoFilePath(3)));
        QCOMPARE(album.DeleteItems({3, 1}).failures.size(), 0);
    });
    QTest::newRow("arrange by time") << Operation([](AlbumDocument &album, const QString &) { QVERIFY(album.ActionArrangeByTimeDesc(yes)); });
    QTest::newRow("arrange by name") << Operation([](AlbumDocument &album, const QString &) { QVERIFY(album.ActionArrangeByFileDesc(yes)); });
    QTest::newRow("one note for many") << Operation([](AlbumDocument &album, const QString &) { QVERIFY(album.ActionSetNoteForSelectedPhotos({1, 3}, yes)); });
    QTest::newRow("keywords paste") << Operation([](AlbumDocument &album, const QString &) { album.ActionKeywordsPaste({2, 3}, QStringLiteral("sea;sun;")); });
    QTest::newRow("paste of copied photos") << Operation([](AlbumDocument &album, const QString &) {
        QVERIFY(ActionCopy(album, {1, 2}));
        QCOMPARE(ActionPaste(album, none).imported.size(), 2);
    });
    QTest::newRow("rotate") << Operation([](AlbumDocument &album, const QString &) { QCOMPARE(ActionRotateRight(album, {1, 3}, none), 2); });
    QTest::newRow("GPS match") << Operation([](AlbumDocument &album, const QString &root) {
        QByteArray points; // at the photos' capture times, each at its own height
        for (int i = 1; i <= album.RecordCount(); ++i)
            points += QStringLiteral("<trkpt lat=\"4%1.5\" lon=\"7\"><ele>%1</ele><time>%2Z</time></trkpt>").arg(i).arg(album.Record(PhotoRecord::CaptureDate, i).replace(u' ', u'T')).toUtf8();
        WriteAll(root + QStringLiteral("/t.gpx"), "<gpx version=\"1.1\"><trk><trkseg>" + points + "</trkseg></trk></gpx>");
        GpsStore store;
        QVERIFY(ImportGPXFile(store, root + QStringLiteral("/t.gpx")).ok);
        QCOMPARE(MatchPhotosWithTracks(album, MatchScope::AllPhotos, album.ActionSelectAllPhotos(), store, DefaultMatchWindow(0), yes, nullptr).located, 3);
    });
}

void AlbumTest::signalsTellEveryChange()
{
    QFETCH(Operation, operation);
    auto album = NewAlbum(QStringLiteral("Watched"));
    OrvAlbumImporter importer;
    importer.SetDocument(album.get());
    importer.ImportFiles({Jpeg, Corpus + QStringLiteral("exif-samples-DSCN0010.jpg"), Corpus + QStringLiteral("drewnoakes-Sony_DSC-HX5V_2.jpg")}, quiet);
    QVERIFY(album->SaveDocumentToFile().ok);
    const QList<RecordMap> before = Records(*album);

    QList<RecordMap> mirror = before;
    bool modified = false;
    QStringList faults;
    AlbumDocument *watched = album.get();
    const auto check = [&] { if (mirror.size() != watched->RecordCount()) faults << QString::number(mirror.size()); };
    connect(watched, &AlbumDocument::RecordsInserted, this, [&](int first, int count) {
        for (int i = first; i < first + count; ++i)
            mirror.insert(i - 1, Records(*watched)[i - 1]);
        check();
    });
    connect(watched, &AlbumDocument::RecordsRemoved, this, [&](int first, int count) { mirror.remove(first - 1, count); check(); });
    connect(watched, &AlbumDocument::RecordsChanged, this, [&](const QList<int> &indices, const QStringList &keys) {
        for (const int index : indices) {
            for (const QString &key : keys) {
                mirror[index - 1].remove(key);
                if (!watched->Record(key, index).isEmpty())
                    mirror[index - 1].insert(key, watched->Record(key, index));
            }
        }
    });
    connect(watched, &AlbumDocument::RecordsReordered, this, [&](const QList<int> &oldIndexOfNew) {
        const QList<RecordMap> old = mirror;
        for (qsizetype i = 0; i < oldIndexOfNew.size(); ++i)
            mirror[i] = old[oldIndexOfNew[i] - 1];
        check();
    });
    connect(watched, &AlbumDocument::ModifiedChanged, this, [&](bool on) { modified = on; });

    operation(*album, environment->Root());
    if (QTest::currentTestFailed())
        return;
    QVERIFY2(Records(*album) != before, "the operation changed nothing");
    QCOMPARE(faults, QStringList());
    QCOMPARE(mirror, Records(*album));
    QVERIFY(modified && album->IsModified());
}

QTEST_GUILESS_MAIN(AlbumTest)
#include "tst_Album.moc"
