#pragma once

#include <QString>
#include <QStringList>

// Keywords are kept as one text, each keyword followed by ";" ("beach;family;").
namespace Keywords {

QStringList Split(const QString &text);
QString Join(const QStringList &keywords);
// The photo's keywords with the pasted ones added after them; a keyword it already has, in any
// letter case, is not added twice.
QString Merge(const QString &own, const QString &pasted);

} // namespace Keywords
