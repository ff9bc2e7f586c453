#pragma once

#include "cli/CliCommand.h"
#include "gps/GpsStore.h"
#include "app/Prompter.h"

#include <QStringList>
#include <optional>

// What the gps verbs share: the store, number arguments, and the way questions, messages and
// progress reach the terminal.

using GpsArguments = CliArguments;

// "--offset HOURS", the time zone of the photos.
extern const CliOption OffsetOption;

// A number argument, or nothing when it is not one.
std::optional<double> NumberArgument(const QString &text);

// The verb is the user's answer to any question it asks; messages are kept for the verb to print,
// errors go to stderr at once.
class GpsCliPrompter : public Prompter {
public:
    bool AskYesNo(const QString &title, const QString &text) override;
    void Inform(const QString &title, const QString &text) override;
    void Error(const QString &title, const QString &text) override;
    std::optional<QString> AskText(const QString &title, const QString &text, const QString &initial) override;
    QStringList messages;
};

// The store as the GPS window opens it, with the prompter that tells of damaged files. A verb
// goes no further when loaded failed: it tells loaded.message and exits 1.
struct OpenedStore {
    OpenedStore() { loaded = store.Load(&prompter); }
    GpsCliPrompter prompter;
    GpsStore store;
    Result loaded;
};

// Saves the store when it changed; the exit code.
int SaveStoreAndFinish(GpsStore &store, int exitCode);

// What is wrong with --offset, "" when it is absent or a number of hours from -24 to 24.
QString OffsetProblem(const GpsArguments &args);
// The time zone of --offset, else the one saved in [GPS], else the computer's.
double ZoneHours(const GpsArguments &args);

// Prints what the operation told the user; the messages of a failure go to stderr.
int FinishWithMessages(const GpsCliPrompter &prompter, bool done);

// Prints the file an Earth verb wrote, or tells why it wrote none.
struct EarthFile;
int EarthFinish(const EarthFile &written, const GpsCliPrompter &prompter);

// A localised text of section "GPS" with one line.
QString GpsText(const QString &key);
