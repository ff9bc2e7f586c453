#include "library/AlbumDocument.h"
#include "library/AlbumFormat.h"
#include "library/SearchDomains.h"
#include "app/Paths.h"
#include "app/Prompter.h"
#include "app/Settings.h"
#include "app/Startup.h"
#include "datalist/DataList.h"
#include "ui/album/AlbumWindow.h"
#include "ui/album/CalendarPages.h"
#include "ui/album/ExtraPanel.h"
#include "ui/album/MonthView.h"
#include "ui/album/ThumbnailView.h"
#include "ui/album/WeekView.h"
#include "ui/main/MainWindow.h"
#include "ui/manager/AlbumCell.h"
#include "ui/manager/AlbumManagerWindow.h"
#include "ui/manager/GlobalSearchWindow.h"
#include "TestEnvironment.h"

#include <QAction>
#include <QDir>
#include <QSignalSpy>
#include <QTest>
#include <QTreeWidget>

// The library's windows bound to their operations: a calendar click selects the photos of its
// day or hour, the manager opens and renames albums through the main window, the search window
// writes its domains and lists what it found.
class LibraryWindowsTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void calendarPicks_data();
    void calendarPicks();
    void managerAndSearch();

private:
    std::unique_ptr<ScopedTestEnvironment> environment;
    QString library;
};

namespace {

class ScriptedPrompter : public Prompter {
public:
    QString name;
    bool AskYesNo(const QString &, const QString &) override { return true; }
    void Inform(const QString &, const QString &) override {}
    void Error(const QString &, const QString &) override {}
    std::optional<QString> AskText(const QString &, const QString &, const QString &) override { return name; }
};

void WriteAlbum(const QString &path, const QStringList &captures)
{
    QDir().mkpath(AlbumFormat::ThumbnailFolder(path));
    DataList list;
    list.SetDocumentProperty(QStringLiteral("Title"), QFileInfo(path).completeBaseName());
    for (const QString &capture : captures) {
        const int at = list.ItemCount() + 1;
        list.AddItem(at);
        list.SetItemProperty(QStringLiteral("File"), QStringLiteral("p%1.jpg").arg(at), at);
        list.SetItemProperty(QStringLiteral("CaptureDate"), capture, at);
    }
    QVERIFY(list.Save(AlbumFormat::StudioPlistPath(path)));
}

QList<int> SelectedRecords(OrvThumbnailView *grid)
{
    QList<int> records;
    for (const QModelIndex &index : grid->selectionModel()->selectedIndexes())
        records << index.row() + 1;
    std::sort(records.begin(), records.end());
    return records;
}

} // namespace

void LibraryWindowsTest::init()
{
    environment.reset();
    environment = std::make_unique<ScopedTestEnvironment>();
    SettleUserDataAndLanguage();
    library = GetLibraryPath();
    QDir().mkpath(library);
}

void LibraryWindowsTest::calendarPicks_data()
{
    QTest::addColumn<QString>("view");
    QTest::addColumn<bool>("moveLastPhoto"); // its capture time changes to 2025-03-31 10:30 first
    QTest::addColumn<QList<int>>("selected");
    QTest::newRow("a day of the month view") << "month" << false << QList<int>{1, 2, 3};
    QTest::newRow("an hour of the week view") << "week" << false << QList<int>{1, 2};
    QTest::newRow("marks follow a changed record") << "week" << true << QList<int>{1, 2, 4};
}

