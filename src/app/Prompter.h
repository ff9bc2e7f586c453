#pragma once

#include <QString>
#include <optional>

// Questions and messages that an operation has in the middle of its work. The windows answer
// with dialogs, orvana-cli with its flags and stderr, tests with a script.
class Prompter {
public:
    virtual ~Prompter() = default;
    virtual bool AskYesNo(const QString &title, const QString &text) = 0;
    virtual void Inform(const QString &title, const QString &text) = 0;
    virtual void Error(const QString &title, const QString &text) = 0;
    // A line of text, prefilled; nothing when the user cancels.
    virtual std::optional<QString> AskText(const QString &title, const QString &text, const QString &initial) = 0;
};
