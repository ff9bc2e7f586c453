#pragma once

#include <QString>
#include <QStringList>
#include <exception>

// The reason a library gave, on one line: libvips gathers one line per complaint of its decoder,
// and a reason is shown after a file name on one line of a report.
inline QString ErrorText(const std::exception &error)
{
    QStringList lines = QString::fromUtf8(error.what()).split(u'\n', Qt::SkipEmptyParts);
    for (QString &line : lines)
        line = line.trimmed();
    lines.removeAll(QString());
    lines.removeDuplicates();
    return lines.join(QStringLiteral("; "));
}
