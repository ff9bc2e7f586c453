#include "CliOutput.h"

#include "Language.h"
#include "Settings.h"

namespace {

const QString Usage = QStringLiteral(
    "orvana-cli text KEY SECTION\n"
    "Prints the user-interface text of KEY in SECTION in the current language.");

} // namespace

int RunText(const QStringList &arguments)
{
    if (WantsHelp(arguments)) {
        PrintOut(QStringLiteral("usage: ") + Usage);
        return ExitDone;
    }
    if (arguments.size() != 2)
        return UsageError(QStringLiteral("text takes KEY and SECTION"), Usage);
    // The language the windows would use; a broken language folder reads as English.
    SetCurrentLanguage(ReadSetting(QStringLiteral("Language"), QStringLiteral("Current")));
    if (!CurrentLanguage().isEmpty()
        && GetLocalizedString(QStringLiteral("LanguageName"), QStringLiteral("OrvDocument")) != CurrentLanguage())
        SetCurrentLanguage(QStringLiteral("English"));
    PrintOut(GetLocalizedString(arguments.at(0), arguments.at(1)));
    return ExitDone;
}
