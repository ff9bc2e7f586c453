#include "ui/geotag/TimeDialogButtons.h"

#include "app/Language.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QMessageBox>
#include <QPushButton>

namespace {

// Shown without a nested event loop; the box goes when it is closed.
void ShowHowToCalculate(QDialog *dialog)
{
    auto *box = new QMessageBox(QMessageBox::Information, GetLocalizedString(QStringLiteral("CoolButtonHowToCalculate"), QStringLiteral("Form")),
                                GetLocalizedString(QStringLiteral("MessageHowToCalculate"), QStringLiteral("Form")), QMessageBox::Ok, dialog);
    box->setObjectName(QStringLiteral("HowToCalculate"));
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

} // namespace

QPushButton *AddTimeDialogButtons(QDialog *dialog, QDialogButtonBox *&box)
{
    box = new QDialogButtonBox(dialog);
    QPushButton *howTo = box->addButton(QStringLiteral("@CoolButtonHowToCalculate"), QDialogButtonBox::HelpRole);
    howTo->setObjectName(QStringLiteral("CoolButtonHowToCalculate"));
    QPushButton *process = box->addButton(QStringLiteral("@CoolButtonProcess"), QDialogButtonBox::AcceptRole);
    process->setObjectName(QStringLiteral("CoolButtonProcess"));
    QPushButton *cancel = box->addButton(QStringLiteral("@CoolButtonCancel"), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("CoolButtonCancel"));
    QObject::connect(howTo, &QPushButton::clicked, dialog, [dialog] { ShowHowToCalculate(dialog); });
    QObject::connect(cancel, &QPushButton::clicked, dialog, &QDialog::reject);
    return process;
}
