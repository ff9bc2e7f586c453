#include "ProfileText.h"
#include "TestEnvironment.h"

#include <QDirIterator>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QTest>
#include <algorithm>

// Every text the program looks up must exist in the reference language, or the user sees a
// bare key. Lookups are found in the sources: GetLocalizedString calls with literal key and
// section, calls with a literal key of functions that hand their parameter to it as the key, and
// "@Key" placeholder captions ("@mnu..." in section Menu, the others in Form).
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

// The text between the bracket at open and its partner, split at its top-level commas.
QStringList Arguments(const QString &text, qsizetype open)
{
    QStringList arguments{QString()};
    int depth = 0;
    for (qsizetype i = open + 1; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c == u'"') { // a string literal, escapes included
            qsizetype end = i + 1;
            while (end < text.size() && (text[end] != u'"' || text[end - 1] == u'\\'))
                ++end;
            arguments.back() += text.mid(i, end - i + 1);
            i = end;
            continue;
        }
        if (c == u'(' || c == u'{' || c == u'[')
            ++depth;
        if ((c == u')' || c == u'}' || c == u']') && depth-- == 0)
            return arguments;
        if (c == u',' && depth == 0)
            arguments << QString();
        else
            arguments.back() += c;
    }
    return {};
}

// A constant's or a literal's text: "Menu", QStringLiteral("Menu") or Gps with
// `const QString Gps = QStringLiteral("GPS");` in the file; "" for anything else.
QString Literal(const QString &expression, const QString &file)
{
    static const QRegularExpression literal(QStringLiteral(R"re(^\s*(?:Q(?:StringLiteral|Latin1String)\()?"([^"]*)"\)?\s*$)re"));
    if (const QRegularExpressionMatch m = literal.match(expression); m.hasMatch())
        return m.captured(1);
    const QRegularExpression constant(QStringLiteral(R"re(const QString %1 = QStringLiteral\("([^"]*)"\))re").arg(QRegularExpression::escape(expression.trimmed())));
    return expression.trimmed().isEmpty() ? QString() : constant.match(file).captured(1);
}

// A function that passes one of its parameters to GetLocalizedString as the key: the key's
// parameter, and the section as a fixed text or as another parameter with its default.
struct Wrapper {
    QString name;
    int keyParameter = -1;
    int sectionParameter = -1;
    QString section;
};

QList<Wrapper> WrappersIn(const QString &text)
{
    static const QRegularExpression definition(QStringLiteral(R"(\b(\w+)\(([^()]*)\)\s*(?:const\s*)?\{)"));
    QList<Wrapper> wrappers;
    for (const QRegularExpressionMatch &m : definition.globalMatch(text)) {
        const QString body = text.mid(m.capturedEnd(), text.indexOf(QStringLiteral("\n}"), m.capturedEnd()) - m.capturedEnd());
        const qsizetype call = body.indexOf(QStringLiteral("GetLocalizedString("));
        if (call < 0 || m.captured(1) == u"GetLocalizedString")
            continue;
        const QStringList passed = Arguments(body, call + 18);
        const QStringList parameters = m.captured(2).split(u',');
        Wrapper wrapper{m.captured(1), -1, -1, passed.size() == 2 ? Literal(passed[1], text) : QString()};
        for (int k = 0; k < parameters.size(); ++k) {
            const QString name = parameters[k].section(u'=', 0, 0).trimmed().section(QRegularExpression(QStringLiteral(R"([\s*&])")), -1);
            const QRegularExpression used(QStringLiteral(R"(\b%1\b)").arg(name));
            if (name.isEmpty() || passed.size() != 2)
                continue;
            if (passed[0].contains(used))
                wrapper.keyParameter = k;
            else if (passed[1].contains(used)) {
                wrapper.sectionParameter = k;
                wrapper.section = Literal(parameters[k].section(u'=', 1), text);
            }
        }
        if (wrapper.keyParameter >= 0)
            wrappers << wrapper;
    }
    return wrappers;
}

QSet<KeyInSection> KeysUsedBySources()
{
    static const QRegularExpression lookup(QStringLiteral(
        R"re(GetLocalizedString\(\s*(?:QStringLiteral\()?"([^"]+)"\)?\s*,\s*(?:QStringLiteral\()?"([^"]+)"\)?\s*\))re"));
    static const QRegularExpression placeholder(QStringLiteral(R"re("@([A-Za-z0-9_\-]+)")re"));

    QMap<QString, QString> sources;
    QDirIterator files(QStringLiteral(ORVANA_SOURCE_DIR "/src"), {QStringLiteral("*.cpp"), QStringLiteral("*.h")},
                       QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        sources.insert(path, QString::fromUtf8(ReadAll(path)));
    }
    QSet<KeyInSection> keys;
    for (const QString &text : sources) {
        for (const QRegularExpressionMatch &m : lookup.globalMatch(text))
            keys.insert({m.captured(2), m.captured(1)});
        for (const QRegularExpressionMatch &m : placeholder.globalMatch(text)) {
            const QString key = m.captured(1);
            keys.insert({key.startsWith(QLatin1String("mnu")) ? QStringLiteral("Menu") : QStringLiteral("Form"), key});
        }
        // Calls of the file's wrappers with a literal key; a wrapper declared in a header is
        // called from other files too.
        for (const Wrapper &wrapper : WrappersIn(text)) {
            const QRegularExpression call(QStringLiteral(R"(\b%1\()").arg(wrapper.name));
            const bool shared = std::any_of(sources.keyBegin(), sources.keyEnd(), [&](const QString &path) {
                return path.endsWith(QLatin1String(".h")) && sources[path].contains(call);
            });
            for (const QString &caller : shared ? sources.values() : QStringList{text}) {
                for (const QRegularExpressionMatch &m : call.globalMatch(caller)) {
                    const QStringList passed = Arguments(caller, m.capturedEnd() - 1);
                    const QString key = Literal(passed.value(wrapper.keyParameter), caller);
                    const QString given = wrapper.sectionParameter >= 0 ? Literal(passed.value(wrapper.sectionParameter), caller) : QString();
                    const QString section = given.isEmpty() ? wrapper.section : given;
                    if (!key.isEmpty() && !section.isEmpty())
                        keys.insert({section, key});
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
