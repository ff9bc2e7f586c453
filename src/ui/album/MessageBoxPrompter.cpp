#include "ui/album/MessageBoxPrompter.h"

#include <QInputDialog>
#include <QMessageBox>

MessageBoxPrompter::MessageBoxPrompter(QWidget *owner) : parent(owner) {}

bool MessageBoxPrompter::AskYesNo(const QString &title, const QString &text)
{
    return QMessageBox::question(parent, title, text, QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes) ==
           QMessageBox::Yes;
}

void MessageBoxPrompter::Inform(const QString &title, const QString &text)
{
    QMessageBox::information(parent, title, text);
}

void MessageBoxPrompter::Error(const QString &title, const QString &text)
{
    QMessageBox::warning(parent, title, text);
}

std::optional<QString> MessageBoxPrompter::AskText(const QString &title, const QString &text, const QString &initial)
{
    bool accepted = false;
    const QString answer = QInputDialog::getText(parent, title, text, QLineEdit::Normal, initial, &accepted);
    if (!accepted)
        return std::nullopt;
    return answer;
}
