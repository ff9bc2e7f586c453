#pragma once

#include "app/Prompter.h"

#include <QPointer>
#include <QWidget>

class InterfaceCalls;

// Answers the questions of work with dialogs over `parent`. Callable from a worker thread: each
// question is asked on the interface thread and the worker waits for the answer.
class DialogPrompter : public Prompter {
public:
    DialogPrompter(QWidget *parent, InterfaceCalls &calls);

    bool AskYesNo(const QString &title, const QString &text) override;
    void Inform(const QString &title, const QString &text) override;
    void Error(const QString &title, const QString &text) override;
    std::optional<QString> AskText(const QString &title, const QString &text, const QString &initial) override;

private:
    QPointer<QWidget> parent;
    InterfaceCalls &calls;
};
