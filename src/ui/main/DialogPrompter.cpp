#include "ui/main/DialogPrompter.h"

#include <QInputDialog>
#include <QMessageBox>

bool DialogPrompter::AskYesNo(const QString &title, const QString &text)
{
    return QMessageBox::question(parent, title, text) == QMessageBox::Yes;
}

void DialogPrompter::Inform(const QString &title, const QString &text)
{
    QMessageBox::information(parent, title, text);
}

void DialogPrompter::Error(const QString &title, const QString &text)
{
    QMessageBox::critical(parent, title, text);
}

std::optional<QString> DialogPrompter::AskText(const QString &title, const QString &text, const QString &initial)
{
    bool ok = false;
    const QString answer = QInputDialog::getText(parent, title, text, QLineEdit::Normal, initial, &ok);
    if (!ok)
        return std::nullopt;
    return answer;
}
