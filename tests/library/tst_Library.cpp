#include "library/AlbumDiscovery.h"
#include "library/AlbumFormat.h"
#include "library/AlbumPreview.h"
#include "library/CalendarFlags.h"
#include "library/GlobalSearch.h"
#include "library/LibraryFolders.h"
#include "library/OpenAlbums.h"
#include "library/SearchDomains.h"
#include "app/Language.h"
#include "app/ProgressSink.h"
#include "app/Prompter.h"
#include "app/Settings.h"
#include "datalist/DataList.h"
#include "TestEnvironment.h"

#include <QDir>
#include <QTest>

// The album library: which folders are albums, the folder commands, the search domains, the
// global search and the calendar marks.
class LibraryTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void discovery_data();
    void discovery();
    void folderCommands_data();
    void folderCommands();
    void previewFacts_data();
    void previewFacts();
    void searchDomains();
    void globalSearch_data();
    void globalSearch();
    void calendarFlags_data();
    void calendarFlags();

private:
    QString library;
    std::unique_ptr<ScopedTestEnvironment> environment;
};

namespace {

class ScriptedPrompter : public Prompter {
public:
    std::optional<QString> name;
    QStringList told;
    bool AskYesNo(const QString &, const QString &) override { return true; }
    void Inform(const QString &, const QString &text) override { told << text; }
    void Error(const QString &, const QString &text) override { told << text; }
    std::optional<QString> AskText(const QString &, const QString &, const QString &initial) override
    {
        told << QStringLiteral("asked:") + initial;
        return name;
    }
};

// Records which albums were asked to close, and whether they agree.
class ScriptedOpenAlbums : public OpenAlbums {
public:
    bool agree = true;
    QStringList closed;
    ScriptedPrompter *prompter = nullptr;
    bool CloseAlbumsUnder(const QString &path) override
    {
        closed << QFileInfo(path).fileName() + (prompter && !prompter->told.isEmpty() ? QStringLiteral(" after asking") : QString());
        return agree;
    }
};

// records: File, CaptureDate, Description, Keywords
void WriteAlbum(const QString &path, const QString &title, const QList<QStringList> &records)
{
    QDir().mkpath(AlbumFormat::ThumbnailFolder(path));
    DataList list;
    list.SetDocumentProperty(QStringLiteral("Title"), title);
    const QStringList keys{QStringLiteral("File"), QStringLiteral("CaptureDate"), QStringLiteral("Description"), QStringLiteral("Keywords")};
    for (const QStringList &record : records) {
        list.AddItem(list.ItemCount() + 1);
        for (qsizetype k = 0; k < record.size(); ++k)
            list.SetItemProperty(keys[k], record[k], list.ItemCount());
        list.SetItemProperty(QStringLiteral("Size"), QStringLiteral("1000"), list.ItemCount());
    }
    QVERIFY(list.Save(AlbumFormat::StudioPlistPath(path)));
}

DataList Captures(const QStringList &dates)
{
    DataList list;
    for (const QString &date : dates) {
        list.AddItem(list.ItemCount() + 1);
        list.SetItemProperty(QStringLiteral("CaptureDate"), date, list.ItemCount());
    }
    return list;
}

QString Message(const char *key)
{
    return GetLocalizedString(QString::fromLatin1(key), QStringLiteral("OrvDocument"));
}

} // namespace

void LibraryTest::init()
{
    environment.reset();
    environment = std::make_unique<ScopedTestEnvironment>();
    library = environment->Root() + QStringLiteral("/Albums");
    QDir().mkpath(library);
    QDir().mkpath(environment->UserData());
    WriteSetting(QStringLiteral("Library"), QStringLiteral("MainPath"), library);
    // The trash of the test's own, never the user's.
    qputenv("XDG_DATA_HOME", (environment->Root() + QStringLiteral("/data")).toUtf8());
}

void LibraryTest::cleanup()
{
    qunsetenv("XDG_DATA_HOME");
}

void LibraryTest::discovery_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("withData");
    QTest::addColumn<bool>("listedHidden");
    QTest::addColumn<bool>("shown");
    QTest::newRow("album") << "Trip.album" << true << false << true;
    QTest::newRow("suffix in capitals") << "Trip.ALBUM" << true << false << true;
    QTest::newRow("no studio.data") << "Empty.album" << false << false << false;
    QTest::newRow("hidden by its dot") << ".Secret.album" << true << false << false;
    QTest::newRow("hidden by .hidden") << "Secret.album" << true << true << false;
    QTest::newRow("plain folder with data") << "Trip" << true << false << false;
}

