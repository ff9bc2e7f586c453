#include "ui/gps/GpsWindow.h"

#include "ui/Localize.h"
#include "ui/common/DialogPrompter.h"
#include "ui/common/TaskRunner.h"
#include "ui/gps/GpsFileChooser.h"
#include "ui/gps/GpsLogFiles.h"
#include "ui/gps/GpsTexts.h"
#include "ui/gps/TrackListModel.h"
#include "ui/gps/TrackPreview.h"
#include "ui/gps/WaypointListModel.h"
#include "gps/GpsLog.h"
#include "gps/TimeText.h"
#include "gps/TimeZones.h"

#include <QButtonGroup>
#include <QCloseEvent>
#include <QComboBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSplitter>
#include <QStatusBar>
#include <QTreeView>
#include <QVBoxLayout>

namespace {

const QDate Earliest(1990, 1, 1);

QPushButton *Button(const char *name, QLayout *row)
{
    auto *button = new QPushButton(QStringLiteral("@") + QLatin1String(name));
    button->setObjectName(QLatin1String(name));
    row->addWidget(button);
    return button;
}

QTreeView *List(const char *name, QAbstractItemModel *model)
{
    auto *view = new QTreeView;
    view->setObjectName(QLatin1String(name));
    view->setModel(model);
    view->setRootIsDecorated(false);
    view->setUniformRowHeights(true);
    view->setAlternatingRowColors(true);
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setSelectionMode(QAbstractItemView::SingleSelection);
    view->header()->setStretchLastSection(true);
    return view;
}

QDateEdit *Picker(const char *name)
{
    auto *picker = new QDateEdit;
    picker->setObjectName(QLatin1String(name));
    picker->setDisplayFormat(QStringLiteral("yyyy-MM-dd"));
    picker->setMinimumDate(Earliest);
    picker->setCalendarPopup(true);
    return picker;
}

} // namespace

GpsWindow::GpsWindow(GpsLog &shared, std::function<AlbumWindow *()> active, QWidget *parent)
    : QMainWindow(parent), log(shared), activeAlbum(std::move(active)), runner(std::make_unique<TaskRunner>(this)),
      prompter(std::make_unique<DialogPrompter>(this, runner->Calls())), chooser(std::make_unique<DialogGpsFileChooser>()),
      tracks(new TrackListModel(shared, this)), waypoints(new WaypointListModel(shared, this)), details(new TrackDetailsCache(this))
{
    setObjectName(QStringLiteral("frmGPS"));
    // A window of its own beside the albums, not one of the document area's: the user picks the
    // photos to match in an album while this window stays in view.
    setWindowFlag(Qt::Window);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("@GPSLogManager"));
    BuildLayout();
    LocalizeForm(this);
    connect(&log, &GpsLog::Changed, this, &GpsWindow::Refresh);
    const auto publishTicks = [this] { log.SetVisibleTracks(this, GetVisibleTracks()); };
    connect(tracks, &QAbstractItemModel::dataChanged, this, publishTicks);
    connect(tracks, &QAbstractItemModel::modelReset, this, publishTicks);
    SetEditable(log.IsLoaded());
    Refresh();
    resize(900, 680);
}

GpsWindow::~GpsWindow() = default;

void GpsWindow::UseChooser(std::unique_ptr<GpsFileChooser> scripted)
{
    chooser = std::move(scripted);
}

void GpsWindow::UsePrompter(std::unique_ptr<Prompter> scripted)
{
    prompter = std::move(scripted);
}

