#include "AlbumDocument.h"
#include "AppState.h"
#include "OutsideChanges.h"
#include "PhotoRecord.h"
#include "Prompter.h"
#include "RecordEdit.h"
#include "Settings.h"
#include "TestEnvironment.h"

#include <QDir>
#include <QTest>

class AlbumDocumentTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void classification_data();
    void classification();
    void arrangeOrderSurvivesReopening();
    void arrangeAsksFirst();
    void findByDate_data();
    void findByDate();
    void starsAndSelections();
    void totals();
    void unsafeNamesAreLeftAlone();
    void typedValues_data();
    void typedValues();
    void searchesAndNotes();
    void keywordPaste_data();
    void keywordPaste();
    void deletion();
    void outsideChangeRule_data();
    void outsideChangeRule();

private:
    std::unique_ptr<AlbumDocument> MakeAlbum(const QList<QStringList> &records); // File, CaptureDate, Size, Star
    std::unique_ptr<ScopedTestEnvironment> environment;
    QString albumPath;
};

namespace {

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
    std::optional<QString> AskText(const QString &, const QString &, const QString &) override { return std::nullopt; }
};

QStringList Files(const AlbumDocument &album)
{
    QStringList files;
    for (int i = 1; i <= album.RecordCount(); ++i)
        files << album.Record(PhotoRecord::File, i);
    return files;
}

QStringList SelectedFiles(const AlbumDocument &album)
{
    QStringList files;
    for (const int index : album.SelectedIndices())
        files << album.Record(PhotoRecord::File, index);
    return files;
}

const QList<QStringList> Holiday = {
    {"c.jpg", "2026-07-02 09:15:00", "300", "0"},
    {"a.jpg", "2026-07-01 18:40:10", "100", "1"},
    {"d.jpg", "", "400", ""},
    {"b.jpg", "2026-07-02 09:59:59", "200", "1"},
};

} // namespace

void AlbumDocumentTest::init()
{
    environment.reset();
    environment = std::make_unique<ScopedTestEnvironment>();
    QDir().mkpath(environment->UserData());
    AppState().defaultAlbumFormat = 0;
    albumPath = environment->Root() + QStringLiteral("/Holiday");
}

std::unique_ptr<AlbumDocument> AlbumDocumentTest::MakeAlbum(const QList<QStringList> &records)
{
    QDir().mkpath(albumPath);
    auto opened = AlbumDocument::Open(albumPath);
    for (const QStringList &record : records) {
        DataList &list = opened.document->List();
        const int index = list.ItemCount() + 1;
        list.AddItem(index);
        const QStringList keys = {PhotoRecord::File, PhotoRecord::CaptureDate, PhotoRecord::Size, PhotoRecord::Star};
        for (qsizetype k = 0; k < record.size(); ++k)
            list.SetItemProperty(keys[k], record[k], index);
    }
    opened.document->SaveDocumentToFile();
    return AlbumDocument::Open(albumPath).document;
}

void AlbumDocumentTest::classification_data()
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

void AlbumDocumentTest::classification()
{
    QFETCH(QString, name);
    QFETCH(bool, allowNonJpeg);
    QFETCH(bool, photo);
    QFETCH(QString, thumbnail);
    QCOMPARE(PhotoRecord::IsPhotoFile(name, allowNonJpeg), photo);
    QCOMPARE(PhotoRecord::ThumbnailName(name), thumbnail);
}

void AlbumDocumentTest::arrangeOrderSurvivesReopening()
{
    auto album = MakeAlbum(Holiday);
    QVERIFY(album->ArrangePhotos(PhotoRecord::CaptureDate, false, false, nullptr));
    QCOMPARE(Files(*album), (QStringList{"b.jpg", "c.jpg", "a.jpg", "d.jpg"}));
    QVERIFY(album->IsModified());
    QVERIFY(album->ArrangePhotos(PhotoRecord::File, true, false, nullptr));
    QVERIFY(album->SaveDocumentToFile().ok);
    QCOMPARE(Files(*AlbumDocument::Open(albumPath).document), (QStringList{"a.jpg", "b.jpg", "c.jpg", "d.jpg"}));
    QCOMPARE(album->CurrentIndex(), 1);
}

