#include "ui/gps/TrackDialog.h"

#include "ui/Localize.h"
#include "gps/GpsLog.h"
#include "gps/TimeText.h"
#include "gps/TrackPoints.h"
#include "gps/TrackStatistics.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

QLineEdit *Field(QFormLayout *form, const char *name, bool editable)
{
    auto *edit = new QLineEdit;
    edit->setObjectName(QLatin1String(name));
    edit->setReadOnly(!editable);
    auto *label = new QLabel(QStringLiteral("@") + QLatin1String(name));
    label->setBuddy(edit);
    form->addRow(label, edit);
    return edit;
}

} // namespace

TrackDialog::TrackDialog(const GpsLog &shared, int index, double zoneHours, Rename renameTrack, QWidget *parent)
    : QDialog(parent), log(shared), track(index), rename(std::move(renameTrack))
{
    setObjectName(QStringLiteral("frmModifyTrack"));
    setWindowTitle(QStringLiteral("@ModifyTrack"));
    auto *form = new QFormLayout;
    name = Field(form, "TrackName", true);
    QLineEdit *begin = Field(form, "BeginTime", false);
    QLineEdit *end = Field(form, "EndTime", false);
    QLineEdit *duration = Field(form, "Time", false);
    QLineEdit *bounds = Field(form, "Bounds", false);
    auto *buttons = new QDialogButtonBox;
    QPushButton *modify = buttons->addButton(QStringLiteral("@ButtonModify"), QDialogButtonBox::AcceptRole);
    modify->setObjectName(QStringLiteral("ButtonModify"));
    QPushButton *revert = buttons->addButton(QStringLiteral("@ButtonRevert"), QDialogButtonBox::ResetRole);
    revert->setObjectName(QStringLiteral("ButtonRevert"));
    QPushButton *cancel = buttons->addButton(QStringLiteral("@ButtonCancel"), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("ButtonCancel"));
    connect(modify, &QPushButton::clicked, this, &TrackDialog::Modify);
    connect(revert, &QPushButton::clicked, this, &TrackDialog::Revert);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(buttons);
    LocalizeForm(this);

    const Track stored = log.Store().TrackAt(track);
    begin->setText(GetDateWithSelectedTimeZone(stored.beginTime, zoneHours));
    end->setText(GetDateWithSelectedTimeZone(stored.endTime, zoneHours));
    // The duration needs only the two times, not the points.
    TrackStatistics times;
    const std::optional<qint64> from = TimeText::Seconds(stored.beginTime);
    const std::optional<qint64> to = TimeText::Seconds(stored.endTime);
    times.seconds = from && to ? *to - *from : 0;
    duration->setText(FormatTrackStatistics(times, true).time);
    bounds->setText(stored.bounds);
    Revert();
}

void TrackDialog::Revert()
{
    if (track < log.Store().GetTrackCount())
        name->setText(log.Store().TrackAt(track).name);
}

void TrackDialog::Modify()
{
    if (track < log.Store().GetTrackCount() && name->text() != log.Store().TrackAt(track).name)
        rename(track, name->text());
    accept();
}