void LibraryTest::discovery()
{
    QFETCH(QString, name);
    QFETCH(bool, withData);
    QFETCH(bool, listedHidden);
    QFETCH(bool, shown);
    const QString path = library + u'/' + name;
    QDir().mkpath(withData ? AlbumFormat::ThumbnailFolder(path) : path);
    if (listedHidden)
        WriteAll(library + QStringLiteral("/.hidden"), name.toUtf8() + '\n');
    QCOMPARE(FindAlbums(library), shown ? QStringList{path} : QStringList{});
    QCOMPARE(IsShownAlbum(path), shown);
    QCOMPARE(TreeNodeCaption(QStringLiteral("Albums"), static_cast<int>(FindAlbums(library).size())),
             shown ? QStringLiteral("Albums (1)") : QStringLiteral("Albums"));
    // A cell steps through the album's JPEG thumbnails, never through "._" companions.
    if (shown) {
        for (const char *file : {"b.jpg", "._a.jpg", "a.JPG", "c.png"})
            WriteAll(AlbumFormat::ThumbnailFolder(path) + u'/' + QLatin1String(file), "x");
        QCOMPARE(AlbumThumbnailFiles(path), (QStringList{AlbumFormat::ThumbnailFolder(path) + QStringLiteral("/a.JPG"),
                                                          AlbumFormat::ThumbnailFolder(path) + QStringLiteral("/b.jpg")}));
    }
}

void LibraryTest::folderCommands_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("agree");
    QTest::addColumn<QStringList>("expectedFolders");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QStringList>("closed");
    const QStringList before{"Old.album", "Taken.album", "Trips"};
    QTest::newRow("new album gets the suffix") << "new album" << "Lake" << true << QStringList{"Lake.album", "Old.album", "Taken.album", "Trips"} << "" << QStringList{};
    QTest::newRow("suffix typed is not doubled") << "new album" << "Lake.ALBUM" << true << QStringList{"Lake.ALBUM", "Old.album", "Taken.album", "Trips"} << "" << QStringList{};
    QTest::newRow("new album with a taken name") << "new album" << "Taken" << true << before << "MessageNameExists" << QStringList{};
    QTest::newRow("empty answer makes nothing") << "new album" << "" << true << before << "" << QStringList{};
    QTest::newRow("new folder") << "new folder" << "Birds" << true << QStringList{"Birds", "Old.album", "Taken.album", "Trips"} << "" << QStringList{};
    QTest::newRow("new folder with a taken name") << "new folder" << "Trips" << true << before << "MessageNameExists" << QStringList{};
    QTest::newRow("renaming an open album closes it first") << "rename album" << "New" << true << QStringList{"New.album", "Taken.album", "Trips"} << "" << QStringList{"Old.album"};
    QTest::newRow("rename refused by its window") << "rename album" << "New" << false << before << "" << QStringList{"Old.album"};
    QTest::newRow("rename onto a taken name") << "rename album" << "Taken.album" << true << before << "MessageNameExists" << QStringList{"Old.album"};
    QTest::newRow("trashing an open album closes it first") << "trash album" << "" << true << QStringList{"Taken.album", "Trips"} << "" << QStringList{"Old.album"};
    QTest::newRow("trash refused by its window") << "trash album" << "" << false << before << "" << QStringList{"Old.album"};
    QTest::newRow("folder rename has no suffix rule") << "rename folder" << "Journeys" << true << QStringList{"Journeys", "Old.album", "Taken.album"} << "" << QStringList{"Trips"};
}

void LibraryTest::folderCommands()
{
    QFETCH(QString, command);
    QFETCH(QString, answer);
    QFETCH(bool, agree);
    QFETCH(QStringList, expectedFolders);
    QFETCH(QString, message);
    QFETCH(QStringList, closed);
    for (const char *name : {"Old.album", "Taken.album"})
        QVERIFY(CreateNewAlbum(library + u'/' + QLatin1String(name)));
    QDir().mkpath(library + QStringLiteral("/Trips"));
    ScriptedPrompter prompter;
    prompter.name = answer;
    ScriptedOpenAlbums open;
    open.agree = agree;
    open.prompter = &prompter;
    std::optional<QString> made;
    if (command == QLatin1String("new album"))
        made = ActionNewAlbum(library, prompter);
    else if (command == QLatin1String("new folder"))
        made = ActionNewFolder(library, prompter);
    else if (command == QLatin1String("trash album"))
        made = ActionMoveAlbumToTrash(library + QStringLiteral("/Old.album"), prompter, open) ? std::optional<QString>(library) : std::nullopt;
    else if (command == QLatin1String("rename album"))
        made = ActionRenameAlbum(library + QStringLiteral("/Old.album"), prompter, open);
    else
        made = ActionRename(library + QStringLiteral("/Trips"), prompter, open);
    QCOMPARE(QDir(library).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name), expectedFolders);
    QCOMPARE(open.closed, closed);
    QCOMPARE(prompter.told.contains(Message("MessageNameExists")), !message.isEmpty());
    if (command == QLatin1String("rename album") && agree)
        QVERIFY(prompter.told.contains(QStringLiteral("asked:Old"))); // prefilled without ".album"
    QCOMPARE(made.has_value(), message.isEmpty() && agree && (!answer.isEmpty() || command == QLatin1String("trash album")));
    if (made)
        QVERIFY(QFileInfo(*made).isDir());
}

