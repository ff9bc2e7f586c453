#include "ui/print/PrintWindow.h"

#include "app/Language.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPrintDialog>
#include <QPrintPreviewWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

QString FormText(const char *key)
{
    return GetLocalizedString(QString::fromLatin1(key), QStringLiteral("Form"));
}

} // namespace

PrintWindow::PrintWindow(QList<PrintedPhoto> chosen, QWidget *parent)
    : QDialog(parent), photos(std::move(chosen)), printer(QPrinter::HighResolution)
{
    setObjectName(QStringLiteral("frmPrint"));
    setWindowTitle(GetLocalizedString(QStringLiteral("mnuPrint"), QStringLiteral("Menu")).remove(QStringLiteral("...")));
    printer.setDocName(windowTitle());
    preview = new QPrintPreviewWidget(&printer, this);
    preview->setObjectName(QStringLiteral("PrintPreview"));
    perPage = new QComboBox(this);
    perPage->setObjectName(QStringLiteral("ComboPhotosPerPage"));
    for (const int count : {1, 2, 4, 9})
        perPage->addItem(QString::number(count), count);
    fill = new QCheckBox(FormText("CheckFillCells"), this);
    fill->setObjectName(QStringLiteral("CheckFillCells"));
    captions = new QCheckBox(FormText("CheckPrintNotes"), this);
    captions->setObjectName(QStringLiteral("CheckPrintNotes"));
    captions->setChecked(true);

    auto *controls = new QHBoxLayout;
    auto *label = new QLabel(FormText("LabelPhotosPerPage"), this);
    label->setBuddy(perPage);
    controls->addWidget(label);
    controls->addWidget(perPage);
    controls->addWidget(fill);
    controls->addWidget(captions);
    controls->addStretch(1);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    QPushButton *print = buttons->addButton(windowTitle(), QDialogButtonBox::AcceptRole);
    print->setObjectName(QStringLiteral("ButtonPrint"));
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(controls);
    layout->addWidget(preview, 1);
    layout->addWidget(buttons);
    resize(900, 700);

    connect(preview, &QPrintPreviewWidget::paintRequested, this, [this](QPrinter *target) { PrintPhotoSheets(*target, photos, Options()); });
    for (QCheckBox *box : {fill, captions})
        connect(box, &QCheckBox::toggled, preview, &QPrintPreviewWidget::updatePreview);
    connect(perPage, &QComboBox::currentIndexChanged, preview, &QPrintPreviewWidget::updatePreview);
    connect(print, &QPushButton::clicked, this, &PrintWindow::Print);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

SheetOptions PrintWindow::Options() const
{
    return {perPage->currentData().toInt(), fill->isChecked(), captions->isChecked()};
}

void PrintWindow::Print()
{
    // The system's dialog, shown without a loop of its own; it offers a PDF file as a printer too.
    auto *dialog = new QPrintDialog(&printer, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, qOverload<>(&QDialog::accepted), this, [this] {
        PrintPhotoSheets(printer, photos, Options());
        accept();
    });
    dialog->open();
}
