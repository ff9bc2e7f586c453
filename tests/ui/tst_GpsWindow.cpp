#include "ui/gps/GpsFileChooser.h"
#include "ui/gps/GpsWindow.h"
#include "ui/gps/TrackPreview.h"
#include "ui/main/MainWindow.h"
#include "app/Language.h"
#include "app/Prompter.h"
#include "app/Settings.h"
#include "gps/GpsStore.h"
#include "gps/GpxImport.h"
#include "TestEnvironment.h"

#include <QAction>
#include <QComboBox>
#include <QDateEdit>
#include <QDateTime>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeView>

namespace {

const QString Sample = QStringLiteral(ORVANA_SOURCE_DIR "/../shared/corpus/tracks/gpsbabel-gdb-sample.gpx");

// Imports the corpus sample; exports into `folder` under the name the window suggests.
class ScriptedGpsChooser : public GpsFileChooser {
public:
    explicit ScriptedGpsChooser(QString folder) : folder(std::move(folder)) {}
    Chosen ChooseLog(QWidget *) override { return {Sample, QStringLiteral("gpx")}; }
    QString ChooseGpx(QWidget *, const QString &suggested) override { return folder + u'/' + suggested; }

private:
    QString folder;
};

// Says yes to every question and keeps every message it is shown.
class RecordingPrompter : public Prompter {
public:
    explicit RecordingPrompter(QStringList &shown) : shown(shown) {}
    bool AskYesNo(const QString &, const QString &) override { return true; }
    void Inform(const QString &, const QString &text) override { shown << text; }
    void Error(const QString &, const QString &text) override { shown << text; }
    std::optional<QString> AskText(const QString &, const QString &, const QString &initial) override { return initial; }

private:
    QStringList &shown;
};

QString Gps(const char *key)
{
    return GetLocalizedString(QLatin1String(key), QStringLiteral("GPS"));
}

int Rows(GpsWindow *window, const char *list)
{
    return window->findChild<QTreeView *>(QLatin1String(list))->model()->rowCount();
}

void Click(QWidget *parent, const QString &button)
{
    QPushButton *found = parent->findChild<QPushButton *>(button);
    QVERIFY2(found, qPrintable(button));
    found->click();
}

} // namespace

// The GPS window over the main window's shared log, under a HOME of the test's own.
class GpsWindowTest : public QObject {
    Q_OBJECT
private slots:
    void importIntoLists();
    void editDialogs_data();
    void editDialogs();
    void downloadWithoutReceiver();

private:
    // The window of `main`, its log holding the corpus sample (9 tracks, 9 waypoints).
    GpsWindow *SampleWindow(MainWindow &main);
    QStringList shown;
};

GpsWindow *GpsWindowTest::SampleWindow(MainWindow &main)
{
    GpsStore store;
    ImportGPXFile(store, Sample);
    main.Gps().Adopt(store);
    GpsWindow *window = main.ShowGpsWindow();
    window->UsePrompter(std::make_unique<RecordingPrompter>(shown));
    return window;
}

void GpsWindowTest::importIntoLists()
{
    ScopedTestEnvironment environment;
    shown.clear();
    MainWindow main;
    main.Command(QStringLiteral("mnuGPSLog"))->trigger();
    auto *window = main.findChild<GpsWindow *>(QStringLiteral("frmGPS"));
    QVERIFY(window && window->isVisible());
    window->UseChooser(std::make_unique<ScriptedGpsChooser>(environment.Root()));
    window->UsePrompter(std::make_unique<RecordingPrompter>(shown));
    QTRY_VERIFY(main.Gps().IsLoaded() && !window->IsWorking());

    Click(window, QStringLiteral("CoolButtonImportTracks"));
    QTRY_COMPARE(shown, QStringList{Gps("MessageSucceedToImportTracksFromGPX")});
    QCOMPARE(Rows(window, "ListViewTrack"), 9);
    QCOMPARE(Rows(window, "ListViewWaypoint"), 9);
    auto *tracks = window->findChild<QTreeView *>(QStringLiteral("ListViewTrack"));
    tracks->setCurrentIndex(tracks->model()->index(0, 0));
    QTRY_VERIFY(window->findChild<QLabel *>(QStringLiteral("LabelDistance"))->text() != QLatin1String("0.0 km"));
    QVERIFY(window->findChild<TrackPreview *>()->Shape().size() > 1);

    Click(window, QStringLiteral("CoolButtonExportWaypoints"));
    QCOMPARE(ReadAll(environment.Root() + QStringLiteral("/Waypoints.gpx")).count("<wpt "), 9);
    Click(window, QStringLiteral("CoolButtonExportTracks"));
    QTRY_VERIFY(!window->IsWorking());
    QCOMPARE(ReadAll(environment.Root() + QStringLiteral("/Tracks.gpx")).count("<trk>"), 9);

    // Another zone redraws the times and is kept for the next time.
    auto *zone = window->findChild<QComboBox *>(QStringLiteral("ComboTimeZone"));
    const QString begun = tracks->model()->index(0, 1).data().toString();
    zone->setCurrentIndex(zone->currentIndex() ^ 1); // the same zone's other entry: one hour apart
    const qint64 shift = QDateTime::fromString(begun, QStringLiteral("yyyy-MM-dd HH:mm:ss"))
                             .secsTo(QDateTime::fromString(tracks->model()->index(0, 1).data().toString(), QStringLiteral("yyyy-MM-dd HH:mm:ss")));
    QCOMPARE(std::abs(shift), 3600);
    QCOMPARE(ReadSetting(QStringLiteral("GPS"), QStringLiteral("TimeZoneDaylight")), QString::number(zone->currentIndex() % 2));

    // A begin after the end is refused, and the list stays.
    window->findChild<QDateEdit *>(QStringLiteral("DTPickerBegin"))->setDate(QDate(2030, 1, 1));
    QCOMPARE(shown.last(), Gps("MessageWrongDateGPS"));
    QCOMPARE(window->findChild<QDateEdit *>(QStringLiteral("DTPickerBegin"))->date(), QDate(1990, 1, 1));
    QCOMPARE(Rows(window, "ListViewTrack"), 9);

    // Matching needs an album.
    Click(window, QStringLiteral("CoolButtonMatch"));
    QCOMPARE(shown.last(), Gps("MessageNoSelectedPhotosOrTrackToMatch"));

    // Quitting waits for the window to save the log.
    main.show();
    main.close();
    QTRY_VERIFY(!main.isVisible());
    QVERIFY(!main.findChild<GpsWindow *>());
    GpsStore saved;
    QVERIFY(saved.Load(nullptr));
    QCOMPARE(saved.GetTrackCount(), 9);
}

