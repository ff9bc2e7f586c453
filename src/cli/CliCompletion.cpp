#include "cli/CliManual.h"

#include <QStringList>

namespace {

// Every word of the tables is a plain name ("waypoint add", "--json"); single quotes keep them
// literal in the script all the same.
QString Quoted(const QString &word)
{
    QString quoted = word;
    quoted.replace(u'\'', QStringLiteral("'\\''"));
    return u'\'' + quoted + u'\'';
}

QString VerbCases(const CliGroupList &groups)
{
    QString cases;
    for (const CliGroup *group : groups) {
        QStringList verbs;
        for (const CliVerb &verb : group->verbs)
            verbs << Quoted(QString::fromUtf8(verb.name));
        cases += QStringLiteral("        %1) printf '%s\\n' %2 ;;\n").arg(Quoted(QString::fromUtf8(group->name)), verbs.join(u' '));
    }
    return cases;
}

QString OptionCases(const CliGroupList &groups)
{
    QString cases;
    for (const CliGroup *group : groups) {
        for (const CliVerb &verb : group->verbs) {
            QStringList options{QStringLiteral("--help")};
            for (const CliOption &option : verb.options)
                options << QString::fromUtf8(option.name);
            const QString key = (QString::fromUtf8(group->name) + u' ' + QString::fromUtf8(verb.name)).trimmed();
            cases += QStringLiteral("        %1) echo %2 ;;\n").arg(Quoted(key), Quoted(options.join(u' ')));
        }
    }
    return cases;
}

} // namespace

// Verbs may be several words long ("gps waypoint add"): the words typed after the group are
// matched against each verb's words to offer the next one, once however many verbs share it; once a verb is complete, its options
// are offered for a word starting with "-", and file names for any other.
QString BashCompletion(const CliGroupList &groups)
{
    QStringList names{QStringLiteral("--help"), QStringLiteral("--version")};
    for (const CliGroup *group : groups)
        names << QString::fromUtf8(group->name);
    return QStringLiteral(
               "# bash completion for orvana-cli, printed by orvana-cli from its command tables\n"
               "_orvana_cli_verbs()\n{\n    case \"$1\" in\n%1    esac\n}\n\n"
               "_orvana_cli_options()\n{\n    case \"$1\" in\n%2    esac\n}\n\n"
               "_orvana_cli()\n{\n"
               "    local cur=${COMP_WORDS[COMP_CWORD]}\n"
               "    COMPREPLY=()\n"
               "    if [ \"$COMP_CWORD\" -eq 1 ]; then\n"
               "        mapfile -t COMPREPLY < <(compgen -W %3 -- \"$cur\")\n"
               "        return\n"
               "    fi\n"
               "    local group=${COMP_WORDS[1]} typed=\"${COMP_WORDS[*]:2:COMP_CWORD-2}\"\n"
               "    local verb next=() done_verb=\n"
               "    while IFS= read -r verb; do\n"
               "        local words=($verb)\n"
               "        if [ \"${words[*]:0:COMP_CWORD-2}\" = \"$typed\" ] && [ ${#words[@]} -gt $((COMP_CWORD-2)) ]; then\n"
               "            next+=(\"${words[COMP_CWORD-2]}\")\n"
               "        fi\n"
               "        case \" $typed \" in \" $verb \"*) [ ${#verb} -ge ${#done_verb} ] && done_verb=$verb ;; esac\n"
               "    done < <(_orvana_cli_verbs \"$group\")\n"
               "    if [ ${#next[@]} -gt 0 ] && [[ $cur != -* ]]; then\n"
               "        mapfile -t COMPREPLY < <(compgen -W \"${next[*]}\" -- \"$cur\" | sort -u)\n"
               "    elif [[ $cur == -* ]]; then\n"
               "        mapfile -t COMPREPLY < <(compgen -W \"$(_orvana_cli_options \"$group${done_verb:+ $done_verb}\")\" -- \"$cur\")\n"
               "    fi\n"
               "}\n"
               "complete -o default -F _orvana_cli orvana-cli\n")
        .arg(VerbCases(groups), OptionCases(groups), Quoted(names.join(u' ')));
}
