#pragma once

#include <QByteArray>
#include <QString>

// The INI ("private profile") rules on the text of a file, apart from the file itself, so that
// the parser can be exercised directly on any bytes.
//
// Reading: section and key names compare case-insensitively and the first match wins; blanks
// around key and value are dropped; a value in a matching pair of double or single quotes loses
// them; at most ProfileValueLimit characters come back, cut at the first NUL. Lines may end in
// CR LF or LF, a UTF-8 byte-order mark is skipped, ';' lines are comments.
//
// Writing: an existing key keeps its place and gets "key=value"; a new key goes after the last
// line of its section; a new section goes at the end of the text. Every other line, the line
// ends and the byte-order mark stay as they were.
namespace ProfileText {

inline constexpr int ProfileValueLimit = 1023;

QString FindValue(const QByteArray &content, const QString &section, const QString &key);

// Whether the key is present at all, even with an empty value.
bool HasKey(const QByteArray &content, const QString &section, const QString &key);

QByteArray WithValue(const QByteArray &content, const QString &section, const QString &key,
                     const QString &value);

} // namespace ProfileText
