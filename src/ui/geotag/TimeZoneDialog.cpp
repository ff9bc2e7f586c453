#include "ui/geotag/TimeZoneDialog.h"

#include "ui/Localize.h"

#include "gps/TimeZones.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QPushButton>

TimeZoneDialog::TimeZoneDialog(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmTimeZone"));
    setWindowTitle(QStringLiteral("@TimeZone"));
    auto *form = new QFormLayout(this);
    const QList<TimeZoneEntry> entries = TimeZoneEntries();
    // Both start at the zone chosen last: the user changes the one that differs.
    const int saved = SavedTimeZoneEntry(entries, ComputerStandardOffsetSeconds());
    const auto zoneList = [this, &entries, saved](const QString &name) {
        auto *combo = new QComboBox(this);
        combo->setObjectName(name);
        for (const TimeZoneEntry &entry : entries)
            combo->addItem(entry.label, entry.hours);
        combo->setCurrentIndex(saved);
        return combo;
    };
    camera = zoneList(QStringLiteral("ComboCameraTimeZone"));
    taken = zoneList(QStringLiteral("ComboPhotoTimeZone"));
    form->addRow(QStringLiteral("@LabelCameraTimeZone"), camera);
    form->addRow(QStringLiteral("@LabelPhotoTimeZone"), taken);

    auto *buttons = new QDialogButtonBox(this);
    QPushButton *calculate = buttons->addButton(QStringLiteral("@CoolButtonCalculateTimeDifference"), QDialogButtonBox::AcceptRole);
    calculate->setObjectName(QStringLiteral("CoolButtonCalculateTimeDifference"));
    QPushButton *cancel = buttons->addButton(QStringLiteral("@CoolButtonCancel"), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("CoolButtonCancel"));
    connect(calculate, &QPushButton::clicked, this, [this] {
        emit TimeDifferenceCalculated(Difference());
        accept();
    });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    form->addRow(buttons);
    LocalizeForm(this);
}

double TimeZoneDialog::Difference() const
{
    return taken->currentData().toDouble() - camera->currentData().toDouble();
}
