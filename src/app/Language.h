#pragma once

#include <QString>

// The language folder under Resources that every text comes from ("English", "zh_CN", ...).
// Empty until start-up or the first lookup settles it.
QString CurrentLanguage();
void SetCurrentLanguage(const QString &language);

// "zh_CN" for Simplified-Chinese systems, "zh_TW" for Traditional-Chinese ones, else "English".
QString GetSystemLanguage();
QString LanguageForLocale(const QString &localeName);

QString LanguageFilePath(const QString &language);

// The text of key in section in the current language, else in English, else the key itself.
// The escapes "\n\r", "\r" and "\n" become CR LF.
QString GetLocalizedString(const QString &key, const QString &section);
