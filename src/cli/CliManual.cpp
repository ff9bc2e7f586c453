#include "cli/CliManual.h"

#include "app/Version.h"

#include <QStringList>

const char *const CliDescription = "Orvana's photo albums, settings and tools without a window.";

namespace {

// Text as roff prints it: backslashes and minus signs literal, no line taken for a request.
QString Roff(const QString &text)
{
    QString escaped = text;
    escaped.replace(u'\\', QStringLiteral("\\e"));
    escaped.replace(u'-', QStringLiteral("\\-"));
    QStringList lines = escaped.split(u'\n');
    for (QString &line : lines) {
        if (line.startsWith(u'.') || line.startsWith(u'\''))
            line.prepend(QStringLiteral("\\&"));
    }
    return lines.join(u'\n');
}

QString Roff(const char *text)
{
    return Roff(QString::fromUtf8(text));
}

QString Header(const QString &name, const QString &summary)
{
    return QStringLiteral(".TH %1 1 \"\" \"Orvana %2\" \"User Commands\"\n.SH NAME\n%3 \\- %4\n")
        .arg(name.toUpper(), QLatin1String(OrvanaVersion), Roff(name), Roff(summary));
}

// An indented paragraph: the tag in bold, as one quoted argument however many words it has,
// then its text.
QString Tagged(const QString &tag, const QString &text)
{
    return QStringLiteral(".TP\n.B \"%1\"\n%2\n").arg(Roff(tag).replace(u'"', QStringLiteral("\\(dq")), Roff(text));
}

QString VerbEntry(const CliGroup &group, const CliVerb &verb)
{
    QString entry = Tagged(VerbSynopsis(group, verb), QString::fromUtf8(verb.help));
    if (verb.options.empty())
        return entry;
    entry += QStringLiteral(".RS\n");
    for (const CliOption &option : verb.options) {
        const QString name = option.valueName ? QStringLiteral("%1 %2").arg(QString::fromUtf8(option.name), QString::fromUtf8(option.valueName))
                                              : QString::fromUtf8(option.name);
        entry += Tagged(name, QString::fromUtf8(option.help));
    }
    return entry + QStringLiteral(".RE\n");
}

QString GroupSection(const CliGroup &group)
{
    QString section = QStringLiteral(".SS %1\n%2\n").arg(Roff(group.name), Roff(group.summary));
    for (const CliVerb &verb : group.verbs)
        section += VerbEntry(group, verb);
    if (*group.notes)
        section += QStringLiteral(".PP\n%1\n").arg(Roff(group.notes));
    return section;
}

QString ExitStatus()
{
    return QStringLiteral(".SH \"EXIT STATUS\"\n") + Tagged(QStringLiteral("0"), QStringLiteral("done"))
        + Tagged(QStringLiteral("1"), QStringLiteral("failed; the reason is on standard error"))
        + Tagged(QStringLiteral("2"), QStringLiteral("bad usage; the verb's usage is on standard error"));
}

QString Files()
{
    return QStringLiteral(".SH FILES\n")
        + Tagged(QStringLiteral("~/Documents/Orvana User Data/Orvana.ini"),
                 QStringLiteral("the settings shared by the windows and orvana-cli; Documents is the desktop's documents "
                                "folder (XDG_DOCUMENTS_DIR)"))
        + Tagged(QStringLiteral("share/orvana/Resources"),
                 QStringLiteral("translations, the user guide, icons and templates, beside the installed bin folder "
                                "unless a Resources folder is beside the program"))
        + Tagged(QStringLiteral("share/orvana/Plugins"), QStringLiteral("plug-ins, found by the same rule"));
}

QString CliPage(const CliGroupList &groups)
{
    QString page = Header(QStringLiteral("orvana-cli"), QString::fromUtf8(CliDescription).chopped(1));
    page += QStringLiteral(".SH SYNOPSIS\n.B orvana\\-cli\n[\\-\\-version | \\-\\-help] GROUP VERB ARGS...\n");
    page += QStringLiteral(".SH DESCRIPTION\n%1\n.PP\n%2\n")
                .arg(Roff(CliDescription),
                     Roff("Every verb takes --help. Where a verb lists things, --json prints them as JSON."));
    page += QStringLiteral(".SH COMMANDS\n");
    for (const CliGroup *group : groups)
        page += GroupSection(*group);
    return page + ExitStatus() + Files() + QStringLiteral(".SH \"SEE ALSO\"\n.BR orvana (1)\n");
}

// The command lines start-up dispatches on (an album path, the camera-card switch desktop
// environments use, and the windows that run alone).
struct StartForm {
    const char *arguments;
    const char *help;
};

constexpr StartForm StartForms[] = {
    {"", "opens the main window and the welcome window"},
    {"ALBUM", "opens the album ALBUM; a path in double quotes loses them"},
    {"PHOTO", "opens the album holding the photo file PHOTO"},
    {"/ImportPhotos CARD", "opens the main window and the camera import; desktop environments start this for a camera card"},
    {"/NewAlbum", "opens the main window and asks for a new album"},
    {"/GPS", "opens the GPS window alone"},
    {"/VersionUpdater", "opens the update check alone"},
};

QString ProgramPage(const CliGroupList &groups)
{
    QString page = Header(QStringLiteral("orvana"), QStringLiteral("photo organiser: albums, calendars, GPS tags and publishing"));
    page += QStringLiteral(".SH SYNOPSIS\n.B orvana\n[ALBUM | PHOTO | /ImportPhotos CARD | /NewAlbum | /GPS | /VersionUpdater]\n");
    page += QStringLiteral(".SH DESCRIPTION\n%1\n.PP\n%2\n")
                .arg(Roff("Orvana keeps photos in albums (folders holding a property list and thumbnails), shows them as a "
                          "grid, a detail view and calendars, imports them from cards and folders, tags them with positions "
                          "from GPS track logs, writes captions, keywords and positions into the files, and publishes albums."),
                     Roff("The command line is taken as one text after the program's name:"));
    for (const StartForm &form : StartForms)
        page += Tagged(*form.arguments ? QStringLiteral("orvana %1").arg(QString::fromUtf8(form.arguments)) : QStringLiteral("orvana"),
                       QString::fromUtf8(form.help));
    page += QStringLiteral(".SH \"WITHOUT A WINDOW\"\n%1\n").arg(Roff("orvana-cli does the same work from a terminal:"));
    for (const CliGroup *group : groups)
        page += Tagged(QStringLiteral("orvana-cli ") + GroupSynopsis(*group), QString::fromUtf8(group->summary));
    return page + Files() + QStringLiteral(".SH \"SEE ALSO\"\n.BR orvana\\-cli (1)\n");
}

} // namespace

QString ManPage(const QString &page, const CliGroupList &groups)
{
    if (page == QLatin1String("orvana-cli"))
        return CliPage(groups);
    if (page == QLatin1String("orvana"))
        return ProgramPage(groups);
    return {};
}
