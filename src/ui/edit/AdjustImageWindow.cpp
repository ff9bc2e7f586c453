#include "ui/edit/AdjustImageWindow.h"

#include "ui/Localize.h"
#include "ui/edit/PreviewLoader.h"
#include "imaging/Thumbnail.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QVBoxLayout>

namespace {

constexpr int PreviewBox = 480;
const AdjustSliders Neutral;

} // namespace

AdjustImageWindow::AdjustImageWindow(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmAdjustImage"));
    setWindowTitle(QStringLiteral("@AdjustImage"));
    auto *layout = new QVBoxLayout(this);

    preview = new QLabel(this);
    preview->setObjectName(QStringLiteral("PicturePreview"));
    preview->setFixedSize(PreviewBox, PreviewBox);
    preview->setAlignment(Qt::AlignCenter);
    layout->addWidget(preview, 0, Qt::AlignHCenter);

    auto *sliders = new QGridLayout;
    layout->addLayout(sliders);
    const auto row = [this, sliders](const QString &caption, const QString &name, int minimum, int maximum, int neutral) {
        const int at = sliders->rowCount();
        sliders->addWidget(new QLabel(QLatin1Char('@') + caption, this), at, 0);
        QSlider *slider = AddSlider(name, minimum, maximum, neutral);
        sliders->addWidget(slider, at, 1);
        return slider;
    };
    contrast = row(QStringLiteral("Contrast"), QStringLiteral("SliderContrast"), ContrastMinimum, ContrastMaximum, Neutral.contrast);
    red = row(QStringLiteral("Red"), QStringLiteral("SliderRed"), ColourMinimum, ColourMaximum, Neutral.red);
    green = row(QStringLiteral("Green"), QStringLiteral("SliderGreen"), ColourMinimum, ColourMaximum, Neutral.green);
    blue = row(QStringLiteral("Blue"), QStringLiteral("SliderBlue"), ColourMinimum, ColourMaximum, Neutral.blue);
    connect(contrast, &QSlider::valueChanged, this, &AdjustImageWindow::Redraw);
    for (QSlider *colour : {red, green, blue})
        connect(colour, &QSlider::valueChanged, this, [this, colour] { ColourMoved(colour); });

    keepBalance = new QCheckBox(QStringLiteral("@CheckKeepColorBalance"), this);
    keepBalance->setObjectName(QStringLiteral("CheckKeepColorBalance"));
    connect(keepBalance, &QCheckBox::toggled, this, &AdjustImageWindow::BalanceToggled);
    layout->addWidget(keepBalance);

    auto *buttons = new QDialogButtonBox(this);
    QPushButton *revert = buttons->addButton(QStringLiteral("@ButtonRevert"), QDialogButtonBox::ResetRole);
    revert->setObjectName(QStringLiteral("ButtonRevert"));
    QPushButton *ok = buttons->addButton(QStringLiteral("@ButtonOK"), QDialogButtonBox::AcceptRole);
    ok->setObjectName(QStringLiteral("ButtonOK"));
    QPushButton *cancel = buttons->addButton(QStringLiteral("@ButtonCancel"), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("ButtonCancel"));
    connect(revert, &QPushButton::clicked, this, &AdjustImageWindow::Revert);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    LocalizeForm(this);
}

QSlider *AdjustImageWindow::AddSlider(const QString &name, int minimum, int maximum, int neutral)
{
    auto *slider = new QSlider(Qt::Horizontal, this);
    slider->setObjectName(name);
    slider->setRange(minimum, maximum);
    slider->setValue(neutral);
    slider->setPageStep(10);
    slider->setMinimumWidth(320);
    return slider;
}

void AdjustImageWindow::InitWithImageFile(const QString &path)
{
    LoadPreviewAway(
        this, [path] { return LoadedPreview{LoadPictureToFit(path, PreviewBox, PreviewBox), {}}; },
        [this](const LoadedPreview &loaded) {
            source = loaded.picture;
            Redraw();
            emit PreviewReady();
        });
}

AdjustSliders AdjustImageWindow::Sliders() const
{
    return {contrast->value(), red->value(), green->value(), blue->value()};
}

void AdjustImageWindow::ColourMoved(QSlider *moved)
{
    // The other two follow the moved one; their own changes, made here, must not start this over.
    if (keepBalance->isChecked() && !coupling) {
        coupling = true;
        for (QSlider *other : {red, green, blue}) {
            if (other != moved)
                other->setValue(moved->value());
        }
        coupling = false;
    }
    if (!coupling)
        Redraw();
}

void AdjustImageWindow::BalanceToggled(bool on)
{
    // Ticking the box brings the three colour sliders together at their average: the tint goes,
    // the brightness stays about as it was, and from then on they move as one.
    if (!on)
        return;
    const int average = (red->value() + green->value() + blue->value() + 1) / 3;
    coupling = true;
    red->setValue(average);
    coupling = false;
    ColourMoved(red);
}

void AdjustImageWindow::Revert()
{
    // Every slider back at once, then one redraw.
    coupling = true;
    contrast->blockSignals(true);
    contrast->setValue(Neutral.contrast);
    contrast->blockSignals(false);
    red->setValue(Neutral.red);
    green->setValue(Neutral.green);
    blue->setValue(Neutral.blue);
    coupling = false;
    Redraw();
}

void AdjustImageWindow::Redraw()
{
    if (source.IsNull())
        return;
    // From the decoded preview each time: a move back to neutral shows the photo exactly as it is.
    preview->setPixmap(QPixmap::fromImage(ImageOf(source.Adjusted(BuildColourTables(Sliders())))));
}
