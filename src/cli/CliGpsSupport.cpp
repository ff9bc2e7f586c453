#include "CliGpsSupport.h"

#include "CliOutput.h"
#include "EarthOutput.h"
#include "Language.h"
#include "TimeZones.h"

#include <QTextStream>

const QString GpsUsage = QStringLiteral(
    "orvana-cli gps import FILE [--type gpx|nmea|ozi]\n"
    "       orvana-cli gps tracks [--json] | gps waypoints [--json]\n"
    "       orvana-cli gps export tracks|waypoints OUT.gpx\n"
    "       orvana-cli gps waypoint add NAME LAT LON [ELE [DESC]] | gps waypoint remove NAME\n"
    "       orvana-cli gps track remove NAME\n"
    "       orvana-cli gps match ALBUM [--offset HOURS] [FILE...]      no FILE: every photo\n"
    "       orvana-cli gps match-waypoint ALBUM WAYPOINT FILE...\n"
    "       orvana-cli gps locate ALBUM LAT LON FILE...                  place photos by hand\n"
    "       orvana-cli gps shift ALBUM HOURS FILE...                     whole or half hours, -25 to 25\n"
    "       orvana-cli gps correct ALBUM [--days D] [--hours H] [--mins M] [--secs S] [--back] FILE...\n"
    "       orvana-cli gps kml ALBUM [OUT.kml] [--tracks] [--offset HOURS] [--show] [FILE...]\n"
    "       orvana-cli gps kmz ALBUM OUT.kmz [--tracks] [--offset HOURS] [FILE...]\n"
    "       orvana-cli gps kml-tracks [--show] | gps kml-waypoints [--show]\n"
    "Without --offset, times are converted with the zone saved in [GPS], else the computer's own.\n"
    "--show opens the written file in [GPS] EarthAppPath, or in the desktop's KML viewer.");

std::optional<GpsArguments> ParseGpsArguments(const QStringList &arguments, const QStringList &switches, const QStringList &valueOptions)
{
    GpsArguments parsed;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString &argument = arguments[i];
        if (!argument.startsWith(QLatin1String("--"))) {
            parsed.positional << argument;
        } else if (switches.contains(argument)) {
            parsed.switches << argument;
        } else if (valueOptions.contains(argument) && i + 1 < arguments.size()) {
            parsed.values.insert(argument, arguments[++i]);
        } else {
            UsageError(valueOptions.contains(argument) ? QStringLiteral("%1 needs a value").arg(argument)
                                                       : QStringLiteral("unknown option \"%1\"").arg(argument),
                       GpsUsage);
            return std::nullopt;
        }
    }
    return parsed;
}

std::optional<double> NumberArgument(const QString &text)
{
    bool ok = false;
    const double value = text.trimmed().toDouble(&ok);
    return ok && std::isfinite(value) ? std::optional<double>(value) : std::nullopt;
}

bool GpsCliPrompter::AskYesNo(const QString &, const QString &)
{
    return true;
}

void GpsCliPrompter::Inform(const QString &, const QString &text)
{
    messages << QString(text).replace(QStringLiteral("\r\n"), QStringLiteral(" "));
}

std::optional<QString> GpsCliPrompter::AskText(const QString &, const QString &, const QString &)
{
    return std::nullopt;
}

void GpsCliPrompter::Error(const QString &title, const QString &text)
{
    QTextStream(stderr) << "orvana-cli: " << title << ": " << text << '\n';
}

int SaveStoreAndFinish(GpsStore &store, int exitCode)
{
    if (!store.IsModified())
        return exitCode;
    const Result saved = store.Save();
    return saved ? exitCode : Fail(saved.message);
}

QString OffsetProblem(const GpsArguments &args)
{
    if (!args.values.contains(QStringLiteral("--offset")))
        return {};
    const std::optional<double> hours = NumberArgument(args.Value("--offset"));
    return hours && std::abs(*hours) <= 24 ? QString() : QStringLiteral("--offset takes hours from -24 to 24");
}

double ZoneHours(const GpsArguments &args)
{
    const std::optional<double> hours = NumberArgument(args.Value("--offset"));
    return hours ? *hours : SelectedTimeZoneHours();
}

int FinishWithMessages(const GpsCliPrompter &prompter, bool done)
{
    for (const QString &message : prompter.messages)
        done ? PrintOut(message) : (void)Fail(message);
    return done ? ExitDone : ExitFailed;
}

int EarthFinish(const EarthFile &written, const GpsCliPrompter &prompter)
{
    if (!written.result)
        return prompter.messages.isEmpty() ? Fail(written.result.message) : FinishWithMessages(prompter, false);
    PrintOut(written.path);
    return ExitDone;
}

QString GpsText(const QString &key)
{
    return GetLocalizedString(key, QStringLiteral("GPS")).replace(QStringLiteral("\r\n"), QStringLiteral(" "));
}
