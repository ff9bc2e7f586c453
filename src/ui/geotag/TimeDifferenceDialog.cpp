#include "ui/geotag/TimeDifferenceDialog.h"

#include "ui/Localize.h"
#include "ui/geotag/TimeDialogButtons.h"
#include "ui/geotag/TimeZoneDialog.h"

#include "gps/TimeCorrection.h"
#include "library/AlbumDocument.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

TimeDifferenceDialog::TimeDifferenceDialog(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmTimeDifference"));
    setWindowTitle(QStringLiteral("@TimeDifference"));
    auto *layout = new QVBoxLayout(this);
    auto *row = new QHBoxLayout;
    differences = new QComboBox(this);
    differences->setObjectName(QStringLiteral("ComboTimeDifference"));
    for (const TimeDifferenceEntry &entry : TimeDifferenceEntries())
        differences->addItem(entry.label, entry.hours);
    SetTimeRetrieve(0);
    row->addWidget(differences, 1);
    auto *zones = new QPushButton(QStringLiteral("@TimeZone"), this);
    zones->setObjectName(QStringLiteral("ButtonTimeZone"));
    connect(zones, &QPushButton::clicked, this, &TimeDifferenceDialog::CalculateFromZones);
    row->addWidget(zones);
    layout->addLayout(row);

    QDialogButtonBox *buttons = nullptr;
    QPushButton *process = AddTimeDialogButtons(this, buttons);
    connect(process, &QPushButton::clicked, this, &TimeDifferenceDialog::Process);
    layout->addWidget(buttons);
    LocalizeForm(this);
}

void TimeDifferenceDialog::SetDocument(AlbumDocument &document, const QList<int> &selected)
{
    album = &document;
    photos = selected;
}

void TimeDifferenceDialog::SetTimeRetrieve(double hours)
{
    // The list holds half hours only; a zone difference such as 5:45 shows as its nearest entry,
    // and one exactly between two as the smaller shift: a correction that falls short is the
    // safer guess. Beyond 25 hours the list's end is shown.
    const double halves = std::min(std::ceil(std::abs(hours) * 2 - 0.5), 50.0);
    const double nearest = std::copysign(halves / 2, hours);
    const int entry = differences->findData(nearest == 0 ? 0.0 : nearest);
    differences->setCurrentIndex(std::max(entry, 0));
}

double TimeDifferenceDialog::Hours() const
{
    return differences->currentData().toDouble();
}

void TimeDifferenceDialog::Process()
{
    if (album)
        ApplyTimeDifference(*album, photos, Hours());
    accept();
}

void TimeDifferenceDialog::CalculateFromZones()
{
    auto *zones = new TimeZoneDialog(this);
    zones->setAttribute(Qt::WA_DeleteOnClose);
    connect(zones, &TimeZoneDialog::TimeDifferenceCalculated, this, &TimeDifferenceDialog::SetTimeRetrieve);
    zones->open();
}