void LibraryTest::previewFacts_data()
{
    QTest::addColumn<QStringList>("captures");
    QTest::addColumn<QString>("facts"); // photos, total size, first and last capture
    QTest::newRow("first and last by time, not by order") << QStringList{"2024-05-01 12:00:00", "2023-01-02 00:05:00", "2024-05-01 23:59:00"}
                                                          << "3|3,000|2023-01-02 12:05 AM|2024-05-01 11:59 PM";
    QTest::newRow("noon is PM") << QStringList{"2024-05-01 12:30:00"} << "1|1,000|2024-05-01 12:30 PM|2024-05-01 12:30 PM";
    QTest::newRow("no dates") << QStringList{"", ""} << "2|2,000||";
    QTest::newRow("thousands grouped") << QStringList(1234, QString()) << "1,234|1,234,000||";
}

void LibraryTest::previewFacts()
{
    QFETCH(QStringList, captures);
    QFETCH(QString, facts);
    QList<QStringList> records;
    for (const QString &capture : captures)
        records.append({QStringLiteral("p.jpg"), capture});
    const QString album = library + QStringLiteral("/Days.album");
    WriteAlbum(album, QStringLiteral("Days"), records);
    AlbumPreview preview;
    QVERIFY(ReadAlbumPreview(album, preview));
    QCOMPARE(preview.title, QStringLiteral("Days"));
    QCOMPARE(QStringList({GroupedNumber(preview.photos), GroupedNumber(preview.totalSize), PreviewDateText(preview.firstCapture),
                          PreviewDateText(preview.lastCapture)}).join(u'|'),
             facts);
    QVERIFY(!ReadAlbumPreview(library + QStringLiteral("/Missing.album"), preview));
}

void LibraryTest::searchDomains()
{
    QVERIFY(!QFileInfo::exists(SearchDomainsPath()));
    QCOMPARE(LoadSearchDomains().size(), 1);
    QCOMPARE(LoadSearchDomains().front().path, library);
    QVERIFY(LoadSearchDomains().front().checked);
    DataList onDisk;
    QVERIFY(onDisk.Load(SearchDomainsPath()));
    QCOMPARE(onDisk.GetItemProperty(QStringLiteral("CHECK"), 1), QStringLiteral("1"));

    const QString other = environment->Root() + QStringLiteral("/More");
    QVERIFY(AddSearchDomain(other));
    QVERIFY(!AddSearchDomain(other + u'/'));
    QVERIFY(CheckSearchDomain(library, false));
    QVERIFY(onDisk.Load(SearchDomainsPath()));
    QCOMPARE(onDisk.GetItemProperty(QStringLiteral("CHECK"), 1), QStringLiteral("0"));
    QCOMPARE(onDisk.GetItemProperty(QStringLiteral("PATH"), 2), other);
    QVERIFY(RemoveSearchDomain(library));
    QVERIFY(!CheckSearchDomain(library, true));
    QCOMPARE(LoadSearchDomains().size(), 1);
}

void LibraryTest::globalSearch_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<QStringList>("rows"); // "title photos matched"
    QTest::newRow("file name, any case") << int(SearchMode::File) << "BEACH" << "" << "" << QStringList{"Summer 3 2"};
    QTest::newRow("notes") << int(SearchMode::Description) << "lake" << "" << "" << QStringList{"Winter 2 1", "Summer 3 1"};
    QTest::newRow("keywords") << int(SearchMode::Keywords) << "snow" << "" << "" << QStringList{"Winter 2 2"};
    QTest::newRow("no match gives no row") << int(SearchMode::File) << "desert" << "" << "" << QStringList{};
    QTest::newRow("text within a range") << int(SearchMode::Description) << "lake" << "2024-01-01" << "2024-12-31" << QStringList{"Winter 2 1"};
    QTest::newRow("date alone, ends included") << int(SearchMode::DateOnly) << "" << "2023-07-02" << "2024-01-05" << QStringList{"Winter 2 1", "Summer 3 1"};
    QTest::newRow("begin after end") << int(SearchMode::File) << "beach" << "2024-02-01" << "2024-01-01" << QStringList{"WrongDateDomain"};
    QTest::newRow("date mode without a range") << int(SearchMode::DateOnly) << "" << "" << "" << QStringList{"WrongDateDomain"};
}

