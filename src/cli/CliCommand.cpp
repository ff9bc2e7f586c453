#include "cli/CliCommand.h"

#include "cli/CliOutput.h"

#include <QCommandLineParser>

namespace {

QString Name(const char *text)
{
    return QString::fromUtf8(text);
}

QString Synopsis(const CliGroup &group, const CliVerb &verb)
{
    QStringList words{QStringLiteral("orvana-cli"), Name(group.name)};
    for (const char *part : {verb.name, verb.arguments}) {
        if (*part)
            words << Name(part);
    }
    for (const CliOption &option : verb.options)
        words << (option.valueName ? QStringLiteral("[%1 %2]").arg(Name(option.name), Name(option.valueName))
                                   : QStringLiteral("[%1]").arg(Name(option.name)));
    return words.join(u' ');
}

QString GroupUsage(const CliGroup &group)
{
    QStringList lines;
    for (const CliVerb &verb : group.verbs)
        lines << Synopsis(group, verb);
    return lines.join(QStringLiteral("\n       "));
}

bool IsCommandOfItsOwn(const CliGroup &group)
{
    return group.verbs.size() == 1 && !*group.verbs.front().name;
}

QString Notes(const CliGroup &group)
{
    return *group.notes ? u'\n' + Name(group.notes) : QString();
}

QString VerbHelp(const CliGroup &group, const CliVerb &verb)
{
    QString help = QStringLiteral("usage: ") + Synopsis(group, verb) + u'\n' + Name(verb.help);
    if (!verb.options.empty())
        help += QStringLiteral("\n\noptions:");
    for (const CliOption &option : verb.options) {
        const QString name = option.valueName ? Name(option.name) + u' ' + Name(option.valueName) : Name(option.name);
        help += QStringLiteral("\n  %1  %2").arg(name, -20).arg(Name(option.help));
    }
    return help + (IsCommandOfItsOwn(group) ? Notes(group) : QString());
}

QString GroupHelp(const CliGroup &group)
{
    if (IsCommandOfItsOwn(group))
        return VerbHelp(group, group.verbs.front());
    QString help = QStringLiteral("usage: orvana-cli %1 VERB ...\n%2\n").arg(Name(group.name), Name(group.summary));
    for (const CliVerb &verb : group.verbs)
        help += QStringLiteral("\n  %1\n      %2").arg(Synopsis(group, verb), Name(verb.help));
    return help + u'\n' + Notes(group) + QStringLiteral("\n'orvana-cli %1 VERB --help' tells more about one verb.").arg(Name(group.name));
}

// The verb named by the first words of the arguments; the longest name wins ("waypoint add").
const CliVerb *FindVerb(const CliGroup &group, const QStringList &arguments, qsizetype &words)
{
    const CliVerb *found = nullptr;
    words = 0;
    for (const CliVerb &verb : group.verbs) {
        const QStringList name = Name(verb.name).split(u' ', Qt::SkipEmptyParts);
        if (name.size() >= words && arguments.mid(0, name.size()) == name && (name.size() > 0 || !found)) {
            found = &verb;
            words = name.size();
        }
    }
    return found;
}

bool WantsHelp(const QStringList &arguments)
{
    const qsizetype end = arguments.indexOf(QLatin1String("--"));
    const QStringList options = end < 0 ? arguments : arguments.mid(0, end);
    return options.contains(QLatin1String("--help")) || options.contains(QLatin1String("-h"));
}

// QCommandLineParser takes every word that starts with "-" for options, but coordinates, time
// differences and offsets below zero are arguments here. Such words are marked so that the
// parser passes them through, and unmarked afterwards.
const QChar NumberMark(u'\uE000');

QString Marked(const QString &word)
{
    const bool negativeNumber = word.size() > 1 && word[0] == u'-' && (word[1].isDigit() || word[1] == u'.');
    return negativeNumber ? NumberMark + word : word;
}

QString Unmarked(const QString &word)
{
    return word.startsWith(NumberMark) ? word.mid(1) : word;
}

QString ParseProblem(const QCommandLineParser &parser, const CliVerb &verb, const QStringList &arguments)
{
    if (!parser.unknownOptionNames().isEmpty()) {
        const QString name = parser.unknownOptionNames().constFirst();
        return QStringLiteral("unknown option \"%1%2\"").arg(name.size() == 1 ? QStringLiteral("-") : QStringLiteral("--"), name);
    }
    for (const CliOption &option : verb.options) {
        if (option.valueName && arguments.constLast() == QLatin1String(option.name))
            return QStringLiteral("%1 needs a value").arg(Name(option.name));
    }
    return parser.errorText();
}

} // namespace

const CliOption JsonOption{"--json", nullptr, "the output as JSON"};

QString CliArguments::Verb() const
{
    return Name(verb->name);
}

int CliArguments::UsageError(const QString &message) const
{
    return ::UsageError(message, Synopsis(*group, *verb));
}

QString VerbSynopsis(const CliGroup &group, const CliVerb &verb)
{
    return Synopsis(group, verb);
}

QString GroupSynopsis(const CliGroup &group)
{
    return IsCommandOfItsOwn(group) ? Name(group.name) + u' ' + Name(group.verbs.front().arguments) : Name(group.name) + QStringLiteral(" VERB ...");
}

int RunGroup(const CliGroup &group, const QStringList &arguments)
{
    qsizetype words = 0;
    const CliVerb *verb = FindVerb(group, arguments, words);
    if (!verb || (words == 0 && WantsHelp(arguments.mid(0, 1)))) {
        if (WantsHelp(arguments)) {
            PrintOut(GroupHelp(group));
            return ExitDone;
        }
        const QString name = arguments.value(0);
        return UsageError(name.isEmpty() ? QStringLiteral("%1 needs a verb").arg(Name(group.name)) : QStringLiteral("unknown verb \"%1\"").arg(name),
                          GroupUsage(group));
    }
    const QStringList rest = arguments.mid(words);
    if (WantsHelp(rest)) {
        PrintOut(VerbHelp(group, *verb));
        return ExitDone;
    }

    QCommandLineParser parser;
    for (const CliOption &option : verb->options) {
        const QString name = Name(option.name).mid(2);
        parser.addOption(option.valueName ? QCommandLineOption(name, Name(option.help), Name(option.valueName)) : QCommandLineOption(name, Name(option.help)));
    }
    QStringList marked{QStringLiteral("orvana-cli")};
    for (const QString &word : rest)
        marked << Marked(word);
    CliArguments args;
    args.group = &group;
    args.verb = verb;
    if (!parser.parse(marked))
        return args.UsageError(ParseProblem(parser, *verb, rest));
    for (const QString &word : parser.positionalArguments())
        args.positional << Unmarked(word);
    for (const CliOption &option : verb->options) {
        const QString name = Name(option.name).mid(2);
        if (parser.isSet(name))
            args.values.insert(Name(option.name), option.valueName ? Unmarked(parser.value(name)) : QString());
    }
    if (group.prepare)
        group.prepare();
    return verb->run(args);
}