void GpsWindow::BuildLayout()
{
    body = new QWidget;
    auto *layout = new QVBoxLayout(body);
    auto *period = new QHBoxLayout;
    zone = new QComboBox;
    zone->setObjectName(QStringLiteral("ComboTimeZone"));
    for (const TimeZoneEntry &entry : TimeZoneEntries()) {
        zone->addItem(entry.label);
        zoneHours << entry.hours;
    }
    zone->setCurrentIndex(SavedTimeZoneEntry(TimeZoneEntries(), ComputerStandardOffsetSeconds()));
    connect(zone, &QComboBox::currentIndexChanged, this, &GpsWindow::ZoneChosen);
    begin = Picker("DTPickerBegin");
    end = Picker("DTPickerEnd");
    const MatchWindow whole = DefaultMatchWindow(0);
    begin->setDate(whole.begin);
    end->setDate(whole.end);
    listedBegin = whole.begin;
    listedEnd = whole.end;
    connect(begin, &QDateEdit::dateChanged, this, [this] { DateChosen(begin, listedBegin); });
    connect(end, &QDateEdit::dateChanged, this, [this] { DateChosen(end, listedEnd); });
    period->addWidget(new QLabel(QStringLiteral("@TimeZone")));
    period->addWidget(zone, 1);
    period->addWidget(new QLabel(QStringLiteral("@From")));
    period->addWidget(begin);
    period->addWidget(new QLabel(QStringLiteral("@To")));
    period->addWidget(end);
    layout->addLayout(period);

    auto *split = new QSplitter(Qt::Vertical);
    split->addWidget(BuildTracks());
    split->addWidget(BuildWaypoints());
    layout->addWidget(split, 1);
    layout->addWidget(BuildMatch());
    setCentralWidget(body);
}

QWidget *GpsWindow::BuildTracks()
{
    auto *group = new QGroupBox(QStringLiteral("@Tracks"));
    auto *layout = new QGridLayout(group);
    trackList = List("ListViewTrack", tracks);
    connect(trackList->selectionModel(), &QItemSelectionModel::selectionChanged, this, &GpsWindow::ShowSelectedTrack);
    connect(trackList, &QTreeView::doubleClicked, this, &GpsWindow::ModifyTrack);
    layout->addWidget(trackList, 0, 0);

    auto *figures = new QGridLayout;
    int row = 0;
    for (auto [caption, label, name] : {std::tuple{"@Distance", &distance, "LabelDistance"}, std::tuple{"@Duration", &duration, "LabelTime"},
                                        std::tuple{"@AverageSpeed", &speed, "LabelAveSpeed"},
                                        std::tuple{"@ElevationRange", &elevation, "LabelElevation"}}) {
        *label = new QLabel;
        (*label)->setObjectName(QLatin1String(name));
        figures->addWidget(new QLabel(QLatin1String(caption)), row, 0);
        figures->addWidget(*label, row++, 1);
    }
    preview = new TrackPreview;
    figures->addWidget(preview, row, 0, 1, 2);
    figures->setRowStretch(row, 1);
    layout->addLayout(figures, 0, 1);
    layout->setColumnStretch(0, 3);
    layout->setColumnStretch(1, 2);

    auto *buttons = new QHBoxLayout;
    connect(Button("CoolButtonImportTracks", buttons), &QPushButton::clicked, this, [this] { ImportChosen(false); });
    connect(Button("CoolButtonExportTracks", buttons), &QPushButton::clicked, this, &GpsWindow::ExportTracks);
    connect(Button("DownloadFromGPS", buttons), &QPushButton::clicked, this, &GpsWindow::DoDownloadTracksFromGPS);
    connect(Button("ModifyTrack", buttons), &QPushButton::clicked, this, &GpsWindow::ModifyTrack);
    connect(Button("RemoveTrack", buttons), &QPushButton::clicked, this, &GpsWindow::RemoveTrack);
    buttons->addStretch();
    layout->addLayout(buttons, 1, 0, 1, 2);
    return group;
}

