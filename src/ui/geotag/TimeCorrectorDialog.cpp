#include "ui/geotag/TimeCorrectorDialog.h"

#include "ui/Localize.h"
#include "ui/geotag/ClockPhotoPanel.h"
#include "ui/geotag/TimeDialogButtons.h"

#include "gps/TimeCorrection.h"
#include "library/AlbumDocument.h"
#include "library/PhotoRecord.h"

#include <QButtonGroup>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

TimeCorrectorDialog::TimeCorrectorDialog(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmTimeCorrector"));
    setWindowTitle(QStringLiteral("@TimeCorrector"));
    auto *layout = new QVBoxLayout(this);
    clockPhoto = new ClockPhotoPanel(this);
    layout->addWidget(clockPhoto);

    auto *grid = new QGridLayout;
    days = AddField(QStringLiteral("Days"));
    hours = AddField(QStringLiteral("Hours"));
    minutes = AddField(QStringLiteral("Mins"));
    seconds = AddField(QStringLiteral("Secs"));
    const QList<std::pair<QString, QDoubleSpinBox *>> fields = {
        {QStringLiteral("@LabelDays"), days}, {QStringLiteral("@LabelHours"), hours},
        {QStringLiteral("@LabelMins"), minutes}, {QStringLiteral("@LabelSecs"), seconds}};
    for (int column = 0; column < fields.size(); ++column) {
        grid->addWidget(new QLabel(fields[column].first, this), 0, column);
        grid->addWidget(fields[column].second, 1, column);
    }
    // The sign as two choices, later or earlier, rather than a minus typed into the fields: the
    // question the user answers is which way the camera was wrong.
    later = new QRadioButton(QStringLiteral("@Forward"), this);
    later->setObjectName(QStringLiteral("OptionForward"));
    earlier = new QRadioButton(QStringLiteral("@Backward"), this);
    earlier->setObjectName(QStringLiteral("OptionBackward"));
    later->setChecked(true);
    auto *sign = new QButtonGroup(this);
    sign->addButton(later);
    sign->addButton(earlier);
    grid->addWidget(later, 2, 0, 1, 2);
    grid->addWidget(earlier, 2, 2, 1, 2);
    layout->addLayout(grid);

    QDialogButtonBox *buttons = nullptr;
    QPushButton *process = AddTimeDialogButtons(this, buttons);
    connect(process, &QPushButton::clicked, this, &TimeCorrectorDialog::Process);
    layout->addWidget(buttons);
    connect(clockPhoto, &ClockPhotoPanel::DifferenceChanged, this, &TimeCorrectorDialog::SetDifference);
    LocalizeForm(this);
}

// TextDays with its up-down arrows standing for UpDownDays, and so on: decimal numbers, fractions
// and negative values allowed as the computation takes them.
QDoubleSpinBox *TimeCorrectorDialog::AddField(const QString &name)
{
    auto *field = new QDoubleSpinBox(this);
    field->setObjectName(QStringLiteral("Text") + name);
    field->setRange(-99999, 99999);
    field->setDecimals(2);
    field->setSingleStep(1);
    return field;
}

void TimeCorrectorDialog::SetDocument(AlbumDocument &document, const QList<int> &selected, int current)
{
    album = &document;
    photos = selected;
    if (current < 1 || current > document.RecordCount())
        return;
    // The photo itself, shrunk while it decodes: a clock's hands need more than a thumbnail.
    clockPhoto->SetPhoto(document.PhotoFilePath(current), document.Record(PhotoRecord::CaptureDate, current));
}

void TimeCorrectorDialog::SetDifference(qint64 difference)
{
    const qint64 size = difference < 0 ? -difference : difference;
    (difference < 0 ? earlier : later)->setChecked(true);
    days->setValue(double(size / 86400));
    hours->setValue(double(size / 3600 % 24));
    minutes->setValue(double(size / 60 % 60));
    seconds->setValue(double(size % 60));
}

double TimeCorrectorDialog::OffsetDays() const
{
    return CorrectorOffsetDays(days->value(), hours->value(), minutes->value(), seconds->value(), earlier->isChecked() ? -1 : 1);
}

void TimeCorrectorDialog::Process()
{
    if (album)
        ApplyTimeCorrection(*album, photos, OffsetDays());
    accept();
}
