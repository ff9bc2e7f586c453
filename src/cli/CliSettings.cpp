#include "cli/CliGroups.h"
#include "cli/CliOutput.h"

#include "app/Paths.h"
#include "app/ProfileFile.h"
#include "app/Settings.h"
#include "app/Startup.h"

namespace {

int Get(const CliArguments &args)
{
    if (args.positional.size() != 2)
        return args.UsageError(QStringLiteral("settings get takes SECTION and KEY"));
    PrintOut(ReadSetting(args.positional.at(0), args.positional.at(1)));
    return ExitDone;
}

int Set(const CliArguments &args)
{
    if (args.positional.size() != 3)
        return args.UsageError(QStringLiteral("settings set takes SECTION, KEY and VALUE"));
    // The same first-run settings file the program would write, before the first change.
    SettleUserDataAndLanguage();
    const Result written = ProfileFile::WriteString(SettingsFilePath(), args.positional.at(0), args.positional.at(1), args.positional.at(2));
    return written ? ExitDone : Fail(written.message);
}

} // namespace

const CliGroup &SettingsCommands()
{
    static const CliGroup group{
        "settings",
        "one value of Orvana.ini",
        {
            {"get", "SECTION KEY", "prints one value; an absent one prints as an empty line", {}, Get},
            {"set", "SECTION KEY VALUE", "writes one value", {}, Set},
        },
        "Orvana.ini is the one in the user-data folder the windows use.",
    };
    return group;
}
