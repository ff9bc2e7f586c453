#pragma once

#include "app/Prompter.h"

#include <QPointer>

class QWidget;

// The album window's questions and messages as message boxes over the window.
class MessageBoxPrompter : public Prompter {
public:
    explicit MessageBoxPrompter(QWidget *parent);
    bool AskYesNo(const QString &title, const QString &text) override;
    void Inform(const QString &title, const QString &text) override;
    void Error(const QString &title, const QString &text) override;
    std::optional<QString> AskText(const QString &title, const QString &text, const QString &initial) override;

private:
    QPointer<QWidget> parent;
};
