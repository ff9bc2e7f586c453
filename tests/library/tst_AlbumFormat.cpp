#include "AlbumDocument.h"
#include "AlbumFormat.h"
#include "AppState.h"
#include "ExportSettings.h"
#include "HiddenFiles.h"
#include "Paths.h"
#include "Settings.h"
#include "TestEnvironment.h"

#include <QDir>
#include <QRegularExpression>
#include <QTest>

class AlbumFormatTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void names_data();
    void names();
    void blankPackage();
    void photoFolders();
    void opening_data();
    void opening();
    void damagedListIsNeverOverwritten();
    void conversion_data();
    void conversion();

private:
    std::unique_ptr<ScopedTestEnvironment> environment;
};

namespace {

void MakeFolder(const QString &path)
{
    QVERIFY(QDir().mkpath(path));
}

} // namespace

void AlbumFormatTest::init()
{
    environment.reset(); // the old one restores what it replaced: it must go before the new one comes
    environment = std::make_unique<ScopedTestEnvironment>();
    QDir().mkpath(environment->UserData());
    AppState().defaultAlbumFormat = 0;
}

void AlbumFormatTest::names_data()
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

void AlbumFormatTest::names()
{
    QFETCH(QString, path);
    QFETCH(bool, album);
    QFETCH(QString, title);
    QCOMPARE(IsAlbum(path), album);
    QCOMPARE(AlbumTitleFromPath(path), title);
}

void AlbumFormatTest::blankPackage()
{
    const QString album = environment->Root() + QStringLiteral("/Holiday.album");
    MakeFolder(album);
    QVERIFY(CreateBlankStudioPackage(album).ok);
    DataList list;
    QVERIFY(list.Load(AlbumFormat::StudioPlistPath(album)));
    const QStringList expectedKeys = {
        "Format", "Version", "Language", "Title", "Identification", "Category", "Description",
        "_Exporter.NeedExportThumbnail", "_Exporter.NeedExportPreview", "_Exporter.NeedExportStandard",
        "_Exporter.NeedExportFull", "_Exporter.StandardWidth", "_Exporter.StandardHeight", "_Exporter.NeedAddWatermark",
        "_Exporter.PlaceWatermarkAtLeftTop", "_Exporter.PlaceWatermarkAtLeftBottom", "_Exporter.PlaceWatermarkAtRightTop",
        "_Exporter.PlaceWatermarkAtRightBottom", "_Exporter.PlaceWatermarkAtCenter", "_Exporter.IsSharedServer",
        "_Exporter.FTPServerAddress", "_Exporter.FTPLoginName", "_Exporter.FTPPassword", "_Exporter.FTPDirectory"};
    QCOMPARE(list.DocumentKeys(), expectedKeys);
    const QStringList expectedValues = {"com.veltrix.orvana.studio.datalist", "1.0", "English", "Holiday", "", "", "",
                                        "1", "1", "1", "0", "640", "640", "0", "0", "0", "1", "0", "0", "0", "", "", "", ""};
    for (qsizetype i = 0; i < expectedKeys.size(); ++i) {
        if (expectedKeys[i] != QLatin1String("Identification"))
            QCOMPARE(list.GetDocumentProperty(expectedKeys[i]), expectedValues[i]);
    }
    QVERIFY(FolderExists(AlbumFormat::ThumbnailFolder(album)));

    // Identifications are time-based UUIDs and never repeat, even when made in the same moment.
    static const QRegularExpression uuid7(QStringLiteral("^[0-9a-f]{8}-[0-9a-f]{4}-7[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}$"));
    QSet<QString> seen;
    for (int i = 0; i < 1000; ++i)
        seen.insert(NewAlbumIdentification());
    QCOMPARE(seen.size(), 1000);
    const QString identification = list.GetDocumentProperty(QStringLiteral("Identification"));
    QVERIFY2(uuid7.match(identification).hasMatch(), qPrintable(identification));

    ExportSettings changed = ReadExportSettings(list);
    QVERIFY(changed.placeWatermarkAtRightTop && !changed.placeWatermarkAtCenter && changed.standardWidth == 640);
    changed.ftpPassword = QStringLiteral("p w");
    changed.standardHeight = 480;
    changed.needExportFull = true;
    WriteExportSettings(list, changed);
    const ExportSettings read = ReadExportSettings(list);
    QCOMPARE(read.ftpPassword, QStringLiteral("p w"));
    QCOMPARE(read.standardHeight, 480);
    QVERIFY(read.needExportFull);
    QCOMPARE(ReadExportSettings(DataList()).standardWidth, 0);
}

