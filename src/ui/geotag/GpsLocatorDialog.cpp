#include "ui/geotag/GpsLocatorDialog.h"

#include "ui/Localize.h"
#include "ui/album/AlbumWindow.h"
#include "ui/geotag/EarthCommands.h"
#include "ui/geotag/TrackMatchRun.h"

#include "app/Settings.h"
#include "gps/TimeZones.h"
#include "library/AlbumDocument.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

const QString Gps = QStringLiteral("GPS");
const QString AlbumZone = QStringLiteral("_GPS.TimeZone");
const QString AlbumDaylight = QStringLiteral("_GPS.TimeZoneDaylight");

// The album's own zone when it has one, else the one chosen last in [GPS].
int StartingEntry(const AlbumDocument &album, const QList<TimeZoneEntry> &entries)
{
    const QString zone = album.List().GetDocumentProperty(AlbumZone);
    if (!zone.isEmpty()) {
        const int position = 2 * SettingInteger(zone) + (SettingInteger(album.List().GetDocumentProperty(AlbumDaylight)) != 0 ? 1 : 0);
        if (position >= 0 && position < entries.size())
            return position;
    }
    return SavedTimeZoneEntry(entries, ComputerStandardOffsetSeconds());
}

QPushButton *AddButton(QWidget *parent, QLayout *layout, const QString &name)
{
    auto *button = new QPushButton(u'@' + name, parent);
    button->setObjectName(name);
    layout->addWidget(button);
    return button;
}

QCheckBox *AddCheck(QWidget *parent, QLayout *layout, const QString &name)
{
    auto *check = new QCheckBox(u'@' + name, parent);
    check->setObjectName(name);
    layout->addWidget(check);
    return check;
}

} // namespace

GpsLocatorDialog::GpsLocatorDialog(AlbumWindow &window, QWidget *parent) : QDialog(parent), album(&window)
{
    setObjectName(QStringLiteral("frmGPSLocator"));
    setWindowTitle(QStringLiteral("@GPSLocator"));
    auto *layout = new QVBoxLayout(this);

    auto *form = new QFormLayout;
    zones = new QComboBox(this);
    zones->setObjectName(QStringLiteral("ComboTimeZone"));
    const QList<TimeZoneEntry> entries = TimeZoneEntries();
    for (const TimeZoneEntry &entry : entries)
        zones->addItem(entry.label, entry.hours);
    zones->setCurrentIndex(StartingEntry(window.Document(), entries));
    // Only the user's own choice goes into the album: opening the dialog changes nothing.
    connect(zones, &QComboBox::activated, this, &GpsLocatorDialog::ZoneChosen);
    form->addRow(QStringLiteral("@TimeZone"), zones);
    layout->addLayout(form);

    auto *locate = new QGroupBox(this);
    auto *locating = new QVBoxLayout(locate);
    onlyLocateSelected = AddCheck(this, locating, QStringLiteral("CheckOnlyLocateSelectedPhotos"));
    connect(AddButton(this, locating, QStringLiteral("ButtonLocatePhotos")), &QPushButton::clicked, this, &GpsLocatorDialog::LocatePhotos);
    layout->addWidget(locate);

    auto *earth = new QGroupBox(this);
    auto *showing = new QVBoxLayout(earth);
    tracksOnEarth = AddCheck(this, showing, QStringLiteral("CheckTrackOnEarth"));
    tracksOnEarth->setChecked(SettingInteger(ReadSetting(Gps, QStringLiteral("TrackOnEarth"))) != 0);
    connect(tracksOnEarth, &QCheckBox::toggled, this,
            [](bool on) { WriteSetting(Gps, QStringLiteral("TrackOnEarth"), on ? QStringLiteral("1") : QStringLiteral("0")); });
    onlyShowSelected = AddCheck(this, showing, QStringLiteral("CheckOnlyShowSelectedPhotos"));
    const std::pair<const char *, EarthOutput> outputs[] = {
        {"ButtonLaunchEarth", EarthOutput::Viewer}, {"ButtonGenerateKML", EarthOutput::KmlFile}, {"ButtonGenerateKMZ", EarthOutput::KmzFile}};
    for (const auto &[name, output] : outputs)
        connect(AddButton(this, showing, QLatin1String(name)), &QPushButton::clicked, this, [this, output = output] { Earth(output); });
    layout->addWidget(earth);

    auto *buttons = new QDialogButtonBox(this);
    QPushButton *close = buttons->addButton(QStringLiteral("@ButtonClose"), QDialogButtonBox::RejectRole);
    close->setObjectName(QStringLiteral("ButtonClose"));
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    // The dialog serves one album and goes with it.
    connect(&window, &QObject::destroyed, this, &QDialog::reject);
    LocalizeForm(this);
}

double GpsLocatorDialog::ZoneHours() const
{
    return zones->currentData().toDouble();
}

void GpsLocatorDialog::done(int result)
{
    if (zones->currentIndex() >= 0)
        SaveTimeZoneEntry(zones->currentIndex());
    QDialog::done(result);
}

void GpsLocatorDialog::ZoneChosen(int position)
{
    if (!album)
        return;
    album->Document().SetDocumentProperties(
        {{AlbumZone, QString::number(position / 2)}, {AlbumDaylight, QString::number(position % 2)}});
}

void GpsLocatorDialog::LocatePhotos()
{
    if (!album)
        return;
    const bool selected = onlyLocateSelected->isChecked();
    RunTrackMatch(*album, selected ? MatchScope::SelectedPhotos : MatchScope::AllPhotos,
                  selected ? album->SelectedRecords() : album->Document().ActionSelectAllPhotos(),
                  DefaultMatchWindow(ZoneHours()));
}

void GpsLocatorDialog::Earth(EarthOutput output)
{
    if (album)
        RunEarthCommand(*album, {output, onlyShowSelected->isChecked(), ZoneHours()});
}
