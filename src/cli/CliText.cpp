#include "CliOutput.h"

#include "Language.h"

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
    UseUserSettings();
    PrintOut(GetLocalizedString(arguments.at(0), arguments.at(1)));
    return ExitDone;
}
