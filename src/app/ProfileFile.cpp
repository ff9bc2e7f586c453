#include "ProfileFile.h"

#include "ProfileText.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace {

// A value or name holding a line break would split its line in two and corrupt the section.
bool FitsOnOneLine(const QString &text)
{
    return !text.contains(u'\n') && !text.contains(u'\r');
}

} // namespace

namespace ProfileFile {

QString ReadString(const QString &path, const QString &section, const QString &key)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return ProfileText::FindValue(file.readAll(), section, key);
}

Result WriteString(const QString &path, const QString &section, const QString &key,
                   const QString &value)
{
    if (!FitsOnOneLine(section) || !FitsOnOneLine(key) || !FitsOnOneLine(value))
        return Result::Failure(QStringLiteral("A setting cannot hold a line break."));
    if (section.contains(u']') || key.contains(u'=') || key.trimmed().isEmpty())
        return Result::Failure(QStringLiteral("\"%1\" is not a usable setting name.").arg(key));

    const QFileInfo info(path);
    QByteArray content;
    QFileDevice::Permissions permissions = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
    if (info.exists()) {
        permissions = info.permissions();
        // Checked on the mode bits, not access(): a read-only file stays read-only even for root.
        if (!permissions.testFlag(QFileDevice::WriteOwner))
            return Result::Failure(QStringLiteral("%1 is read-only.").arg(path));
        QFile current(path);
        if (!current.open(QIODevice::ReadOnly))
            return Result::Failure(QStringLiteral("Cannot read %1: %2").arg(path, current.errorString()));
        content = current.readAll();
    }

    QSaveFile out(path);
    if (!out.open(QIODevice::WriteOnly))
        return Result::Failure(QStringLiteral("Cannot write %1: %2").arg(path, out.errorString()));
    out.setPermissions(permissions);
    out.write(ProfileText::WithValue(content, section, key, value));
    if (!out.commit())
        return Result::Failure(QStringLiteral("Cannot write %1: %2").arg(path, out.errorString()));
    return Result::Success();
}

} // namespace ProfileFile
