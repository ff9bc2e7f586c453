#include "Language.h"
#include "TestEnvironment.h"

#include <QTest>

class LocalizationTest : public QObject {
    Q_OBJECT
private slots:
    void lookups_data();
    void lookups();
    void systemLanguage_data();
    void systemLanguage();
    void shippedLanguagesNameThemselves();
};

namespace {

const QByteArray EnglishFile =
    "[OrvDocument]\nLanguageName=English\n"
    "[Form]\nButtonOK=OK\nTwoLines=one\\ntwo\nPair=one\\n\\rtwo\nReturn=one\\rtwo\nMixed=a\\r\\nb\n"
    "[System]\nMyPhotoAlbums=My Photo Albums\n";
const QByteArray ChineseFile =
    "[OrvDocument]\nLanguageName=zh_CN\n"
    "[System]\nMyPhotoAlbums=\xE6\x88\x91\xE7\x9A\x84\xE7\x9B\xB8\xE5\x86\x8C\n";

} // namespace

void LocalizationTest::lookups_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("section");
    QTest::addColumn<QString>("expected");

    QTest::newRow("escape \\n gives CR LF") << "English" << "TwoLines" << "Form" << "one\r\ntwo";
    QTest::newRow("escape \\n\\r gives one CR LF") << "English" << "Pair" << "Form" << "one\r\ntwo";
    QTest::newRow("escape \\r gives CR LF") << "English" << "Return" << "Form" << "one\r\ntwo";
    QTest::newRow("\\r then \\n give two") << "English" << "Mixed" << "Form" << "a\r\n\r\nb";
    QTest::newRow("own translation first") << "zh_CN" << "MyPhotoAlbums" << "System" << QString::fromUtf8("\xE6\x88\x91\xE7\x9A\x84\xE7\x9B\xB8\xE5\x86\x8C");
    QTest::newRow("English when the language lacks the key") << "zh_CN" << "ButtonOK" << "Form" << "OK";
    QTest::newRow("section matters") << "English" << "ButtonOK" << "Menu" << "ButtonOK";
    QTest::newRow("unset language follows the system") << "" << "MyPhotoAlbums" << "System" << "My Photo Albums";
}

void LocalizationTest::lookups()
{
    QFETCH(QString, language);
    QFETCH(QString, key);
    QFETCH(QString, section);
    QFETCH(QString, expected);
    ScopedTestEnvironment environment;
    environment.UseLanguageFiles({{QStringLiteral("English"), EnglishFile}, {QStringLiteral("zh_CN"), ChineseFile}});
    SetCurrentLanguage(language);
    QCOMPARE(GetLocalizedString(key, section), expected);
    QVERIFY(!CurrentLanguage().isEmpty());
}

void LocalizationTest::systemLanguage_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("language");
    QTest::newRow("Singapore") << "zh_SG" << "zh_CN";
    QTest::newRow("Taiwan") << "zh_TW" << "zh_TW";
    QTest::newRow("Hong Kong") << "zh_HK" << "zh_TW";
    QTest::newRow("with an encoding") << "zh_TW.UTF-8" << "zh_TW";
    QTest::newRow("BCP 47 form") << "zh-CN" << "zh_CN";
    QTest::newRow("French") << "fr_FR" << "English";
}

void LocalizationTest::systemLanguage()
{
    QFETCH(QString, locale);
    QFETCH(QString, language);
    ScopedTestEnvironment environment;
    environment.Env().locale = locale;
    QCOMPARE(GetSystemLanguage(), language);
}

// Start-up drops a language whose file does not name it; the shipped ones must survive that.
void LocalizationTest::shippedLanguagesNameThemselves()
{
    ScopedTestEnvironment environment;
    for (const QString &language : {QStringLiteral("English"), QStringLiteral("zh_CN"), QStringLiteral("zh_TW")}) {
        SetCurrentLanguage(language);
        QCOMPARE(GetLocalizedString(QStringLiteral("LanguageName"), QStringLiteral("OrvDocument")), language);
        QVERIFY(GetLocalizedString(QStringLiteral("ScreenCheck"), QStringLiteral("System")) != QLatin1String("ScreenCheck"));
    }
}

QTEST_GUILESS_MAIN(LocalizationTest)
#include "tst_Localization.moc"
