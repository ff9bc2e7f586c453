#include "GpsTestSupport.h"

#include "gps/GpsLog.h"
#include "gps/GpxImport.h"
#include "gps/TimeZones.h"
#include "app/Settings.h"
#include "library/PhotoRecord.h"
#include "ui/album/AlbumWindow.h"
#include "ui/common/FileChooser.h"
#include "ui/geotag/GpsLocatorDialog.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QDesktopServices>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

// The GPS dialogs of the album window on real albums: each control reaches its library operation
// and the album shows the result. The matching, time and KML rules are the libraries' tests.
class GeotagDialogsTest : public QObject {
    Q_OBJECT
public slots:
    void Opened(const QUrl &url) { opened << url.toLocalFile(); }
private slots:
    void init();
    void cleanup();
    void timeDialogs_data();
    void timeDialogs();
    void locator_data();
    void locator();

private:
    std::unique_ptr<ScopedTestEnvironment> environment;
    QStringList informed;
    QStringList opened;
};

namespace {

const QString Corpus = QStringLiteral(ORVANA_SOURCE_DIR "/../shared/corpus/photos/");
const QString Furnace = QStringLiteral("exiv2-FurnaceCreekInn3.jpg");

class ScriptedChooser : public FileChooser {
public:
    explicit ScriptedChooser(QString chosen) : path(std::move(chosen)) {}
    QStringList ChooseFiles(QWidget *, const QString &, const QString &) override { return {path}; }
    QString ChooseFolder(QWidget *, const QString &, const QString &) override { return path; }
    QString ChooseNewFolder(QWidget *, const QString &, const QString &, const QString &) override { return path; }

private:
    QString path;
};

// One photo of the corpus taken 2008-05-08 09:54:41 by a camera set to UTC-8, with the
// album's own properties given.
AlbumWindow *OpenAlbum(const QString &root, const QStringList &record, const RecordValues &properties)
{
    const QString folder = root + QStringLiteral("/Trip");
    QDir().mkpath(folder);
    QFile::copy(Corpus + Furnace, folder + u'/' + Furnace);
    std::unique_ptr<AlbumDocument> album = MakeAlbum(folder, {QStringList{"File=" + Furnace, "Width=400", "Height=300"} + record});
    album->SetDocumentProperties(properties);
    auto *window = new AlbumWindow(std::move(album));
    window->resize(900, 600);
    window->show();
    return window;
}

void SelectFirst(AlbumWindow &window, bool select)
{
    auto *grid = window.findChild<QListView *>(QStringLiteral("OrvThumbnailView"));
    grid->clearSelection();
    if (select)
        grid->selectionModel()->select(grid->model()->index(0, 0), QItemSelectionModel::Select);
}

// The list position of the plain entry of the zone with that offset.
int ZoneEntry(double hours)
{
    const QList<TimeZoneEntry> entries = TimeZoneEntries();
    for (int position = 0; position < entries.size(); position += 2) {
        if (entries[position].hours == hours)
            return position;
    }
    return -1;
}

} // namespace

void GeotagDialogsTest::init()
{
    RenewEnvironment(environment);
    informed.clear();
    opened.clear();
    QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "Opened");
    // Every message box is read and closed, as the user would.
    auto *poll = new QTimer(this);
    poll->setObjectName(QStringLiteral("answering"));
    connect(poll, &QTimer::timeout, this, [this] {
        if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            informed << box->text();
            box->button(QMessageBox::Ok) ? box->button(QMessageBox::Ok)->click() : box->reject();
        }
    });
    poll->start(10);
}

void GeotagDialogsTest::cleanup()
{
    delete findChild<QTimer *>(QStringLiteral("answering"));
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
    environment.reset();
}

void GeotagDialogsTest::timeDialogs_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<bool>("selected");
    QTest::addColumn<QStringList>("typed"); // control=value, in order; ?label=text: what it shows then
    QTest::addColumn<QString>("expected");

    QTest::newRow("-0:30 Hours across a year") << "mnuTimeDifferenceRetrieve" << true << QStringList{"ComboTimeDifference=-0:30 Hours"}
                                               << "2007-12-31 23:40:00";
    QTest::newRow("zones -8 to +1 give +9 hours") << "ActionTimeDifference" << true
                                                  << QStringList{"ButtonTimeZone=", "ComboCameraTimeZone=-8", "ComboPhotoTimeZone=1",
                                                                 "CoolButtonCalculateTimeDifference="}
                                                  << "2008-01-01 09:10:00";
    QTest::newRow("1 day 25 hours later") << "mnuTimeCorrector" << true << QStringList{"TextDays=1", "TextHours=25"} << "2008-01-03 01:10:00";
    QTest::newRow("1 day 25 hours earlier") << "mnuTimeCorrector" << true << QStringList{"TextDays=1", "TextHours=25", "OptionBackward="}
                                            << "2007-12-29 23:10:00";
    QTest::newRow("the clock in the photo shows 1:30 more") << "ActionTimeCorrector" << true << QStringList{"ClockTime=2008-01-01 00:11:30", "?LabelDifferenceValue=+0 Days 00:01:30"}
                                                            << "2008-01-01 00:11:30";
    QTest::newRow("nothing selected, nothing changes") << "mnuTimeCorrector" << false << QStringList{"TextDays=1"} << "2008-01-01 00:10:00";
}

