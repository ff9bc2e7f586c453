#include "ProfileText.h"
#include "TestEnvironment.h"

#include <QDirIterator>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

// Every text the program looks up must exist in the reference language, or the user sees a
// bare key. Lookups are found in the sources: GetLocalizedString calls with literal key and
// section, and "@Key" placeholder captions ("@mnu..." in section Menu, the others in Form).
class LocalizationKeysTest : public QObject {
    Q_OBJECT
private slots:
    void englishHasEveryKeyTheProgramUses();
};

namespace {

using KeyInSection = QPair<QString, QString>; // section, key

// Keys a language file may leave out on purpose.
const QSet<KeyInSection> Optional = {
    {QStringLiteral("System"), QStringLiteral("StartUpNote")}, // shown at every start when present
};

QSet<KeyInSection> KeysUsedBySources()
{
    static const QRegularExpression lookup(QStringLiteral(
        R"re(GetLocalizedString\(\s*(?:QStringLiteral\()?"([^"]+)"\)?\s*,\s*(?:QStringLiteral\()?"([^"]+)"\)?\s*\))re"));
    static const QRegularExpression placeholder(QStringLiteral(R"re("@([A-Za-z0-9_\-]+)")re"));

    QSet<KeyInSection> keys;
    QDirIterator files(QStringLiteral(ORVANA_SOURCE_DIR "/src"), {QStringLiteral("*.cpp"), QStringLiteral("*.h")},
                       QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString text = QString::fromUtf8(ReadAll(files.next()));
        for (const QRegularExpressionMatch &m : lookup.globalMatch(text))
            keys.insert({m.captured(2), m.captured(1)});
        for (const QRegularExpressionMatch &m : placeholder.globalMatch(text)) {
            const QString key = m.captured(1);
            keys.insert({key.startsWith(QLatin1String("mnu")) ? QStringLiteral("Menu") : QStringLiteral("Form"), key});
        }
    }
    return keys;
}

} // namespace

void LocalizationKeysTest::englishHasEveryKeyTheProgramUses()
{
    const QByteArray english = ReadAll(QStringLiteral(ORVANA_SOURCE_DIR "/resources/English/Localizable.ini"));
    QVERIFY(!english.isEmpty());
    const QSet<KeyInSection> used = KeysUsedBySources();
    QVERIFY2(used.size() > 10, "the source scan found almost no lookups: has the lookup call changed its form?");

    QStringList missing;
    for (const KeyInSection &entry : used) {
        if (!Optional.contains(entry) && !ProfileText::HasKey(english, entry.first, entry.second))
            missing << QStringLiteral("[%1] %2").arg(entry.first, entry.second);
    }
    missing.sort();
    QVERIFY2(missing.isEmpty(), qPrintable(QStringLiteral("English lacks: ") + missing.join(QStringLiteral(", "))));
}

QTEST_GUILESS_MAIN(LocalizationKeysTest)
#include "tst_LocalizationKeys.moc"
