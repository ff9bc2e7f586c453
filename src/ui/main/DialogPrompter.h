#pragma once

#include "app/Prompter.h"

class QWidget;

// The main window's questions and messages as message boxes over the given window. The shared
// prompter of the task runner takes its place once the album work runs there.
class DialogPrompter : public Prompter {
public:
    explicit DialogPrompter(QWidget *parent) : parent(parent) {}
    bool AskYesNo(const QString &title, const QString &text) override;
    void Inform(const QString &title, const QString &text) override;
    void Error(const QString &title, const QString &text) override;
    std::optional<QString> AskText(const QString &title, const QString &text, const QString &initial) override;

private:
    QWidget *parent;
};
