#include "CliOutput.h"

#include "Paths.h"
#include "ProfileFile.h"
#include "Settings.h"
#include "Startup.h"

namespace {

const QString Usage = QStringLiteral(
    "orvana-cli settings get SECTION KEY\n"
    "       orvana-cli settings set SECTION KEY VALUE\n"
    "Reads or writes one value of Orvana.ini in the user-data folder the windows use.");

} // namespace

int RunSettings(const QStringList &arguments)
{
    if (WantsHelp(arguments)) {
        PrintOut(QStringLiteral("usage: ") + Usage);
        return ExitDone;
    }
    const QString verb = arguments.value(0);
    if (verb == QLatin1String("get")) {
        if (arguments.size() != 3)
            return UsageError(QStringLiteral("settings get takes SECTION and KEY"), Usage);
        PrintOut(ReadSetting(arguments.at(1), arguments.at(2)));
        return ExitDone;
    }
    if (verb == QLatin1String("set")) {
        if (arguments.size() != 4)
            return UsageError(QStringLiteral("settings set takes SECTION, KEY and VALUE"), Usage);
        // The same first-run settings file the program would write, before the first change.
        SettleUserDataAndLanguage();
        const Result written = ProfileFile::WriteString(SettingsFilePath(), arguments.at(1), arguments.at(2), arguments.at(3));
        return written ? ExitDone : Fail(written.message);
    }
    return UsageError(verb.isEmpty() ? QStringLiteral("settings needs a verb")
                                     : QStringLiteral("unknown verb \"%1\"").arg(verb),
                      Usage);
}