void GpsWindowTest::editDialogs_data()
{
    QTest::addColumn<QString>("command");  // the window's button that opens the dialog
    QTest::addColumn<QString>("dialog");
    QTest::addColumn<QString>("field");    // the name typed in
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("stored");   // the name in the log afterwards ("" for the first name)

    QTest::newRow("waypoint modified") << "ModifyWaypoint" << "frmModifyWaypoint" << "WaypointName" << "ButtonModify" << "Hut";
    QTest::newRow("waypoint reverted") << "ModifyWaypoint" << "frmModifyWaypoint" << "WaypointName" << "ButtonRevert" << "";
    QTest::newRow("waypoint cancelled") << "ModifyWaypoint" << "frmModifyWaypoint" << "WaypointName" << "ButtonCancel" << "";
    QTest::newRow("waypoint added") << "AddWaypoint" << "frmNewWaypoint" << "WaypointName" << "ButtonModify" << "Hut";
    QTest::newRow("track renamed") << "ModifyTrack" << "frmModifyTrack" << "TrackName" << "ButtonModify" << "Hut";
    QTest::newRow("track reverted") << "ModifyTrack" << "frmModifyTrack" << "TrackName" << "ButtonRevert" << "";
    QTest::newRow("track cancelled") << "ModifyTrack" << "frmModifyTrack" << "TrackName" << "ButtonCancel" << "";
}

void GpsWindowTest::editDialogs()
{
    QFETCH(QString, command);
    QFETCH(QString, dialog);
    QFETCH(QString, field);
    QFETCH(QString, button);
    QFETCH(QString, stored);
    ScopedTestEnvironment environment;
    MainWindow main;
    GpsWindow *window = SampleWindow(main);
    const bool track = dialog == QLatin1String("frmModifyTrack");
    const bool added = command == QLatin1String("AddWaypoint");
    const GpsStore &store = main.Gps().Store();
    const QString first = track ? store.TrackAt(0).name : store.WaypointAt(0).name;
    auto *list = window->findChild<QTreeView *>(QLatin1String(track ? "ListViewTrack" : "ListViewWaypoint"));
    list->setCurrentIndex(list->model()->index(0, 0));

    Click(window, command);
    auto *opened = window->findChild<QDialog *>(dialog);
    QVERIFY(opened && opened->isVisible());
    auto *name = opened->findChild<QLineEdit *>(field);
    if (added) {
        opened->findChild<QLineEdit *>(QStringLiteral("Latitude"))->setText(QStringLiteral("46.5"));
        opened->findChild<QLineEdit *>(QStringLiteral("Longitude"))->setText(QStringLiteral("-13.25"));
    }
    name->setText(QStringLiteral("Hut"));
    Click(opened, button);
    if (button == QLatin1String("ButtonRevert")) {
        QCOMPARE(name->text(), first);
        Click(opened, QStringLiteral("ButtonModify"));
    }
    const QString expected = stored.isEmpty() ? first : stored;
    if (track) {
        QTRY_VERIFY(!window->IsWorking());
        QCOMPARE(store.TrackAt(0).name, expected);
        // The point file carries the name too.
        QCOMPARE(ReadAll(GpsStore::TrackFilePath(store.TrackAt(0))).contains("<string>" + expected.toUtf8() + "</string>"), true);
    } else {
        QCOMPARE(store.WaypointCount(), added ? 10 : 9);
        QCOMPARE(store.WaypointAt(added ? 9 : 0).name, expected);
    }
}

void GpsWindowTest::downloadWithoutReceiver()
{
    // GPSBabel itself, asked for a Garmin on a serial port that does not exist.
    ScopedTestEnvironment environment;
    shown.clear();
    MainWindow main;
    GpsWindow *window = SampleWindow(main);
    window->DoDownloadTracksFromGPS();
    auto *dialog = window->findChild<QDialog *>(QStringLiteral("frmImportFromGPSReceiver"));
    QVERIFY(dialog);
    dialog->findChild<QComboBox *>(QStringLiteral("ComboSerialPort"))->setCurrentText(QStringLiteral("COM12"));
    Click(dialog, QStringLiteral("CoolButtonImport"));
    QTRY_COMPARE(shown, QStringList{Gps("MessageFailToImportTrackFromGPSr")});
    QTRY_VERIFY(!window->IsWorking());
    QCOMPARE(main.Gps().Store().GetTrackCount(), 9);
    QCOMPARE(ReadSetting(QStringLiteral("GPS"), QStringLiteral("SerialPort")), QStringLiteral("12"));
}

QTEST_MAIN(GpsWindowTest)
#include "tst_GpsWindow.moc"