void AlbumDocumentTest::arrangeAsksFirst()
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

void AlbumDocumentTest::findByDate_data()
{
    QTest::addColumn<QDateTime>("date");
    QTest::addColumn<QString>("format");
    QTest::addColumn<QStringList>("found");
    QTest::addColumn<QString>("current");
    QTest::newRow("a day") << QDateTime(QDate(2026, 7, 2), QTime(13, 0)) << "yyyy-mm-dd" << QStringList{"c.jpg", "b.jpg"} << "c.jpg";
    QTest::newRow("an hour") << QDateTime(QDate(2026, 7, 1), QTime(18, 5)) << "yyyy-mm-dd hh" << QStringList{"a.jpg"} << "a.jpg";
    QTest::newRow("a day no photo has") << QDateTime(QDate(2026, 7, 3), QTime()) << "yyyy-mm-dd" << QStringList{} << "c.jpg";
    QTest::newRow("another format selects nothing") << QDateTime(QDate(2026, 7, 2), QTime()) << "dd.mm.yyyy" << QStringList{"a.jpg"} << "c.jpg";
}

void AlbumDocumentTest::findByDate()
{
    QFETCH(QDateTime, date);
    QFETCH(QString, format);
    QFETCH(QStringList, found);
    QFETCH(QString, current);
    auto album = MakeAlbum(Holiday);
    album->SetSelected(2, true); // an earlier selection: cleared by a search, kept when none runs
    const int count = album->FindItemsWithDate(date, format);
    QCOMPARE(SelectedFiles(*album), found);
    QCOMPARE(count, format == QLatin1String("dd.mm.yyyy") ? 0 : found.size());
    QCOMPARE(album->Record(PhotoRecord::File, album->CurrentIndex()), current);
}

void AlbumDocumentTest::starsAndSelections()
{
    auto album = MakeAlbum(Holiday);
    album->ActionSelectStarPhotos();
    QCOMPARE(SelectedFiles(*album), (QStringList{"a.jpg", "b.jpg"}));
    album->ActionInverseSelection();
    QCOMPARE(SelectedFiles(*album), (QStringList{"c.jpg", "d.jpg"}));
    album->ActionStar(true);
    album->ActionSelectStarPhotos();
    QCOMPARE(SelectedFiles(*album), (QStringList{"c.jpg", "a.jpg", "d.jpg", "b.jpg"}));
    QVERIFY(album->IsModified());

    album->SetHighlightItems({2, 4, 99});
    album->ActionSelectHighlightPhotos();
    QCOMPARE(SelectedFiles(*album), (QStringList{"a.jpg", "b.jpg"}));
    album->ActionStar(false);
    QCOMPARE(album->Record(PhotoRecord::Star, 2), QStringLiteral("0"));
    QCOMPARE(album->Record(PhotoRecord::Star, 1), QStringLiteral("1"));

    // In the detail view only the photo shown is starred, whatever is selected.
    album->ActionSelectAllPhotos();
    album->SetView(AlbumDocument::View::Detail);
    album->SetCurrentIndex(4);
    album->ActionStar(true);
    album->ActionSelectStarPhotos();
    QCOMPARE(SelectedFiles(*album), (QStringList{"c.jpg", "d.jpg", "b.jpg"}));
}

