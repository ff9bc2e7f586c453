#pragma once

#include "app/Prompter.h"
#include "ui/common/InterfaceCalls.h"

// Lets work on a worker thread ask another prompter's questions: each question is put to that
// prompter on the interface thread and the worker waits for the answer.
class ForwardingPrompter : public Prompter {
public:
    ForwardingPrompter(Prompter &target, InterfaceCalls &calls) : target(target), calls(calls) {}

    bool AskYesNo(const QString &title, const QString &text) override
    {
        bool yes = false;
        calls.Run([&] { yes = target.AskYesNo(title, text); });
        return yes;
    }
    void Inform(const QString &title, const QString &text) override { calls.Run([&] { target.Inform(title, text); }); }
    void Error(const QString &title, const QString &text) override { calls.Run([&] { target.Error(title, text); }); }
    std::optional<QString> AskText(const QString &title, const QString &text, const QString &initial) override
    {
        std::optional<QString> answer;
        calls.Run([&] { answer = target.AskText(title, text, initial); });
        return answer;
    }

private:
    Prompter &target;
    InterfaceCalls &calls;
};