QWidget *GpsWindow::BuildWaypoints()
{
    auto *group = new QGroupBox(QStringLiteral("@Waypoints"));
    auto *layout = new QVBoxLayout(group);
    waypointList = List("ListViewWaypoint", waypoints);
    connect(waypointList, &QTreeView::doubleClicked, this, &GpsWindow::ModifyWaypoint);
    layout->addWidget(waypointList);
    auto *buttons = new QHBoxLayout;
    connect(Button("CoolButtonImportWaypoints", buttons), &QPushButton::clicked, this, [this] { ImportChosen(true); });
    connect(Button("CoolButtonExportWaypoints", buttons), &QPushButton::clicked, this, &GpsWindow::ExportWaypoints);
    // Waypoints come from a receiver by their own download.
    auto *download = new QPushButton(QStringLiteral("@DownloadFromGPS"));
    download->setObjectName(QStringLiteral("DownloadWaypointsFromGPS"));
    buttons->addWidget(download);
    connect(download, &QPushButton::clicked, this, &GpsWindow::DoDownloadWaypointsFromGPS);
    connect(Button("AddWaypoint", buttons), &QPushButton::clicked, this, &GpsWindow::DoAddWaypoint);
    connect(Button("ModifyWaypoint", buttons), &QPushButton::clicked, this, &GpsWindow::ModifyWaypoint);
    connect(Button("RemoveWaypoint", buttons), &QPushButton::clicked, this, &GpsWindow::RemoveWaypoint);
    QPushButton *onMap = Button("ButtonEditWaypointOnMap", buttons);
    connect(onMap, &QPushButton::clicked, this, [this] {
        if (const int waypoint = SelectedWaypoint(); waypoint >= 0)
            emit EditWaypointOnMap(waypoint);
    });
    buttons->addStretch();
    layout->addLayout(buttons);
    return group;
}

QWidget *GpsWindow::BuildMatch()
{
    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    auto *options = new QVBoxLayout;
    matchOptions = new QButtonGroup(this);
    int id = 0;
    for (const char *name : {"OptionMatchSelectedPhotosWithTrack", "OptionMatchAllPhotosWithTrack", "OptionMatchSelectedPhotosWithSelectedWaypont"}) {
        auto *option = new QRadioButton(QStringLiteral("@") + QLatin1String(name));
        option->setObjectName(QLatin1String(name));
        matchOptions->addButton(option, id++);
        options->addWidget(option);
    }
    matchOptions->button(0)->setChecked(true);
    layout->addLayout(options, 1);
    connect(Button("CoolButtonMatch", layout), &QPushButton::clicked, this, &GpsWindow::Match);
    connect(Button("ButtonShowOnEarth", layout), &QPushButton::clicked, this, &GpsWindow::ShowOnEarth);
    return row;
}

void GpsWindow::showEvent(QShowEvent *event)
{
    QMainWindow::showEvent(event);
    if (!log.IsLoaded() && !runner->Running())
        LoadLog();
}

void GpsWindow::LoadLog()
{
    statusBar()->showMessage(GpsUi::GpsMessage("LoadingGPSLogDatabase"));
    SetEditable(false);
    GpsLogFiles::Load(*runner, log, *prompter, [this](const Result &loaded) {
        statusBar()->clearMessage();
        // A store that cannot be read, even from its backups, is never written over: the window
        // stays closed to edits.
        if (!loaded)
            prompter->Error(GpsUi::GpsFormText("GPSLogManager"), loaded.message);
        WorkEnded();
    });
}

void GpsWindow::SetEditable(bool editable)
{
    body->setEnabled(editable && log.IsLoaded());
}

void GpsWindow::WorkEnded()
{
    SetEditable(true);
    if (std::exchange(closeWhenDone, false))
        close();
}

bool GpsWindow::IsWorking() const
{
    return runner->Running();
}

void GpsWindow::closeEvent(QCloseEvent *event)
{
    if (runner->Running()) {
        // The work stops at the item in hand; what it completed is adopted, then saved.
        closeWhenDone = true;
        runner->RequestStop();
        event->ignore();
        return;
    }
    if (!saved && log.IsLoaded() && log.Store().IsModified()) {
        statusBar()->showMessage(GpsUi::GpsMessage("SavingGPSLogDatabase"));
        SetEditable(false);
        GpsLogFiles::Save(*runner, log, [this](const Result &written) {
            statusBar()->clearMessage();
            if (!written)
                prompter->Error(GpsUi::GpsFormText("GPSLogManager"), written.message);
            // Closed even so: the log stays modified in memory and is saved again on quitting.
            saved = true;
            close();
        });
        event->ignore();
        return;
    }
    event->accept();
}

