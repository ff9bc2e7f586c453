#include "app/ProfileText.h"
#include "TestEnvironment.h"

#include <QDirIterator>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QTest>
#include <algorithm>

// Every text the program looks up must exist in the reference language, or the user sees a
// bare key. Lookups are found in the sources: GetLocalizedString calls with literal key and
// section, calls with a literal key of functions that hand a parameter to it as the key, and
// "@Key" placeholder captions ("@mnu..." in section Menu, the others in Form).
class LocalizationKeysTest : public QObject {
    Q_OBJECT
private slots:
    void englishHasEveryKeyTheProgramUses();
};

namespace {

using KeyInSection = QPair<QString, QString>; // section, key

// The text between the bracket at open and its partner, split at its top-level commas; string
// literals, escapes included, are taken whole.
QStringList Arguments(const QString &text, qsizetype open)
{
    QStringList arguments{QString()};
    for (qsizetype i = open + 1, depth = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        qsizetype end = i;
        while (c == u'"' && ++end < text.size() && (text[end] != u'"' || text[end - 1] == u'\\')) {
        }
        if (c == u'(' || c == u'{' || c == u'[')
            ++depth;
        if ((c == u')' || c == u'}' || c == u']') && depth-- == 0)
            return arguments;
        if (c == u',' && depth == 0)
            arguments << QString();
        else
            arguments.back() += text.mid(i, end - i + 1);
        i = end;
    }
    return {};
}

// The text of "Menu", QStringLiteral("Menu") or of a constant Gps defined in the file as
// `const QString Gps = QStringLiteral("GPS");`; "" for any other expression.
QString Literal(const QString &expression, const QString &file)
{
    static const QRegularExpression literal(QStringLiteral(R"re(^\s*(?:Q(?:StringLiteral|Latin1String)\()?"([^"]*)"\)?\s*$)re"));
    if (const QRegularExpressionMatch m = literal.match(expression); m.hasMatch())
        return m.captured(1);
    const QString name = expression.trimmed();
    const QRegularExpression constant(QStringLiteral(R"re(const QString %1 = QStringLiteral\("([^"]*)"\);)re").arg(QRegularExpression::escape(name)));
    return name.isEmpty() ? QString() : constant.match(file).captured(1);
}

// The parameter's name in "const QString &key = QString()"-like text.
QString ParameterName(const QString &parameter)
{
    return parameter.section(u'=', 0, 0).trimmed().section(QRegularExpression(QStringLiteral(R"([\s*&])")), -1);
}

QSet<KeyInSection> KeysUsedBySources()
{
    QMap<QString, QString> sources;
    QDirIterator files(QStringLiteral(ORVANA_SOURCE_DIR "/src"), {QStringLiteral("*.cpp"), QStringLiteral("*.h")}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        sources.insert(path, QString::fromUtf8(ReadAll(path)));
    }
    static const QRegularExpression lookup(QStringLiteral(R"(\bGetLocalizedString\()"));
    static const QRegularExpression placeholder(QStringLiteral(R"re("@([A-Za-z0-9_\-]+)")re"));
    static const QRegularExpression definition(QStringLiteral(R"(\b(\w+)\(([^()]*)\)\s*(?:const\s*)?\{)"));
    QSet<KeyInSection> keys;
    for (auto file = sources.cbegin(); file != sources.cend(); ++file) {
        const QString &text = file.value();
        for (const QRegularExpressionMatch &m : lookup.globalMatch(text)) {
            const QStringList passed = Arguments(text, m.capturedEnd() - 1);
            const QString key = Literal(passed.value(0), text);
            const QString section = Literal(passed.value(1), text);
            if (!key.isEmpty() && !section.isEmpty())
                keys.insert({section, key});
        }
        for (const QRegularExpressionMatch &m : placeholder.globalMatch(text))
            keys.insert({m.captured(1).startsWith(QLatin1String("mnu")) ? QStringLiteral("Menu") : QStringLiteral("Form"), m.captured(1)});
        // A function whose body hands one of its parameters to GetLocalizedString as the key; the
        // section is fixed there or another parameter's. It is called from this file, and from
        // every file when a header declares it.
        for (const QRegularExpressionMatch &m : definition.globalMatch(text)) {
            const QString body = text.mid(m.capturedEnd(), text.indexOf(QStringLiteral("\n}"), m.capturedEnd()) - m.capturedEnd());
            const QStringList parameters = m.captured(2).split(u',');
            const auto parameterIn = [&parameters](const QString &argument) {
                for (int k = 0; k < parameters.size(); ++k) {
                    const QString name = ParameterName(parameters[k]);
                    if (!name.isEmpty() && argument.contains(QRegularExpression(QStringLiteral(R"(\b%1\b)").arg(QRegularExpression::escape(name)))))
                        return k;
                }
                return -1;
            };
            QStringList handed;
            for (const QRegularExpressionMatch &call : lookup.globalMatch(body)) {
                if (const QStringList passed = Arguments(body, call.capturedEnd() - 1); passed.size() == 2 && parameterIn(passed[0]) >= 0)
                    handed = passed;
            }
            if (handed.isEmpty() || QStringList{"GetLocalizedString", "if", "for", "while", "switch", "catch"}.contains(m.captured(1)))
                continue;
            const int keyParameter = parameterIn(handed[0]);
            const int sectionParameter = parameterIn(handed[1]);
            // Key and section both taken from one parameter (a command line's words): no wrapper.
            if (keyParameter == sectionParameter)
                continue;
            const QString fixedSection = sectionParameter < 0 ? Literal(handed[1], text) : Literal(parameters[sectionParameter].section(u'=', 1), text);
            const QRegularExpression use(QStringLiteral(R"(\b%1\()").arg(m.captured(1)));
            const bool declared = std::any_of(sources.keyBegin(), sources.keyEnd(), [&](const QString &path) { return path.endsWith(u".h") && sources[path].contains(use); });
            for (const QString &caller : declared ? sources.values() : QStringList{text}) {
                for (const QRegularExpressionMatch &used : use.globalMatch(caller)) {
                    const QStringList passed = Arguments(caller, used.capturedEnd() - 1);
                    const QString key = Literal(passed.value(keyParameter), caller);
                    const QString given = sectionParameter >= 0 ? Literal(passed.value(sectionParameter), caller) : QString();
                    if (!key.isEmpty() && !(given.isEmpty() ? fixedSection : given).isEmpty())
                        keys.insert({given.isEmpty() ? fixedSection : given, key});
                }
            }
        }
    }
    return keys;
}

} // namespace

void LocalizationKeysTest::englishHasEveryKeyTheProgramUses()
{
    const QByteArray english = ReadAll(QStringLiteral(ORVANA_SOURCE_DIR "/resources/English/Localizable.ini"));
    const QSet<KeyInSection> used = KeysUsedBySources();
    QVERIFY2(used.size() > 10, "the source scan found almost no lookups: has the lookup call changed its form?");
    // Shown at every start when a language file has it, so it may be left out.
    const KeyInSection optional{QStringLiteral("System"), QStringLiteral("StartUpNote")};
    QStringList missing;
    for (const KeyInSection &entry : used) {
        if (entry != optional && !ProfileText::HasKey(english, entry.first, entry.second))
            missing << QStringLiteral("[%1] %2").arg(entry.first, entry.second);
    }
    missing.sort();
    QVERIFY2(missing.isEmpty(), qPrintable(QStringLiteral("English lacks: ") + missing.join(QStringLiteral(", "))));
}

QTEST_GUILESS_MAIN(LocalizationKeysTest)
#include "tst_LocalizationKeys.moc"
