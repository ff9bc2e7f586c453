#include "publish/AlbumExportArguments.h"
#include "publish/FavoriteServers.h"
#include "publish/OrvAlbumExporter.h"
#include "library/AlbumOpening.h"
#include "library/AlbumFormat.h"
#include "app/ProgressSink.h"
#include "app/Prompter.h"
#include "app/Settings.h"
#include "TestEnvironment.h"
#include "ServerProcess.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTest>

namespace {

const QString Corpus = QStringLiteral(ORVANA_SOURCE_DIR "/../shared/corpus/photos/");
const QStringList Photos = {QStringLiteral("exif-samples-DSCN0010.jpg"), QStringLiteral("exif-samples-DSCN0021.jpg"),
                            QStringLiteral("exiv2-Reagan.jpg")};

class RecordingPrompter : public Prompter {
public:
    QStringList told;
    bool AskYesNo(const QString &, const QString &text) override { return told << text, false; }
    void Inform(const QString &, const QString &text) override { told << text; }
    void Error(const QString &, const QString &text) override { told << text; }
    std::optional<QString> AskText(const QString &, const QString &, const QString &) override { return std::nullopt; }
};

// Asks to stop as soon as a step of that title begins, as a user pressing Cancel would.
class CancelAt : public NoProgress {
public:
    QString step; // "" never
    bool cancelled = false;
    void Begin(const QString &title, int) override { cancelled = cancelled || (!step.isEmpty() && title.startsWith(step)); }
    bool Cancelled() const override { return cancelled; }
};

// The test publishing service on loopback, handing out an account on `ftp`.
class PublishingService {
public:
    PublishingService(const QString &log, quint16 ftpPort)
    {
        process.start(QStringLiteral("/usr/bin/python3"),
                      {QStringLiteral("-u"), QStringLiteral(ORVANA_SOURCE_DIR "/tests/publish/publishing_service.py"), log,
                       QStringLiteral("member"), QStringLiteral("member pass"), QStringLiteral("127.0.0.1"),
                       QString::number(ftpPort), QString::fromLatin1(ServerProcess::User),
                       QString::fromLatin1(ServerProcess::Password), QStringLiteral("orv")});
        QString output;
        while (!output.contains(u'\n') && process.waitForReadyRead(10000))
            output += QString::fromUtf8(process.readAllStandardOutput());
        port = output.section(u' ', 1).trimmed().toUShort();
    }
    ~PublishingService()
    {
        process.kill();
        process.waitForFinished(3000);
    }
    quint16 port = 0;

private:
    QProcess process;
};

} // namespace

// Export options, favourite servers, the web album folder and web sync, on real photos and a
// real FTP server.
class PublishTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void options_data();
    void options();
    void favourites_data();
    void favourites();
    void exportFolder_data();
    void exportFolder();
    void webSync_data();
    void webSync();

private:
    std::unique_ptr<AlbumDocument> NewAlbum();
    std::unique_ptr<ScopedTestEnvironment> environment;
    NoProgress quiet;
};

void PublishTest::init()
{
    environment = std::make_unique<ScopedTestEnvironment>();
    QDir().mkpath(environment->UserData());
}

void PublishTest::cleanup()
{
    environment.reset();
}

std::unique_ptr<AlbumDocument> PublishTest::NewAlbum()
{
    const QString folder = environment->Root() + QStringLiteral("/Trip");
    QDir().mkpath(folder);
    for (const QString &photo : Photos)
        QFile::copy(Corpus + photo, folder + u'/' + photo);
    RecordingPrompter prompter;
    return OpenAlbumDocument(folder, {}, prompter, quiet).document;
}

void PublishTest::options_data()
{
    QTest::addColumn<QString>("flag");
    QTest::addColumn<QString>("size");
    QTest::addColumn<bool>("full");
    QTest::addColumn<int>("width");
    QTest::newRow("missing properties read as off and 0") << QString() << QString() << false << 0;
    QTest::newRow("one and a whole size") << "1" << "640" << true << 640;
    QTest::newRow("any number but 0 is on") << "2" << "640.4" << true << 640;
    QTest::newRow("a half goes to the even size below") << "0" << "640.5" << false << 640;
    QTest::newRow("a half goes to the even size above") << "0.0" << "641.5" << false << 642;
    QTest::newRow("words read as off and 0") << "yes" << "wide" << false << 0;
}