void GpsWindow::Refresh()
{
    const int track = SelectedTrack();
    const int waypoint = SelectedWaypoint();
    RefreshTracks();
    waypoints->Refresh();
    // The track shown stays selected; with none, the first is, so its figures show at once.
    int selectRow = tracks->rowCount() > 0 ? 0 : -1;
    for (int row = 0; track >= 0 && row < tracks->rowCount(); ++row) {
        if (tracks->TrackAt(row) == track)
            selectRow = row;
    }
    if (selectRow >= 0)
        trackList->setCurrentIndex(tracks->index(selectRow, 0));
    for (int column = 0; column < WaypointListModel::ColumnCount; ++column)
        waypointList->resizeColumnToContents(column);
    if (waypoint >= 0 && waypoint < waypoints->rowCount())
        waypointList->setCurrentIndex(waypoints->index(waypoint, 0));
    SetEditable(!runner->Running());
}

void GpsWindow::RefreshTracks()
{
    tracks->Refresh(Period());
    for (int column = 0; column < TrackListModel::ColumnCount; ++column)
        trackList->resizeColumnToContents(column);
    ShowSelectedTrack();
}

MatchWindow GpsWindow::Period() const
{
    return {begin->date(), end->date(), zoneHours.value(zone->currentIndex())};
}

int GpsWindow::GetTrackCount() const
{
    return log.Store().GetTrackCount();
}

QList<int> GpsWindow::GetVisibleTracks() const
{
    return tracks->CheckedTracks();
}

QString GpsWindow::GetDateWithSelectedTimeZone(const QString &utc) const
{
    return ::GetDateWithSelectedTimeZone(utc, Period().zoneHours);
}

void GpsWindow::ZoneChosen(int entry)
{
    SaveTimeZoneEntry(entry);
    RefreshTracks();
}

void GpsWindow::DateChosen(QDateEdit *changed, QDate previous)
{
    if (begin->date() > end->date()) {
        prompter->Inform(GpsUi::GpsFormText("GPSLogManager"), GpsUi::GpsMessage("MessageWrongDateGPS"));
        const QSignalBlocker quiet(changed);
        changed->setDate(previous);
        return;
    }
    listedBegin = begin->date();
    listedEnd = end->date();
    RefreshTracks();
}

int GpsWindow::SelectedTrack() const
{
    const QModelIndex current = trackList->currentIndex();
    return current.isValid() && trackList->selectionModel()->isRowSelected(current.row()) ? tracks->TrackAt(current.row()) : -1;
}

int GpsWindow::SelectedWaypoint() const
{
    const QModelIndex current = waypointList->currentIndex();
    return current.isValid() && waypointList->selectionModel()->isRowSelected(current.row()) ? current.row() : -1;
}

void GpsWindow::ShowSelectedTrack()
{
    const bool metric = MetricUnits();
    shownTrack = SelectedTrack();
    auto show = [this](const StatisticsLabels &labels) {
        distance->setText(labels.distance);
        duration->setText(labels.time);
        speed->setText(labels.averageSpeed);
        elevation->setText(labels.elevation);
    };
    show(EmptyStatisticsLabels(metric));
    preview->SetShape({});
    if (shownTrack < 0)
        return;
    const int asked = shownTrack;
    details->Request(log.Store().TrackAt(asked), [this, asked, metric, show](std::shared_ptr<const TrackDetails> found) {
        if (asked != shownTrack)
            return;
        show(FormatTrackStatistics(found->statistics, metric));
        preview->SetShape(found->shape);
    });
}