void AlbumFormatTest::photoFolders()
{
    const QString root = environment->Root();
    AppState().defaultAlbumFormat = 1;
    MakeFolder(root + QStringLiteral("/Pack.album"));
    QVERIFY(CreateBlankStudioPackage(root + QStringLiteral("/Pack.album")).ok);
    QCOMPARE(GetPhotoFilesPath(root + QStringLiteral("/Pack.album")), root + QStringLiteral("/Pack.album/studio.data/size_full"));
    QCOMPARE(GetPhotoFilesPathRelative(root + QStringLiteral("/Pack.album")), QStringLiteral("Pack.album/studio.data/size_full"));

    AppState().defaultAlbumFormat = 0;
    MakeFolder(root + QStringLiteral("/Flat.album"));
    QVERIFY(CreateBlankStudioPackage(root + QStringLiteral("/Flat.album")).ok);
    QCOMPARE(GetPhotoFilesPath(root + QStringLiteral("/Flat.album")), root + QStringLiteral("/Flat.album"));
    QCOMPARE(GetPhotoFilesPathRelative(root + QStringLiteral("/Flat.album")), QStringLiteral("Flat.album"));
}

void AlbumFormatTest::opening_data()
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

void AlbumFormatTest::opening()
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
        MakeFolder(album);
    if (hasData)
        MakeFolder(AlbumFormat::StudioDataPath(album));

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

void AlbumFormatTest::damagedListIsNeverOverwritten()
{
    const QString album = environment->Root() + QStringLiteral("/Damaged");
    MakeFolder(AlbumFormat::StudioDataPath(album));
    const QByteArray damaged = "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>Title</key><string>Half";
    WriteAll(AlbumFormat::StudioPlistPath(album), damaged);

    AlbumDocument::OpenResult opened = AlbumDocument::Open(album);
    QVERIFY(opened.document);
    QCOMPARE(opened.load.status, DataList::LoadStatus::Malformed);
    AlbumDocument &document = *opened.document;
    QVERIFY(document.IsNoSave());
    document.List().SetDocumentProperty(QStringLiteral("Title"), QStringLiteral("Edited"));
    document.DocumentWasModified();
    QVERIFY(document.SaveDocumentToFile().ok);
    QVERIFY(!document.IsModified());
    QCOMPARE(ReadAll(AlbumFormat::StudioPlistPath(album)), damaged);
}

void AlbumFormatTest::conversion_data()
{
    QTest::addColumn<QStringList>("entries"); // names ending in "/" are folders
    QTest::addColumn<int>("format");
    QTest::addColumn<bool>("allowNonJpeg");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("photoAt"); // where a.jpg is found afterwards, relative to the root
    const int converted = int(ConvertStatus::Converted);
    const int refused = int(ConvertStatus::NonPhotoContained);
    QTest::newRow("photos only") << QStringList{"a.jpg", "b.JPEG"} << 0 << false << converted << "Pics.album/a.jpg";
    QTest::newRow("package: photos go to the drop folder") << QStringList{"a.jpg"} << 1 << false << converted << "Pics.album/raw.files/a.jpg";
    QTest::newRow("hidden subfolder is fine") << QStringList{"a.jpg", ".thumbs/"} << 0 << false << converted << "Pics.album/a.jpg";
    QTest::newRow("subfolder listed as hidden is fine") << QStringList{"a.jpg", "cache/", ".hidden=cache"} << 0 << false << converted << "Pics.album/a.jpg";
    QTest::newRow("visible subfolder") << QStringList{"a.jpg", "more/"} << 0 << false << refused << "Pics/a.jpg";
    QTest::newRow("visible text file") << QStringList{"a.jpg", "notes.txt"} << 0 << false << refused << "Pics/a.jpg";
    QTest::newRow("PNG without AllowNonJPEG") << QStringList{"a.jpg", "c.PNG"} << 0 << false << refused << "Pics/a.jpg";
    QTest::newRow("PNG with AllowNonJPEG") << QStringList{"a.jpg", "c.PNG"} << 0 << true << converted << "Pics.album/a.jpg";
    QTest::newRow("target exists") << QStringList{"a.jpg", "../Pics.album/"} << 0 << false << int(ConvertStatus::TargetExists) << "Pics/a.jpg";
}

void AlbumFormatTest::conversion()
{
    QFETCH(QStringList, entries);
    QFETCH(int, format);
    QFETCH(bool, allowNonJpeg);
    QFETCH(int, status);
    QFETCH(QString, photoAt);
    AppState().defaultAlbumFormat = format;
    WriteSetting(QStringLiteral("System"), QStringLiteral("AllowNonJPEG"), allowNonJpeg ? QStringLiteral("1") : QStringLiteral("0"));
    const QString folder = environment->Root() + QStringLiteral("/Pics");
    MakeFolder(folder);
    for (const QString &entry : entries) {
        if (entry.endsWith(u'/'))
            MakeFolder(folder + u'/' + entry);
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

QTEST_GUILESS_MAIN(AlbumFormatTest)
#include "tst_AlbumFormat.moc"
