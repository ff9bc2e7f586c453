#include "library/HiddenFiles.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace {

QString HiddenListPath(const QFileInfo &info)
{
    return info.absolutePath() + QStringLiteral("/.hidden");
}

QSet<QString> ListedNames(const QString &listPath)
{
    QFile list(listPath);
    if (!list.open(QIODevice::ReadOnly))
        return {};
    QSet<QString> names;
    for (const QByteArray &line : list.readAll().split('\n')) {
        const QString name = QString::fromUtf8(line).trimmed();
        if (!name.isEmpty())
            names.insert(name);
    }
    return names;
}

} // namespace

QSet<QString> HiddenNames(const QString &folder)
{
    return ListedNames(folder + QStringLiteral("/.hidden"));
}

bool IsHidden(const QString &path)
{
    const QFileInfo info(path);
    return info.fileName().startsWith(u'.') || ListedNames(HiddenListPath(info)).contains(info.fileName());
}

void SetHidden(const QString &path)
{
    const QFileInfo info(path);
    const QString name = info.fileName();
    if (name.isEmpty() || name.startsWith(u'.'))
        return;
    const QString listPath = HiddenListPath(info);
    QFile current(listPath);
    QByteArray content;
    if (current.open(QIODevice::ReadOnly))
        content = current.readAll();
    current.close();
    if (ListedNames(listPath).contains(name))
        return;
    if (!content.isEmpty() && !content.endsWith('\n'))
        content += '\n';
    content += name.toUtf8() + '\n';
    QSaveFile list(listPath);
    if (list.open(QIODevice::WriteOnly)) {
        list.write(content);
        list.commit();
    }
}
