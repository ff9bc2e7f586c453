#include "app/ProfileFile.h"

#include "app/ProfileText.h"

#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>

namespace {

// A value or name holding a line break would split its line in two and corrupt the section.
bool FitsOnOneLine(const QString &text)
{
    return !text.contains(u'\n') && !text.contains(u'\r');
}

// Held while a writer rereads, changes and replaces the file.
class WriteLock {
public:
    explicit WriteLock(const QString &path) : file(path), lock(path + QStringLiteral(".lock")) {}
    Result Take()
    {
        if (lock.tryLock(LockWaitMilliseconds))
            return Result::Success();
        if (lock.error() == QLockFile::LockFailedError)
            return Result::Failure(QStringLiteral("%1 stayed locked by another writer.").arg(file));
        return Result::Failure(QStringLiteral("Cannot lock %1 to write it.").arg(file));
    }

private:
    static constexpr int LockWaitMilliseconds = 20000;
    QString file;
    QLockFile lock;
};

Result Replace(const QString &path, const QByteArray &content, QFileDevice::Permissions permissions)
{
    QSaveFile out(path);
    if (!out.open(QIODevice::WriteOnly))
        return Result::Failure(QStringLiteral("Cannot write %1: %2").arg(path, out.errorString()));
    out.setPermissions(permissions);
    out.write(content);
    if (!out.commit())
        return Result::Failure(QStringLiteral("Cannot write %1: %2").arg(path, out.errorString()));
    return Result::Success();
}

// The whole current content of a file that exists; a failure when any of it cannot be read.
Result ReadWhole(const QFileInfo &info, QByteArray &content)
{
    const QString path = info.filePath();
    const QString unread = QStringLiteral("Cannot read %1, so it is left as it is: %2");
    // Checked on the mode bits, not access(): a file its owner may not read stays unread even
    // for root, as it does for everyone else.
    if (!info.isFile() || !info.permissions().testFlag(QFileDevice::ReadOwner))
        return Result::Failure(unread.arg(path, info.isFile() ? QStringLiteral("it is not readable") : QStringLiteral("it is not a file")));
    QFile current(path);
    if (!current.open(QIODevice::ReadOnly))
        return Result::Failure(unread.arg(path, current.errorString()));
    content = current.readAll();
    if (current.error() != QFileDevice::NoError || content.size() != current.size())
        return Result::Failure(unread.arg(path, current.errorString()));
    return Result::Success();
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

    WriteLock lock(path);
    if (Result taken = lock.Take(); !taken)
        return taken;
    const QFileInfo info(path);
    QByteArray content;
    QFileDevice::Permissions permissions = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
    if (info.exists() || info.isSymLink()) {
        if (Result read = ReadWhole(info, content); !read)
            return read;
        permissions = info.permissions();
        // Checked on the mode bits, not access(): a read-only file stays read-only even for root.
        if (!permissions.testFlag(QFileDevice::WriteOwner))
            return Result::Failure(QStringLiteral("%1 is read-only.").arg(path));
    }
    return Replace(path, ProfileText::WithValue(content, section, key, value), permissions);
}

Result CreateIfMissing(const QString &path, const QByteArray &content)
{
    WriteLock lock(path);
    if (Result taken = lock.Take(); !taken)
        return taken;
    const QFileInfo info(path);
    if (info.exists() || info.isSymLink())
        return Result::Success();
    return Replace(path, content, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
}

} // namespace ProfileFile
