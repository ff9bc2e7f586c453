#include "app/UpdateCheck.h"

#include "app/AppEnvironment.h"
#include "app/DayNumber.h"
#include "app/Language.h"
#include "app/Paths.h"
#include "app/ProfileFile.h"
#include "app/Settings.h"
#include "app/Version.h"

#include <QDateTime>
#include <QSysInfo>
#include <QUrl>
#include <QUuid>
#include <cmath>
#include <cstdlib>

namespace {

const QString SystemSection = QStringLiteral("System");

QString Encoded(const QString &value)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(value));
}

} // namespace

QString UpdateTimeZone(int offsetSeconds)
{
    const double hours = std::abs(offsetSeconds) / 3600.0;
    return QStringLiteral("GMT") + QChar(offsetSeconds < 0 ? u'-' : u'+') + QStringLiteral("%1").arg(hours, 4, 'f', 1, u'0');
}

QString UpdatePageAddress(const QString &page, const UpdateFacts &facts)
{
    return page + QStringLiteral("?software=Orvana-Win-V2") + QStringLiteral("&language=") + Encoded(facts.language) +
           QStringLiteral("&machine=") + Encoded(facts.machine) + QStringLiteral("&timezone=") + Encoded(facts.timeZone) +
           QStringLiteral("&version=") + Encoded(facts.version) + QStringLiteral("&albums=") + Encoded(facts.albums) +
           QStringLiteral("&osversion=") + Encoded(facts.system);
}

QString UpdatePage()
{
    return ProfileFile::ReadString(ResourcesFolder() + QStringLiteral("/Services.ini"), QStringLiteral("Updates"), QStringLiteral("Page"));
}

UpdateFacts CurrentUpdateFacts()
{
    const QString machineKey = QStringLiteral("UpdateMachineID");
    QString machine = ReadSetting(SystemSection, machineKey);
    if (machine.isEmpty()) {
        machine = QUuid::createUuid().toString(QUuid::WithoutBraces);
        WriteSetting(SystemSection, machineKey, machine);
    }
    const QString albums = ReadSetting(SystemSection, QStringLiteral("OpenedAlbumsNumber"));
    return {GetLocalizedString(QStringLiteral("LanguageName"), QStringLiteral("OrvDocument")), machine,
            UpdateTimeZone(QDateTime::currentDateTime().offsetFromUtc()), QLatin1String(OrvanaVersion),
            albums.isEmpty() ? QStringLiteral("0") : albums,
            (QSysInfo::productType() + u' ' + QSysInfo::productVersion()).trimmed()};
}

void RecordUpdateCheck()
{
    WriteSetting(SystemSection, QStringLiteral("LastCheckUpdate"), QString::number(DayNumber(Environment().Today())));
}
