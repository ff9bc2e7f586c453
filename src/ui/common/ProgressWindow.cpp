#include "ui/common/ProgressWindow.h"

#include "app/Language.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

// Qt's own Cancel caption (in the system's language) unless the program's texts have one.
void CaptionCancel(QPushButton *button)
{
    const QString key = QStringLiteral("ButtonCancel");
    const QString text = GetLocalizedString(key, QStringLiteral("Form"));
    if (text != key)
        button->setText(text);
}

} // namespace

ProgressWindow::ProgressWindow(QWidget *parent)
    : QDialog(parent)
    , step(new QLabel(this))
    , bar(new QProgressBar(this))
{
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    cancel = buttons->button(QDialogButtonBox::Cancel);
    CaptionCancel(cancel);
    connect(buttons, &QDialogButtonBox::rejected, this, &ProgressWindow::reject);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(step);
    layout->addWidget(bar);
    layout->addWidget(buttons);
    setMinimumWidth(360);
    // The window blocks its owner, not the whole program, and never through a loop of its own.
    setWindowModality(Qt::WindowModal);
    bar->setRange(0, 0);
}

void ProgressWindow::SetStep(const QString &text, int total)
{
    step->setText(text);
    // An unknown total shows a busy bar.
    bar->setRange(0, std::max(total, 0));
    bar->setValue(0);
    emit StepBegun();
}

void ProgressWindow::SetDone(int done)
{
    bar->setValue(std::min(done, bar->maximum()));
}

void ProgressWindow::reject()
{
    // The window stays until the work has stopped at the item in hand; the runner hides it.
    cancel->setEnabled(false);
    emit CancelRequested();
}
