#pragma once

#include <QString>

// The user's settings in Orvana.ini. Every call goes to the file: nothing is cached, so a value
// written anywhere is seen by the next read everywhere. Neither call reports an error: a failed
// read gives "", a failed write leaves the old value.
QString ReadSetting(const QString &section, const QString &key);
void WriteSetting(const QString &section, const QString &key, const QString &value);

// Settings are text; numbers are read leniently: leading blanks, a sign, digits and a decimal
// part are taken as far as they go, and text that does not start with a number is 0.
double SettingNumber(const QString &text);
int SettingInteger(const QString &text);