void PublishTest::options()
{
    QFETCH(QString, flag);
    QFETCH(QString, size);
    DataList list;
    if (!flag.isNull()) {
        list.SetDocumentProperty(QStringLiteral("_Exporter.NeedExportFull"), flag);
        list.SetDocumentProperty(QStringLiteral("_Exporter.StandardWidth"), size);
    }
    AlbumExportArguments arguments;
    LoadExportArguments(list, arguments);
    QTEST(arguments.NeedExportFull, "full");
    QTEST(arguments.StandardWidth, "width");
    QVERIFY(!arguments.LeavePositionsOut);

    DataList saved;
    SaveExportArguments(saved, arguments);
    QCOMPARE(saved.GetDocumentProperty(QStringLiteral("_Exporter.NeedExportFull")), arguments.NeedExportFull ? "1" : "0");
    QCOMPARE(saved.GetDocumentProperty(QStringLiteral("_Exporter.StandardWidth")), QString::number(arguments.StandardWidth));
    QCOMPARE(saved.DocumentKeys().size(), qsizetype(ExportOptions().size()));
}

void PublishTest::favourites_data()
{
    QTest::addColumn<QList<QStringList>>("added"); // address, login, password, directory
    QTest::addColumn<QStringList>("urls");
    QTest::addColumn<QString>("firstPassword");
    QTest::newRow("a missing file is an empty list") << QList<QStringList>{} << QStringList{} << QString();
    QTest::newRow("the same server again keeps one entry with the new password")
        << QList<QStringList>{{"ftp.example.org", "ann", "old", "data"}, {"ftp.example.org", "ann", "new", "/data/"}}
        << QStringList{"ftp://ann@ftp.example.org/data/"} << "new";
    QTest::newRow("another login is another entry")
        << QList<QStringList>{{"host", "ann", "a", "/web"}, {"host", "bob", "b", "web/"}}
        << QStringList{"ftp://ann@host/web/", "ftp://bob@host/web/"} << "a";
}

void PublishTest::favourites()
{
    QFETCH(QList<QStringList>, added);
    FavoriteServers servers;
    servers.Load();
    for (const QStringList &server : added)
        servers.addFavoriteServer(server[0], server[1], server[2], server[3]);
    QVERIFY(servers.SaveFavoriteServerList());
    FavoriteServers reread;
    reread.Load();
    QStringList urls;
    for (const FavoriteServer &server : reread.All())
        urls << server.url;
    QTEST(urls, "urls");
    QTEST(reread.Count() ? reread.At(1).password : QString(), "firstPassword");
    const QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    QCOMPARE(QFile::permissions(FavoriteServers::FilePath()) & others, QFile::Permissions());
}

void PublishTest::exportFolder_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<bool>("onlyNoted");
    QTest::addColumn<QStringList>("folders");
    QTest::addColumn<int>("items"); // -1: cancelled, no folder left
    QTest::newRow("no size: only the list and the page") << QStringList{} << false << QStringList{} << 3;
    QTest::newRow("a cancelled export leaves no folder")
        << QStringList{"NeedExportPreview=1"} << false << QStringList{} << -1;
    QTest::newRow("every size, the watermark on the standard one")
        << QStringList{"NeedExportThumbnail=1", "NeedExportPreview=1", "NeedExportStandard=1", "NeedExportFull=1",
                       "StandardWidth=300", "StandardHeight=200", "NeedAddWatermark=1", "PlaceWatermarkAtRightBottom=1"}
        << false << QStringList{"size_0", "size_1", "size_2", "size_full"} << 3;
    QTest::newRow("only noted photos, positions left out")
        << QStringList{"NeedExportPreview=1", "LeavePositionsOut=1"} << true << QStringList{"size_1"} << 2;
}

