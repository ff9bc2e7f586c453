#include "RecentDocs.h"
#include "Settings.h"
#include "TestEnvironment.h"

#include <QDir>
#include <QTest>

class RecentDocsTest : public QObject {
    Q_OBJECT
private slots:
    void adding_data();
    void adding();
    void savingAndLoading();
};

namespace {

QStringList Contents(const RecentDocList &list)
{
    QStringList paths;
    for (int slot = 1; slot <= list.Count(); ++slot)
        paths << list.At(slot);
    return paths;
}

QStringList Numbered(int from, int to)
{
    QStringList paths;
    for (int i = from; i <= to; ++i)
        paths << QStringLiteral("/albums/%1").arg(i);
    return paths;
}

} // namespace

void RecentDocsTest::adding_data()
{
    QTest::addColumn<QStringList>("added");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("oldest first") << QStringList{"/a", "/b"} << QStringList{"/a", "/b"};
    QTest::newRow("re-opened from slot 3 of 5 moves to the end") << QStringList{"/1", "/2", "/3", "/4", "/5", "/3"} << QStringList{"/1", "/2", "/4", "/5", "/3"};
    QTest::newRow("re-opened newest stays") << QStringList{"/1", "/2", "/2"} << QStringList{"/1", "/2"};
    QTest::newRow("a new path to a full list drops slot 1") << Numbered(1, 11) << Numbered(2, 11);
    QTest::newRow("a known path to a full list drops nothing") << Numbered(1, 10) + QStringList{"/albums/1"} << Numbered(2, 10) + QStringList{"/albums/1"};
    QTest::newRow("comparison keeps letter case") << QStringList{"c:\\A", "C:\\a"} << QStringList{"c:\\A", "C:\\a"};
}

void RecentDocsTest::adding()
{
    QFETCH(QStringList, added);
    QFETCH(QStringList, expected);
    RecentDocList list;
    for (const QString &path : added)
        list.Add(path);
    QCOMPARE(Contents(list), expected);
}

void RecentDocsTest::savingAndLoading()
{
    ScopedTestEnvironment environment;
    QDir().mkpath(environment.UserData());

    RecentDocList full;
    for (const QString &path : Numbered(1, 10))
        full.Add(path);
    full.Save();

    RecentDocList two;
    two.Add(QStringLiteral("/x"));
    two.Add(QStringLiteral("/y"));
    two.Save();
    for (int slot = 3; slot <= 10; ++slot) {
        const QByteArray key = "\r\nDoc" + QByteArray::number(slot) + "=\r\n";
        QVERIFY2(ReadAll(environment.SettingsPath()).contains(key), key.constData());
    }

    // A value after the first empty slot is never reached.
    WriteSetting(QStringLiteral("RecentDocs"), QStringLiteral("Doc5"), QStringLiteral("/stray"));
    LoadRecentDocs();
    QCOMPARE(Contents(RecentDocs()), (QStringList{"/x", "/y"}));
}

QTEST_GUILESS_MAIN(RecentDocsTest)
#include "tst_RecentDocs.moc"
