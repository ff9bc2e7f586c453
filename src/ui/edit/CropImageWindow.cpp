#include "ui/edit/CropImageWindow.h"

#include "ui/Localize.h"
#include "ui/edit/CropPreview.h"
#include "ui/edit/PreviewLoader.h"

#include <QButtonGroup>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

const QSize PreviewBox(640, 480);

struct NamedRatio {
    const char *name; // the option's name and caption key
    double width, height;
};

constexpr NamedRatio Ratios[] = {
    {"Option16to9", 16, 9}, {"Option1to1", 1, 1}, {"Option35to5", 3.5, 5}, {"Option4to3", 4, 3}, {"Option4to6", 4, 6},
    {"Option5to35", 5, 3.5}, {"Option5to7", 5, 7}, {"Option6to4", 6, 4}, {"Option7to5", 7, 5},
};

// The ratio a new crop starts with: the usual shape of a camera's photo.
constexpr int FirstRatio = 3;

} // namespace

CropImageWindow::CropImageWindow(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmCropImage"));
    setWindowTitle(QStringLiteral("@CropImage"));
    auto *layout = new QVBoxLayout(this);
    preview = new CropPreview(frame, PreviewBox, this);
    layout->addWidget(preview, 0, Qt::AlignHCenter);

    ratios = new QButtonGroup(this);
    auto *options = new QGridLayout;
    constexpr int perRow = 5;
    for (int i = 0; i < static_cast<int>(std::size(Ratios)); ++i) {
        auto *option = new QRadioButton(QLatin1Char('@') + QLatin1String(Ratios[i].name), this);
        option->setObjectName(QLatin1String(Ratios[i].name));
        ratios->addButton(option, i);
        options->addWidget(option, i / perRow, i % perRow);
    }
    ratios->button(FirstRatio)->setChecked(true);
    connect(ratios, &QButtonGroup::idToggled, this, [this](int, bool on) {
        if (on) {
            frame.SetRatio(ChosenRatio());
            preview->update();
        }
    });
    layout->addLayout(options);

    auto *buttons = new QDialogButtonBox(this);
    ok = buttons->addButton(QStringLiteral("@ButtonOK"), QDialogButtonBox::AcceptRole);
    ok->setObjectName(QStringLiteral("ButtonOK"));
    ok->setEnabled(false); // until there is a photo to crop
    buttons->addButton(QStringLiteral("@ButtonCancel"), QDialogButtonBox::RejectRole)->setObjectName(QStringLiteral("ButtonCancel"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    LocalizeForm(this);
}

double CropImageWindow::ChosenRatio() const
{
    const NamedRatio &ratio = Ratios[std::max(0, ratios->checkedId())];
    return ratio.width / ratio.height;
}

void CropImageWindow::InitWithImageFile(const QString &path)
{
    // The crop cuts the photo's pixels as stored, so the preview shows them so too: the whole
    // photo decoded, then shrunk.
    LoadPreviewAway(
        this,
        [path] {
            const Picture photo = Picture::Load(path);
            return LoadedPreview{photo.ResizedToFit(PreviewBox.width(), PreviewBox.height()), QSize(photo.Width(), photo.Height())};
        },
        [this](const LoadedPreview &loaded) {
            frame.Reset(loaded.photoSize, ChosenRatio());
            preview->SetPicture(ImageOf(loaded.picture), loaded.photoSize);
            ok->setEnabled(!loaded.picture.IsNull() && !loaded.photoSize.isEmpty());
            emit PreviewReady();
        });
}