void AlbumDocumentTest::totals()
{
    auto album = MakeAlbum(Holiday + QList<QStringList>{{"e.jpg", "", "12 bytes"}});
    QCOMPARE(album->GetTotalBytesByDatalist(), qint64(1012));
    WriteAll(albumPath + QStringLiteral("/a.jpg"), QByteArray(100, 'x'));
    WriteAll(albumPath + QStringLiteral("/b.JPEG"), QByteArray(50, 'x'));
    WriteAll(albumPath + QStringLiteral("/map.png"), QByteArray(70, 'x'));
    WriteAll(albumPath + QStringLiteral("/notes.txt"), QByteArray(9, 'x'));
    QCOMPARE(album->GetTotalBytesByFileSystem(), qint64(150));
    WriteSetting(QStringLiteral("System"), QStringLiteral("AllowNonJPEG"), QStringLiteral("1"));
    QCOMPARE(album->GetTotalBytesByFileSystem(), qint64(220));
}

void AlbumDocumentTest::unsafeNamesAreLeftAlone()
{
    auto album = MakeAlbum({{"ok.jpg"}, {"../outside.jpg"}, {"/etc/passwd"}, {"sub/inner.jpg"}, {"..\\win.jpg"},
                            {"nul"}, {".."}, {"two..dots.jpg"}});
    album->List().SetItemProperty(PhotoRecord::File, QString::fromUtf8("nul\0.jpg", 8), 6);
    QCOMPARE(album->UnsafeRecords(), (QList<int>{2, 3, 4, 5, 6, 7}));
    QCOMPARE(album->PhotoFilePath(1), albumPath + QStringLiteral("/ok.jpg"));
    QCOMPARE(album->PhotoFilePath(8), albumPath + QStringLiteral("/two..dots.jpg"));
    for (int index = 2; index <= 7; ++index) {
        QCOMPARE(album->PhotoFilePath(index), QString());
        QCOMPARE(album->ThumbnailFilePath(index), QString());
    }
}

void AlbumDocumentTest::typedValues_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<QString>("stored");
    QTest::newRow("latitude six decimals") << "Latitude" << "-33.8" << true << "-33.800000";
    QTest::newRow("elevation one decimal") << "ele" << "12.345" << true << "12.3";
    QTest::newRow("empty position clears") << "Latitude" << "" << true << "";
    QTest::newRow("latitude past the pole") << "Latitude" << "91" << false << "12.500000";
    QTest::newRow("not a number") << "Longitude" << "east" << false << "";
    QTest::newRow("capture date without time") << "CaptureDate" << "2025-12-31" << false << "2026-07-02 09:15:00";
    QTest::newRow("star is 0 or 1") << "star" << "yes" << false << "0";
    QTest::newRow("camera rows are read-only") << "CameraMaker" << "Leica" << false << "";
    QTest::newRow("file name is read-only") << "File" << "x.jpg" << false << "c.jpg";
}

void AlbumDocumentTest::typedValues()
{
    QFETCH(QString, key);
    QFETCH(QString, typed);
    QFETCH(bool, accepted);
    QFETCH(QString, stored);
    auto album = MakeAlbum(Holiday);
    album->List().SetItemProperty(PhotoRecord::Latitude, QStringLiteral("12.500000"), 1);
    const QString recordKey = EditableKey(key).isEmpty() ? key : EditableKey(key);
    const Result result = SetRecordValue(*album, 1, recordKey, typed);
    QCOMPARE(result.ok, accepted);
    QCOMPARE(album->Record(recordKey, 1), stored);
    QCOMPARE(album->IsModified(), accepted);
    if (recordKey == PhotoRecord::CameraMaker)
        QCOMPARE(result.message, QStringLiteral("Camera Maker is read-only and cannot be changed here."));
}

void AlbumDocumentTest::searchesAndNotes()
{
    auto album = MakeAlbum(Holiday);
    album->SetNoteForPhotos({1, 3}, QStringLiteral("Sunrise over the BAY"));
    album->List().SetItemProperty(PhotoRecord::Keywords, QStringLiteral("bay;boats;"), 2);
    const QList<QPair<QString, QList<int>>> searches = {
        {QStringLiteral("bay"), {1, 2, 3}}, {QStringLiteral("B.JPG"), {4}}, {QStringLiteral("nothing"), {}}};
    for (const auto &[text, expected] : searches) {
        QCOMPARE(album->ActionSearch(text), static_cast<int>(expected.size()));
        QList<int> highlighted;
        for (int i = 1; i <= album->RecordCount(); ++i) {
            if (album->IsHighlighted(i))
                highlighted << i;
        }
        QCOMPARE(highlighted, expected);
    }
    QCOMPARE(album->ActionSearch(QString()), -1); // an empty search field changes nothing
    QVERIFY(!album->IsHighlighted(1));
    QCOMPARE(album->ActionHighlightNotedPhotos(), 2);
    QCOMPARE(AlbumDocument::FoundLabel(0), QStringLiteral("0 Item Found"));
    QCOMPARE(AlbumDocument::FoundLabel(1), QStringLiteral("1 Items Found"));
}