void LibraryTest::globalSearch()
{
    QFETCH(int, mode);
    QFETCH(QString, text);
    QFETCH(QString, from);
    QFETCH(QString, to);
    QFETCH(QStringList, rows);
    WriteAlbum(library + QStringLiteral("/Summer.album"), QStringLiteral("Summer"),
               {{"beach1.jpg", "2023-07-01 10:00:00", "By the lake"},
                {"Beach2.jpg", "2023-07-02 23:59:59", "", "sun"},
                {"town.jpg", "", "market"}});
    WriteAlbum(library + QStringLiteral("/Sorted/Winter.album"), QStringLiteral("Winter"),
               {{"ski.jpg", "2024-01-05 00:00:00", "frozen lake", "snow"}, {"hut.jpg", "2024-01-06 08:00:00", "", "Snow, hut"}});
    WriteAlbum(library + QStringLiteral("/.Hidden.album"), QStringLiteral("Hidden"), {{"beach.jpg"}});
    QDir().mkpath(AlbumFormat::StudioDataPath(library + QStringLiteral("/NoList.album")));

    SearchQuery query{text, static_cast<SearchMode>(mode), {}, {}};
    if (!from.isEmpty()) {
        query.from = QDate::fromString(from, Qt::ISODate);
        query.to = QDate::fromString(to, Qt::ISODate);
    }
    const Result valid = CheckSearchQuery(query);
    if (rows == QStringList{"WrongDateDomain"}) {
        QCOMPARE(valid.message, GetLocalizedString(QStringLiteral("WrongDateDomain"), QStringLiteral("GlobalSearch")));
        return;
    }
    QVERIFY(valid);
    NoProgress progress;
    QStringList found;
    for (const AlbumMatch &match : SearchAlbums(query, AlbumsOfCheckedDomains(), progress))
        found << QStringLiteral("%1 %2 %3").arg(match.title).arg(match.photos).arg(match.matched);
    QCOMPARE(found, rows);
}

void LibraryTest::calendarFlags_data()
{
    QTest::addColumn<QStringList>("captures");
    QTest::addColumn<QString>("view");  // "month YEAR" or "week FIRSTDAY"
    QTest::addColumn<QList<QList<int>>>("marked");
    // March 2025 begins on a Saturday.
    QTest::newRow("31st of a month beginning on Saturday") << QStringList{"2025-03-31 12:00:00"} << "month 2025" << QList<QList<int>>{{3, 6, 2}};
    QTest::newRow("1st on Saturday") << QStringList{"2025-03-01 08:00:00"} << "month 2025" << QList<QList<int>>{{3, 1, 7}};
    QTest::newRow("other years unmarked") << QStringList{"2024-03-31 12:00:00", "2026-01-01 00:00:00"} << "month 2025" << QList<QList<int>>{};
    QTest::newRow("the same photo in its own year") << QStringList{"2024-03-31 12:00:00"} << "month 2024" << QList<QList<int>>{{3, 6, 1}};
    QTest::newRow("no date, no mark") << QStringList{"", "not a date"} << "month 2025" << QList<QList<int>>{};
    // The week of Sunday 2025-03-02 to Saturday 2025-03-08.
    QTest::newRow("23:59 on the last day") << QStringList{"2025-03-08 23:59:00"} << "week 2025-03-02" << QList<QList<int>>{{7, 24}};
    QTest::newRow("day after the week unmarked") << QStringList{"2025-03-09 00:00:00", "2025-03-01 23:59:59"} << "week 2025-03-02" << QList<QList<int>>{};
    QTest::newRow("two photos in an hour mark one cell") << QStringList{"2025-03-02 00:10:00", "2025-03-02 00:50:00"} << "week 2025-03-02" << QList<QList<int>>{{1, 1}};
}

void LibraryTest::calendarFlags()
{
    QFETCH(QStringList, captures);
    QFETCH(QString, view);
    QFETCH(QList<QList<int>>, marked);
    const DataList list = Captures(captures);
    const QStringList parts = view.split(u' ');
    QList<QList<int>> cells;
    if (parts[0] == QLatin1String("month")) {
        const MonthFlags flags = ComputeMonthFlags(list, parts[1].toInt());
        for (int m = 1; m <= 12; ++m)
            for (int r = 1; r <= 6; ++r)
                for (int w = 1; w <= 7; ++w)
                    if (flags.At(m, r, w))
                        cells.append({m, r, w});
    } else {
        const WeekFlags flags = ComputeWeekFlags(list, QDate::fromString(parts[1], Qt::ISODate));
        for (int w = 1; w <= 7; ++w)
            for (int s = 1; s <= 24; ++s)
                if (flags.At(w, s))
                    cells.append({w, s});
    }
    QCOMPARE(cells, marked);
}

QTEST_GUILESS_MAIN(LibraryTest)
#include "tst_Library.moc"
