#include "library/Keywords.h"

namespace Keywords {

QStringList Split(const QString &text)
{
    QStringList keywords;
    for (const QString &piece : text.split(u';')) {
        const QString keyword = piece.trimmed();
        if (!keyword.isEmpty())
            keywords << keyword;
    }
    return keywords;
}

QString Join(const QStringList &keywords)
{
    QString text;
    for (const QString &keyword : keywords)
        text += keyword + u';';
    return text;
}

QString Merge(const QString &own, const QString &pasted)
{
    QStringList merged = Split(own);
    for (const QString &keyword : Split(pasted)) {
        if (!merged.contains(keyword, Qt::CaseInsensitive))
            merged << keyword;
    }
    return Join(merged);
}

} // namespace Keywords
