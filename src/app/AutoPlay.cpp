#include "app/AutoPlay.h"

#include "app/AppEnvironment.h"
#include "app/Language.h"
#include "app/Paths.h"
#include "app/ProfileFile.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>

namespace {

const QString EntrySection = QStringLiteral("Desktop Entry");
const QString UntranslatedAction = QStringLiteral("ShowPicturesAction");

// Quoting of one Exec argument, then the escaping every desktop-entry string value gets.
QString QuoteExecArgument(const QString &argument)
{
    QString quoted;
    for (const QChar c : argument) {
        if (c == u'"' || c == u'`' || c == u'$' || c == u'\\')
            quoted += u'\\';
        quoted += c;
    }
    quoted = u'"' + quoted + u'"';
    quoted.replace(u'%', QStringLiteral("%%"));
    quoted.replace(u'\\', QStringLiteral("\\\\"));
    return quoted;
}

// Localised texts end up on one line of the entry.
QString OneLine(QString text)
{
    text.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
    return text;
}

} // namespace

QString AutoPlayEntryPath()
{
    return Environment().ApplicationsFolder() + QStringLiteral("/orvana-import.desktop");
}

QString PackagedAutoPlayEntryPath()
{
    return InstalledShareFolder() + QStringLiteral("/applications/orvana-import.desktop");
}

QString ExpectedAutoPlayCommand()
{
    return QuoteExecArgument(AppPath() + QStringLiteral("/orvana")) + QStringLiteral(" /ImportPhotos %f");
}

void EnsureAutoPlayHandler()
{
    if (Environment().ApplicationsFolder().isEmpty())
        return;
    const QString path = AutoPlayEntryPath();
    const QString packaged = PackagedAutoPlayEntryPath();
    if (QFile::exists(packaged)) {
        // Only an entry of ours goes: the provider key marks what RegisterAutoPlayHandler wrote.
        if (!ProfileFile::ReadString(path, EntrySection, QStringLiteral("X-Orvana-Provider")).isEmpty())
            QFile::remove(path);
        return;
    }
    const QString command = ProfileFile::ReadString(path, EntrySection, QStringLiteral("Exec"));
    const QString action = ProfileFile::ReadString(path, EntrySection, QStringLiteral("Name"));
    const bool needsRewrite = command.isEmpty()
        || command.toLower() != ExpectedAutoPlayCommand().toLower()
        || action.isEmpty()
        || action.compare(UntranslatedAction, Qt::CaseInsensitive) == 0;
    if (needsRewrite)
        RegisterAutoPlayHandler();
}

void RegisterAutoPlayHandler()
{
    const QString lines[] = {
        QStringLiteral("[Desktop Entry]"),
        QStringLiteral("Type=Application"),
        QStringLiteral("Name=") + OneLine(GetLocalizedString(QStringLiteral("ShowPicturesAction"), QStringLiteral("Autoplay"))),
        QStringLiteral("Comment=Import photos"),
        QStringLiteral("Exec=") + ExpectedAutoPlayCommand(),
        QStringLiteral("Icon=camera-photo"),
        QStringLiteral("MimeType=x-content/image-dcf;"),
        QStringLiteral("NoDisplay=true"),
        QStringLiteral("X-Orvana-Provider=")
            + OneLine(GetLocalizedString(QStringLiteral("ShowPicturesProvider"), QStringLiteral("Autoplay"))),
    };
    QByteArray content;
    for (const QString &line : lines)
        content += line.toUtf8() + '\n';

    QDir().mkpath(Environment().ApplicationsFolder());
    QSaveFile file(AutoPlayEntryPath());
    if (file.open(QIODevice::WriteOnly)) {
        file.write(content);
        file.commit();
    }
}