void PublishTest::exportFolder()
{
    QFETCH(QStringList, options);
    QFETCH(QStringList, folders);
    std::unique_ptr<AlbumDocument> album = NewAlbum();
    QCOMPARE(album->RecordCount(), 3);
    album->SetNoteForPhotos({2}, QStringLiteral("At the lake"));
    AlbumExportArguments arguments;
    for (const QString &option : options)
        SetExportOptionText(arguments, *FindExportOption(option.section(u'=', 0, 0)), option.section(u'=', 1));
    QFETCH(bool, onlyNoted);
    arguments.OnlyNoted = onlyNoted;
    // A red mark, so that it shows in the corner it was put in.
    QImage mark(40, 40, QImage::Format_RGB32);
    mark.fill(Qt::red);
    QVERIFY(mark.save(AlbumFormat::StudioDataPath(album->Path()) + QStringLiteral("/watermark.png")));
    const QString folder = ExportFolderPath(album->Path());
    QDir().mkpath(folder + QStringLiteral("/size_1"));
    WriteAll(folder + QStringLiteral("/size_1/removed-photo.jpg"), "stale");

    OrvAlbumExporter exporter;
    exporter.SetDocument(*album);
    exporter.SetArguments(arguments);
    CancelAt progress;
    QFETCH(int, items);
    progress.step = items < 0 ? QStringLiteral("Generating") : QString();
    const ExportFolderReport report = exporter.GenerateExportFolder(progress);
    if (items < 0) {
        QVERIFY(report.cancelled && !QFile::exists(folder));
        return;
    }
    QVERIFY2(report.result, qPrintable(report.result.message));
    QCOMPARE(QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot), folders);
    QVERIFY(QFile::exists(folder + QStringLiteral("/album.html")));
    QVERIFY(!QFile::exists(folder + QStringLiteral("/size_1/removed-photo.jpg")));
    DataList list;
    QVERIFY(list.Load(folder + QStringLiteral("/album.plist")));
    QCOMPARE(list.ItemCount(), items);
    QCOMPARE(list.GetDocumentProperty(QStringLiteral("ItemCount")), QString::number(list.ItemCount()));
    QCOMPARE(list.GetDocumentProperty(QStringLiteral("CanvasWidth2")), QString::number(arguments.StandardWidth));
    const QString first = list.GetItemProperty(QStringLiteral("File"), 1);
    QCOMPARE(list.GetItemProperty(QStringLiteral("Latitude"), 1).isEmpty(), arguments.LeavePositionsOut);
    QCOMPARE(QString::fromUtf8(ReadAll(folder + QStringLiteral("/album.html"))).contains(QStringLiteral("At the lake")), true);
    // A model that does not name its maker keeps the maker in front of it.
    QVERIFY(QString::fromUtf8(ReadAll(folder + QStringLiteral("/album.html"))).contains(QStringLiteral("NIKON COOLPIX P6000")));

    if (folders.contains(QStringLiteral("size_2"))) {
        const QImage standard(folder + QStringLiteral("/size_2/") + first);
        const QImage full(folder + QStringLiteral("/size_full/") + first);
        const QImage preview(folder + QStringLiteral("/size_1/") + first);
        QCOMPARE(full.size(), QSize(640, 480));
        QCOMPARE(standard.size(), QSize(267, 200));
        QCOMPARE(preview.size(), QSize(256, 192));
        const QColor corner = standard.pixelColor(standard.width() - 20, standard.height() - 20);
        QVERIFY2(corner.red() > 200 && corner.green() < 60, "the mark is in the corner of the standard size");
        const QColor previewCorner = preview.pixelColor(preview.width() - 20, preview.height() - 20);
        QVERIFY2(!(previewCorner.red() > 200 && previewCorner.green() < 60), "previews carry no mark");
    }
}

void PublishTest::webSync_data()
{
    QTest::addColumn<bool>("shared");
    QTest::addColumn<bool>("baseline");   // a whole sync first
    QTest::addColumn<QString>("change");  // what happens between the two
    QTest::addColumn<QStringList>("uploads");
    QTest::addColumn<QString>("heard");   // what the service hears at the end
    QTest::addColumn<int>("outcome");     // 0 done, 1 failed, 2 cancelled
    const QString list = QStringLiteral("album.plist");
    const QString second = QStringLiteral("size_1/") + Photos[1];
    const QString secondStd = QStringLiteral("size_2/") + Photos[1];
    QStringList everything;
    for (const QString &photo : Photos)
        everything << QStringLiteral("size_1/") + photo << QStringLiteral("size_2/") + photo;
    QTest::newRow("a second sync uploads only the list") << false << true << "" << QStringList{list} << "" << 0;
    QTest::newRow("a changed Modified uploads that photo again")
        << false << true << "modified" << QStringList{second, secondStd, list} << "" << 0;
    QTest::newRow("a renamed photo goes up under its new name")
        << false << true << "renamed" << QStringList{"size_1/renamed.jpg", "size_2/renamed.jpg", list} << "" << 0;
    QTest::newRow("a first publication through the service")
        << true << false << "" << everything + QStringList{list} << "cancel=0&error=0" << 0;
    QTest::newRow("a refused login uploads nothing") << true << false << "refused" << QStringList{} << "" << 1;
    QTest::newRow("a server failure midway is reported")
        << true << true << "broken" << QStringList{"size_1/" + Photos[0]} << "cancel=0&error=1" << 1;
    QTest::newRow("cancel is reported") << true << false << "cancel" << QStringList{list} << "cancel=1&error=0" << 2;
}

