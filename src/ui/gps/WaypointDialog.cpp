#include "ui/gps/WaypointDialog.h"

#include "ui/Localize.h"
#include "gps/GpsLog.h"
#include "gps/GpsNumbers.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

QLineEdit *Field(QFormLayout *form, const char *name)
{
    auto *edit = new QLineEdit;
    edit->setObjectName(QLatin1String(name));
    auto *label = new QLabel(QStringLiteral("@") + QLatin1String(name));
    label->setBuddy(edit);
    form->addRow(label, edit);
    return edit;
}

// Degrees as matching and the KML need them; the store keeps whatever text passes.
bool InRange(const QString &text, double limit)
{
    bool ok = false;
    const double value = text.trimmed().toDouble(&ok);
    return ok && value >= -limit && value <= limit;
}

} // namespace

WaypointDialog::WaypointDialog(GpsLog &shared, const Waypoint &start, QWidget *parent)
    : QDialog(parent), log(shared), index(-1), stored(start)
{
    Build("NewWaypoint");
    setObjectName(QStringLiteral("frmNewWaypoint"));
}

WaypointDialog::WaypointDialog(GpsLog &shared, int waypoint, QWidget *parent)
    : QDialog(parent), log(shared), index(waypoint), stored(shared.Store().WaypointAt(waypoint))
{
    Build("ModifyWaypoint");
    setObjectName(QStringLiteral("frmModifyWaypoint"));
}

void WaypointDialog::Build(const char *caption)
{
    setWindowTitle(QStringLiteral("@") + QLatin1String(caption));
    auto *form = new QFormLayout;
    name = Field(form, "WaypointName");
    latitude = Field(form, "Latitude");
    longitude = Field(form, "Longitude");
    elevation = Field(form, "Elevation");
    description = Field(form, "Description");
    auto *buttons = new QDialogButtonBox;
    modify = buttons->addButton(QStringLiteral("@ButtonModify"), QDialogButtonBox::AcceptRole);
    modify->setObjectName(QStringLiteral("ButtonModify"));
    QPushButton *revert = buttons->addButton(QStringLiteral("@ButtonRevert"), QDialogButtonBox::ResetRole);
    revert->setObjectName(QStringLiteral("ButtonRevert"));
    QPushButton *cancel = buttons->addButton(QStringLiteral("@ButtonCancel"), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("ButtonCancel"));
    connect(modify, &QPushButton::clicked, this, &WaypointDialog::Modify);
    connect(revert, &QPushButton::clicked, this, &WaypointDialog::Revert);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    for (QLineEdit *position : {latitude, longitude})
        connect(position, &QLineEdit::textChanged, this, &WaypointDialog::CheckPosition);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(buttons);
    // Localised before the values go in: a name may well begin with "@".
    LocalizeForm(this);
    SetValues(stored);
}

Waypoint WaypointDialog::Values() const
{
    return {name->text(), latitude->text().trimmed(), longitude->text().trimmed(), RoundedElevation(elevation->text()), description->text()};
}

void WaypointDialog::SetValues(const Waypoint &values)
{
    name->setText(values.name);
    latitude->setText(values.lat);
    longitude->setText(values.lon);
    elevation->setText(values.ele);
    description->setText(values.desc);
    CheckPosition();
}

void WaypointDialog::CheckPosition()
{
    modify->setEnabled(InRange(latitude->text(), 90) && InRange(longitude->text(), 180));
}

void WaypointDialog::Revert()
{
    if (index >= 0 && index < log.Store().WaypointCount())
        stored = log.Store().WaypointAt(index);
    SetValues(stored);
}

void WaypointDialog::Modify()
{
    const Waypoint values = Values();
    const int waypoint = index;
    log.Change([&](GpsStore &store) {
        if (waypoint < 0)
            store.AddNewWaypoint(values);
        else if (waypoint < store.WaypointCount())
            store.ModifyWaypoint(waypoint, values);
    });
    accept();
}