void GeotagDialogsTest::timeDialogs()
{
    QFETCH(QString, command);
    QFETCH(bool, selected);
    QFETCH(QStringList, typed);
    QFETCH(QString, expected);

    std::unique_ptr<AlbumWindow> window(OpenAlbum(environment->Root(), {"CaptureDate=2008-01-01 00:10:00"}, {}));
    SelectFirst(*window, selected);
    QVERIFY(window->RunCommand(command));
    auto *dialog = window->findChild<QDialog *>(command.contains(QLatin1String("Corrector")) ? QStringLiteral("frmTimeCorrector")
                                                                                             : QStringLiteral("frmTimeDifference"));
    QVERIFY(dialog && dialog->isVisible());
    for (const QString &step : typed) {
        const QString name = step.section(u'=', 0, 0);
        const QString value = step.section(u'=', 1);
        QObject *control = nullptr;
        QTRY_VERIFY((control = window->findChild<QObject *>(name.startsWith(u'?') ? name.mid(1) : name)));
        if (name.startsWith(u'?'))
            QCOMPARE(window->findChild<QLabel *>(name.mid(1))->text(), value);
        else if (auto *button = qobject_cast<QAbstractButton *>(control))
            button->click();
        else if (auto *field = qobject_cast<QDoubleSpinBox *>(control))
            field->setValue(value.toDouble());
        else if (auto *clock = qobject_cast<QDateTimeEdit *>(control))
            clock->setDateTime(QDateTime(QDate::fromString(value.left(10), Qt::ISODate), QTime::fromString(value.mid(11)), Qt::UTC));
        else if (auto *combo = qobject_cast<QComboBox *>(control))
            combo->setCurrentIndex(name == QLatin1String("ComboTimeDifference") ? combo->findText(value) : ZoneEntry(value.toDouble()));
    }
    dialog->findChild<QPushButton *>(QStringLiteral("CoolButtonProcess"))->click();
    QCOMPARE(window->Document().Record(PhotoRecord::CaptureDate, 1), expected);
}

void GeotagDialogsTest::locator_data()
{
    QTest::addColumn<QString>("drive");
    QTest::addColumn<QString>("expected");

    QTest::newRow("the album's zone is shown when it opens") << "open" << "-8";
    QTest::newRow("a zone picked goes into the album and [GPS]") << "pick" << "_GPS.TimeZone=15 _GPS.TimeZoneDaylight=1 [GPS] 15";
    QTest::newRow("Locate Photos places the photo on the track") << "locate" << "36.448590020 loaded; 1 photo(s) examined, 1 located.";
    QTest::newRow("Create KML File writes the chosen file and shows it") << "kml" << "written shown";
}

void GeotagDialogsTest::locator()
{
    QFETCH(QString, drive);
    QFETCH(QString, expected);

    // The album's camera was set to UTC-8 (zone list position 2 n + daylight).
    const int pacific = ZoneEntry(-8);
    const QStringList record = drive == QLatin1String("kml") ? QStringList{"CaptureDate=2008-05-08 09:54:41", "Latitude=36.4", "Longitude=-116.8"}
                                                             : QStringList{"CaptureDate=2008-05-08 09:54:41"};
    std::unique_ptr<AlbumWindow> window(OpenAlbum(environment->Root(), record, {{"_GPS.TimeZone", QString::number(pacific / 2)}, {"_GPS.TimeZoneDaylight", "0"}}));
    // The run's GPS log, not read yet: the match reads it from the track imported before.
    GpsStore imported;
    QVERIFY(ImportGPXFile(imported, CorpusTrack(QStringLiteral("exiv2-FurnaceCreekInn.gpx"))).tracks > 0);
    QVERIFY(imported.Save().ok);
    GpsLog log;
    window->SetGpsLog(&log);
    const QString kml = environment->Root() + QStringLiteral("/out/trip.kml");
    window->SetFileChooser(std::make_unique<ScriptedChooser>(kml));

    GpsLocatorDialog dialog(*window);
    dialog.show();
    auto *zones = dialog.findChild<QComboBox *>(QStringLiteral("ComboTimeZone"));
    QString shown;
    if (drive == QLatin1String("open")) {
        shown = QString::number(dialog.ZoneHours());
    } else if (drive == QLatin1String("pick")) {
        zones->setCurrentIndex(31);
        emit zones->activated(31);
        const DataList &list = window->Document().List();
        shown = QStringLiteral("_GPS.TimeZone=%1 _GPS.TimeZoneDaylight=%2")
                    .arg(list.GetDocumentProperty(QStringLiteral("_GPS.TimeZone")), list.GetDocumentProperty(QStringLiteral("_GPS.TimeZoneDaylight")));
        dialog.close();
        shown += " [GPS] " + ReadSetting(QStringLiteral("GPS"), QStringLiteral("TimeZone"));
    } else if (drive == QLatin1String("locate")) {
        dialog.findChild<QPushButton *>(QStringLiteral("ButtonLocatePhotos"))->click();
        QTRY_VERIFY_WITH_TIMEOUT(!window->IsWorking(), 20000);
        shown = window->Document().Record(PhotoRecord::Latitude, 1) + (log.IsLoaded() ? " loaded; " : " not loaded; ") + informed.join(u'|');
    } else {
        dialog.findChild<QPushButton *>(QStringLiteral("ButtonGenerateKML"))->click();
        QTRY_VERIFY_WITH_TIMEOUT(!window->IsWorking(), 20000);
        shown = QString::fromUtf8(ReadAll(kml)).contains(QLatin1String("-116.8")) ? "written" : "not written";
        QTRY_VERIFY(!opened.isEmpty());
        shown += opened.contains(QFileInfo(kml).absolutePath()) ? " shown" : " not shown: " + opened.join(u',');
    }
    QCOMPARE(shown, expected);
    dialog.close();
}

QTEST_MAIN(GeotagDialogsTest)
#include "tst_GeotagDialogs.moc"
