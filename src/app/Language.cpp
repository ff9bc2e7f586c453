#include "app/Language.h"

#include "app/AppEnvironment.h"
#include "app/Paths.h"
#include "app/ProfileFile.h"

#include <QStringList>

namespace {

QString &LanguageSlot()
{
    static QString language;
    return language;
}

struct LocaleLanguage {
    const char *locale;
    const char *language;
};

// Chinese as written in mainland China and Singapore, and as written in Taiwan and Hong Kong.
constexpr LocaleLanguage LocaleLanguages[] = {
    {"zh_CN", "zh_CN"},
    {"zh_SG", "zh_CN"},
    {"zh_TW", "zh_TW"},
    {"zh_HK", "zh_TW"},
};

const QString English = QStringLiteral("English");

QString ExpandLineBreaks(QString text)
{
    const QString crlf = QStringLiteral("\r\n");
    text.replace(QStringLiteral("\\n\\r"), crlf);
    text.replace(QStringLiteral("\\r"), crlf);
    text.replace(QStringLiteral("\\n"), crlf);
    return text;
}

} // namespace

QString CurrentLanguage()
{
    return LanguageSlot();
}

void SetCurrentLanguage(const QString &language)
{
    LanguageSlot() = language;
}

QString LanguageForLocale(const QString &localeName)
{
    // Locale names may come as "zh-TW" or "zh_TW.UTF-8".
    QString name = localeName.section(u'.', 0, 0);
    name.replace(u'-', u'_');
    for (const LocaleLanguage &entry : LocaleLanguages) {
        if (name.compare(QLatin1String(entry.locale), Qt::CaseInsensitive) == 0)
            return QString::fromLatin1(entry.language);
    }
    return English;
}

QString GetSystemLanguage()
{
    return LanguageForLocale(Environment().SystemLocaleName());
}

QString LanguageFilePath(const QString &language)
{
    return ResourcesFolder() + u'/' + language + QStringLiteral("/Localizable.ini");
}

QString GetLocalizedString(const QString &key, const QString &section)
{
    if (CurrentLanguage().isEmpty())
        SetCurrentLanguage(GetSystemLanguage());
    const QString language = CurrentLanguage();
    QString text = ProfileFile::ReadString(LanguageFilePath(language), section, key);
    if (text.isEmpty() && language != English)
        text = ProfileFile::ReadString(LanguageFilePath(English), section, key);
    if (text.isEmpty())
        return key;
    return ExpandLineBreaks(text);
}