void LibraryWindowsTest::calendarPicks()
{
    QFETCH(QString, view);
    QFETCH(bool, moveLastPhoto);
    QFETCH(QList<int>, selected);
    const QString path = library + QStringLiteral("/Spring.album");
    WriteAlbum(path, {"2025-03-31 10:15:00", "2025-03-31 10:45:00", "2025-03-31 18:00:00", "2025-04-01 10:00:00"});
    AlbumWindow window(AlbumDocument::Open(path).document);
    window.resize(1100, 800);
    window.show();
    auto *panel = window.findChild<OrvExtraPanel *>();
    auto *grid = window.findChild<OrvThumbnailView *>();
    QVERIFY(panel && grid);
    const bool monthly = view == QLatin1String("month");
    panel->setCurrentWidget(monthly ? panel->Calendars().MonthPage() : panel->Calendars().WeekPage());
    panel->Calendars().UpdateNow();
    if (moveLastPhoto) {
        window.Document().SetRecordValue(4, QStringLiteral("CaptureDate"), QStringLiteral("2025-03-31 10:30:00"));
        // The marks are redrawn shortly after the change, with no call from here.
        QTRY_VERIFY(!panel->Calendars().Week()->Flags().At(3, 11));
    }
    if (monthly) {
        OrvMonthView *month = panel->Calendars().Month();
        QCOMPARE(month->GetYear(), 2025);
        QTest::mouseClick(month, Qt::LeftButton, {}, month->DayRect(QDate(2025, 3, 31)).center());
        QCOMPARE(month->GetSelectedDay(), QDate(2025, 3, 31));
    } else {
        OrvWeekView *week = panel->Calendars().Week();
        QCOMPARE(week->GetWeek(), QDate(2025, 3, 30)); // the Sunday before the latest photo
        QTest::mouseClick(week, Qt::LeftButton, {}, week->HourRect(1, 10).center());
    }
    QCOMPARE(SelectedRecords(grid), selected);
}

void LibraryWindowsTest::managerAndSearch()
{
    WriteAlbum(library + QStringLiteral("/Lake.album"), {"2024-06-01 09:00:00"});
    WriteAlbum(library + QStringLiteral("/Hills.album"), {"2024-07-01 09:00:00", "2024-07-02 09:00:00"});
    auto owned = std::make_unique<ScriptedPrompter>();
    ScriptedPrompter *prompter = owned.get();
    MainWindow main;
    main.UsePrompter(std::move(owned));
    main.show();

    main.Command(QStringLiteral("mnuAlbumManager"))->trigger();
    auto *manager = main.findChild<AlbumManagerWindow *>();
    QVERIFY(manager);
    QTRY_COMPARE(manager->Cells().size(), 2);
    QCOMPARE(manager->RootFolder(), QDir::cleanPath(library));
    OrvAlbumCell *hills = manager->Cells().front();
    QCOMPARE(hills->GetAlbumPath(), library + QStringLiteral("/Hills.album"));
    QTest::mouseClick(hills, Qt::LeftButton);
    QTRY_VERIFY(manager->PreviewText().startsWith(QStringLiteral("Hills\n")));
    QVERIFY(manager->PreviewText().contains(QStringLiteral("2024-07-02 09:00 AM")));

    // Opening by double click goes through the main window.
    QTest::mouseDClick(hills, Qt::LeftButton);
    QTRY_COMPARE(main.AlbumWindows().size(), 1);
    QTRY_VERIFY(!main.IsOpening()); // an album busy opening refuses to close

    // Renaming the open album closes its window first.
    prompter->name = QStringLiteral("Mountains");
    main.Command(QStringLiteral("mnuAMRenameAlbum"))->trigger();
    QTRY_COMPARE(main.AlbumWindows().size(), 0);
    QVERIFY(QFileInfo::exists(library + QStringLiteral("/Mountains.album/studio.data")));
    QTRY_COMPARE(manager->SelectedAlbum(), library + QStringLiteral("/Mountains.album"));

    main.Command(QStringLiteral("mnuGlobalSearch"))->trigger();
    auto *search = main.findChild<GlobalSearchWindow *>();
    QVERIFY(search);
    QTreeWidgetItem *domain = search->Domains()->topLevelItem(0);
    QVERIFY(domain);
    domain->setCheckState(0, Qt::Unchecked);
    QVERIFY(!LoadSearchDomains().front().checked); // written at once
    domain->setCheckState(0, Qt::Checked);
    search->SetQuery({QStringLiteral("P1"), SearchMode::File, QDate(2024, 7, 1), QDate(2024, 7, 1)});
    QSignalSpy ended(search, &GlobalSearchWindow::SearchEnded);
    QVERIFY(search->StartSearch());
    QTRY_COMPARE(ended.size(), 1);
    QCOMPARE(search->Results()->topLevelItemCount(), 1);
    QCOMPARE(search->Results()->topLevelItem(0)->text(0), QStringLiteral("Hills"));
    QCOMPARE(search->Results()->topLevelItem(0)->text(2), QStringLiteral("1"));
}

QTEST_MAIN(LibraryWindowsTest)
#include "tst_LibraryWindows.moc"
