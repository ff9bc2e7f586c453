#include "ui/common/DialogPrompter.h"

#include "ui/common/InterfaceCalls.h"

#include <QInputDialog>
#include <QMessageBox>

DialogPrompter::DialogPrompter(QWidget *owner, InterfaceCalls &interfaceCalls)
    : parent(owner)
    , calls(interfaceCalls)
{
}

bool DialogPrompter::AskYesNo(const QString &title, const QString &text)
{
    bool yes = false;
    calls.Run([&] {
        yes = QMessageBox::question(parent, title, text, QMessageBox::Yes | QMessageBox::No, QMessageBox::No) == QMessageBox::Yes;
    });
    return yes;
}

void DialogPrompter::Inform(const QString &title, const QString &text)
{
    calls.Run([&] { QMessageBox::information(parent, title, text); });
}

void DialogPrompter::Error(const QString &title, const QString &text)
{
    calls.Run([&] { QMessageBox::critical(parent, title, text); });
}

std::optional<QString> DialogPrompter::AskText(const QString &title, const QString &text, const QString &initial)
{
    std::optional<QString> answer;
    calls.Run([&] {
        bool ok = false;
        const QString line = QInputDialog::getText(parent, title, text, QLineEdit::Normal, initial, &ok);
        if (ok)
            answer = line;
    });
    return answer;
}