void PublishTest::webSync()
{
    QFETCH(bool, shared);
    QFETCH(QString, change);
    QFETCH(int, outcome);
    ServerProcess ftp(ServerProcess::Ftp);
    QVERIFY(ftp.Started());
    QVERIFY(QDir().mkpath(ftp.Root() + QStringLiteral("/orv/data")));
    const QString log = environment->Root() + QStringLiteral("/service.log");
    PublishingService service(log, ftp.Port());
    QVERIFY(service.port != 0);
    WriteSetting(QStringLiteral("System"), QStringLiteral("SharedServer"), QStringLiteral("http://127.0.0.1:%1").arg(service.port));
    WriteSetting(QStringLiteral("System"), QStringLiteral("SharedServerLoginName"), QStringLiteral("member"));
    WriteSetting(QStringLiteral("System"), QStringLiteral("SharedServerPassword"),
                 change == QLatin1String("refused") ? QStringLiteral("wrong") : QStringLiteral("member pass"));

    std::unique_ptr<AlbumDocument> album = NewAlbum();
    AlbumExportArguments arguments;
    arguments.NeedExportPreview = arguments.NeedExportStandard = true;
    arguments.StandardWidth = arguments.StandardHeight = 160;
    arguments.IsSharedServer = shared;
    arguments.FTPServerAddress = QStringLiteral("127.0.0.1:%1").arg(ftp.Port());
    arguments.FTPLoginName = QString::fromLatin1(ServerProcess::User);
    arguments.FTPPassword = QString::fromLatin1(ServerProcess::Password);
    arguments.FTPDirectory = QStringLiteral("orv");
    OrvAlbumExporter exporter;
    exporter.SetDocument(*album);
    exporter.SetArguments(arguments);
    RecordingPrompter prompter;
    const QString remote = ftp.Root() + QStringLiteral("/orv/data/")
        + album->List().GetDocumentProperty(QStringLiteral("Identification")) + QStringLiteral(".data/");
    QFETCH(bool, baseline);
    if (baseline)
        QVERIFY(!exporter.WebSync(prompter, quiet, {}).failed);

    if (change == QLatin1String("modified")) {
        album->SetRecordValue(2, QStringLiteral("Modified"), QStringLiteral("2030-01-01 10:00:00"));
    } else if (change == QLatin1String("renamed")) {
        QVERIFY(QFile::rename(album->PhotoFilePath(3), album->PhotoFilesFolder() + QStringLiteral("/renamed.jpg")));
        album->SetRecordValue(3, QStringLiteral("File"), QStringLiteral("renamed.jpg"));
    } else if (change == QLatin1String("broken")) {
        // The standard size's folder on the server turns into a file: its uploads fail.
        QVERIFY(QDir(remote + QStringLiteral("size_2")).removeRecursively());
        WriteAll(remote + QStringLiteral("size_2"), "not a folder");
        arguments.ForceUpdateAll = true;
        exporter.SetArguments(arguments);
    }
    QFile::remove(log);
    CancelAt progress;
    progress.step = change == QLatin1String("cancel") ? QStringLiteral("Uploading") : QString();
    QString opened;
    const WebSyncReport report = exporter.WebSync(prompter, progress, [&](const QString &address) { opened = address; });

    QStringList uploads;
    for (const QString &path : report.uploaded)
        uploads << path.section(u'/', 1);
    QTEST(uploads, "uploads");
    QCOMPARE(int(report.failed) + 2 * int(report.cancelled), outcome);
    QCOMPARE(prompter.told.constLast(), report.message);
    const QString heard = QString::fromUtf8(ReadAll(log));
    QTEST(heard.section(QStringLiteral("/websync/post-sync/"), 1).section(u'\n', 0, 0).section(u'&', 3, 4), "heard");
    if (change == QLatin1String("renamed"))
        QVERIFY2(QFile::exists(remote + QStringLiteral("size_1/") + Photos[2]), "the old files stay on the server");
    if (change == QLatin1String("broken"))
        QVERIFY2(report.message.section(u'\n', 1).size() > 0, "the engine's reason follows the message");
    if (change == QLatin1String("refused"))
        QVERIFY(!heard.contains(QLatin1String("pre-sync")));
    QCOMPARE(opened.isEmpty(), !(shared && outcome == 0));
    QVERIFY(!QFile::exists(AlbumFormat::StudioDataPath(album->Path()) + QStringLiteral("/~album.plist")));
}

QTEST_GUILESS_MAIN(PublishTest)
#include "tst_Publish.moc"
