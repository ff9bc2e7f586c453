#include "ui/geotag/ClockPhotoPanel.h"

#include "ui/edit/PreviewLoader.h"

#include "app/Language.h"
#include "app/WallClock.h"
#include "imaging/Thumbnail.h"

#include <QDateTimeEdit>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPixmap>

namespace {

constexpr int PictureBox = 320;

// "+1 d 02:03:04" or "-0 d 00:30:00": the way the corrector's fields will take it.
QString DifferenceText(qint64 seconds)
{
    const qint64 size = seconds < 0 ? -seconds : seconds;
    return QStringLiteral("%1%2 %3 %4:%5:%6")
        .arg(QChar(seconds < 0 ? u'-' : u'+'))
        .arg(size / 86400)
        .arg(GetLocalizedString(QStringLiteral("LabelDays"), QStringLiteral("Form")))
        .arg(size / 3600 % 24, 2, 10, QLatin1Char('0'))
        .arg(size / 60 % 60, 2, 10, QLatin1Char('0'))
        .arg(size % 60, 2, 10, QLatin1Char('0'));
}

} // namespace

ClockPhotoPanel::ClockPhotoPanel(QWidget *parent) : QGroupBox(QStringLiteral("@ClockPhoto"), parent)
{
    setObjectName(QStringLiteral("ClockPhoto"));
    auto *layout = new QHBoxLayout(this);
    picture = new QLabel(this);
    picture->setObjectName(QStringLiteral("PictureClock"));
    picture->setFixedSize(PictureBox, PictureBox);
    picture->setAlignment(Qt::AlignCenter);
    layout->addWidget(picture);

    auto *form = new QFormLayout;
    captured = new QLabel(this);
    captured->setObjectName(QStringLiteral("LabelCaptureTimeValue"));
    clock = new QDateTimeEdit(this);
    clock->setObjectName(QStringLiteral("ClockTime"));
    // Wall-clock values, as capture times are: no zone, no daylight-saving gaps.
    clock->setTimeSpec(Qt::UTC);
    clock->setDisplayFormat(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    clock->setCalendarPopup(true);
    difference = new QLabel(this);
    difference->setObjectName(QStringLiteral("LabelDifferenceValue"));
    form->addRow(QStringLiteral("@LabelCaptureTime"), captured);
    form->addRow(QStringLiteral("@LabelClockTime"), clock);
    form->addRow(QStringLiteral("@LabelDifference"), difference);
    layout->addLayout(form, 1);
    connect(clock, &QDateTimeEdit::dateTimeChanged, this, &ClockPhotoPanel::ClockTimeEdited);
}

void ClockPhotoPanel::SetPhoto(const QString &picturePath, const QString &captureDate)
{
    capture = ReadWallClock(captureDate).value_or(QDateTime());
    captured->setText(captureDate);
    setEnabled(capture.isValid());
    if (capture.isValid()) {
        const QSignalBlocker quiet(clock);
        clock->setDateTime(capture);
        difference->setText(DifferenceText(0));
    }
    if (picturePath.isEmpty())
        return;
    LoadPreviewAway(
        this, [picturePath] { return LoadedPreview{LoadPictureToFit(picturePath, PictureBox, PictureBox), {}}; },
        [this](const LoadedPreview &loaded) {
            if (!loaded.picture.IsNull())
                picture->setPixmap(QPixmap::fromImage(ImageOf(loaded.picture)));
        });
}

qint64 ClockPhotoPanel::DifferenceSeconds() const
{
    return capture.isValid() ? capture.secsTo(clock->dateTime()) : 0;
}

void ClockPhotoPanel::ClockTimeEdited()
{
    if (!capture.isValid())
        return;
    difference->setText(DifferenceText(DifferenceSeconds()));
    emit DifferenceChanged(DifferenceSeconds());
}