void AlbumDocumentTest::keywordPaste_data()
{
    QTest::addColumn<QString>("own");
    QTest::addColumn<QString>("pasted");
    QTest::addColumn<QString>("result");
    QTest::newRow("added after the photo's own") << "beach;" << "family;sun;" << "beach;family;sun;";
    QTest::newRow("no keyword twice, in any case") << "Beach;sun;" << "beach;SUN;sea;" << "Beach;sun;sea;";
    QTest::newRow("onto none") << "" << "a;b;" << "a;b;";
    QTest::newRow("blanks and empty pieces dropped") << " x ;;" << "; y;" << "x;y;";
}

void AlbumDocumentTest::keywordPaste()
{
    QFETCH(QString, own);
    QFETCH(QString, pasted);
    QFETCH(QString, result);
    auto album = MakeAlbum(Holiday);
    album->List().SetItemProperty(PhotoRecord::Keywords, own, 2);
    album->List().SetItemProperty(PhotoRecord::Keywords, pasted, 1);
    album->SetCurrentIndex(1);
    const QString copied = album->ActionKeywordsCopy();
    album->SetSelected(2, true);
    album->ActionKeywordsPaste(copied);
    QCOMPARE(album->Record(PhotoRecord::Keywords, 2), result);
    QCOMPARE(album->Record(PhotoRecord::Keywords, 3), QString());
}

void AlbumDocumentTest::deletion()
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
    album->SetSelected(4, true);

    ScriptedPrompter prompter;
    prompter.answer = false;
    QVERIFY(!album->ActionDelete(prompter));
    QCOMPARE(album->RecordCount(), 5);

    const QList<int> leftAlone = album->DeleteItems({2, 3, 5, 3}).leftAlone;
    QCOMPARE(leftAlone, QList<int>{5});
    QCOMPARE(Files(*album), (QStringList{"c.jpg", "b.jpg", "../outside.jpg"}));
    QCOMPARE(SelectedFiles(*album), QStringList{"b.jpg"}); // the selection stays with its record
    QVERIFY(!QFile::exists(albumPath + QStringLiteral("/a.jpg")));
    QVERIFY(QFile::exists(dataHome + QStringLiteral("/Trash/files/a.jpg")));
    QVERIFY(!QFile::exists(AlbumFormat::ThumbnailFolder(albumPath) + QStringLiteral("/a.jpg")));
    QVERIFY(!QFile::exists(AlbumFormat::ThumbnailFolder(albumPath) + QStringLiteral("/d.jpg")));
    QVERIFY(!QFile::exists(dataHome + QStringLiteral("/Trash/files/d.jpg")));
    QVERIFY(album->IsModified());
    qunsetenv("XDG_DATA_HOME");
}

void AlbumDocumentTest::outsideChangeRule_data()
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

void AlbumDocumentTest::outsideChangeRule()
{
    QFETCH(qint64, fileSize);
    QFETCH(QString, fileModified);
    QFETCH(QString, archived);
    QFETCH(bool, changed);
    QCOMPARE(IsChangedOutside(QStringLiteral("1000"), QStringLiteral("2026-07-01 10:00:00"), archived, fileSize, fileModified), changed);
}

QTEST_GUILESS_MAIN(AlbumDocumentTest)
#include "tst_AlbumDocument.moc"
