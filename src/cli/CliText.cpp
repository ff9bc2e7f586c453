#include "cli/CliGroups.h"
#include "cli/CliOutput.h"

#include "app/Language.h"

namespace {

int Text(const CliArguments &args)
{
    if (args.positional.size() != 2)
        return args.UsageError(QStringLiteral("text takes KEY and SECTION"));
    UseUserSettings();
    PrintOut(GetLocalizedString(args.positional.at(0), args.positional.at(1)));
    return ExitDone;
}

} // namespace

const CliGroup &TextCommand()
{
    static const CliGroup group{
        "text",
        "localised text in the current language",
        {{"", "KEY SECTION", "Prints the user-interface text of KEY in SECTION in the current language.", {}, Text}},
    };
    return group;
}
