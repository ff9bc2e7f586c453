#pragma once

#include <QMap>
#include <QStringList>
#include <vector>

// Every command of orvana-cli is described once, in its group's table: the verb's name, its
// positional arguments, its options with their value names and help, and the function that does
// the work. QCommandLineParser parses by that table, and the usage and --help texts are made from
// it, so what a verb accepts and what its help says cannot drift apart.

struct CliGroup;
struct CliVerb;

// A switch ("--json") or, with a value name, an option that takes one value ("--offset HOURS").
struct CliOption {
    const char *name; // with its dashes
    const char *valueName;
    const char *help;
};

// "--json", wherever a verb's output is data.
extern const CliOption JsonOption;

// What a verb is given: its positional arguments in order and the options that were set.
class CliArguments {
public:
    QStringList positional;

    // Whether the option was given, with or without a value.
    bool Has(const char *option) const { return values.contains(QLatin1String(option)); }
    // The option's value; empty when it was not given.
    QString Value(const char *option) const { return values.value(QLatin1String(option)); }
    // The verb's own name ("ls", "waypoint add").
    QString Verb() const;
    // Tells the message and this verb's usage on stderr; returns the exit code of bad usage.
    int UsageError(const QString &message) const;

private:
    friend int RunGroup(const CliGroup &group, const QStringList &arguments);
    QMap<QString, QString> values;
    const CliGroup *group = nullptr;
    const CliVerb *verb = nullptr;
};

struct CliVerb {
    const char *name;      // "" when the group is a command of its own ("convert FOLDER")
    const char *arguments; // the positional arguments, as the usage shows them
    const char *help;      // one line
    std::vector<CliOption> options;
    int (*run)(const CliArguments &);
};

struct CliGroup {
    const char *name;
    const char *summary; // one line for the top-level help
    std::vector<CliVerb> verbs;
    const char *notes = ""; // what holds for every verb of the group, after them in its help
    void (*prepare)() = nullptr; // run before any of its verbs, once the arguments are good
};

// The arguments after the group's name: finds the verb, answers --help at the group's and at the
// verb's level, parses the verb's options and runs it. Returns the exit code.
int RunGroup(const CliGroup &group, const QStringList &arguments);

// "GROUP VERB ..." or, for a command of its own, "GROUP ARGUMENTS", for the top-level help.
QString GroupSynopsis(const CliGroup &group);
// "orvana-cli GROUP VERB ARGUMENTS [--option VALUE]...", as the usage and help show it.
QString VerbSynopsis(const CliGroup &group, const CliVerb &verb);
