#include "cli/CliGpsSupport.h"

#include "cli/CliOutput.h"
#include "gps/EarthOutput.h"
#include "app/Language.h"
#include "gps/TimeZones.h"

#include <QTextStream>
#include <cmath>

const CliOption OffsetOption{"--offset", "HOURS", "the photos' time zone, -24 to 24; without it the zone saved in [GPS], else the computer's own"};

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
    if (!args.Has("--offset"))
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
