#include "datalist/DataList.h"
#include "TestEnvironment.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTest>

class DataListTest : public QObject {
    Q_OBJECT
private slots:
    void foreignListRoundTrip();
    void refusedFiles_data();
    void refusedFiles();
    void sorting_data();
    void sorting();
    void indicesOutOfRange();
    void textSurvivesSaving_data();
    void textSurvivesSaving();
    void failedSaveKeepsTheFile();
    void oddFilesSaveAsTheyLoad_data();
    void oddFilesSaveAsTheyLoad();
};

namespace {

bool RunPython(const QString &script, QString *output = nullptr)
{
    QProcess python;
    python.start(QStringLiteral("python3"), {QStringLiteral("-c"), script});
    if (!python.waitForFinished(60000) || python.exitCode() != 0) {
        qWarning() << python.readAllStandardError();
        return false;
    }
    if (output)
        *output = QString::fromUtf8(python.readAllStandardOutput()).trimmed();
    return true;
}

DataList WithItems(const QStringList &values, const QString &key = QStringLiteral("CaptureDate"))
{
    DataList list;
    for (int i = 0; i < values.size(); ++i) {
        list.AddItem(i + 1);
        list.SetItemProperty(key, values[i], i + 1);
        list.SetItemProperty(QStringLiteral("File"), QStringLiteral("f%1").arg(i + 1), i + 1);
    }
    return list;
}

QStringList Column(const DataList &list, const QString &key)
{
    QStringList values;
    for (int i = 1; i <= list.ItemCount(); ++i)
        values << list.GetItemProperty(key, i);
    return values;
}

const QString ForeignList = QStringLiteral(R"py(
import plistlib, datetime, sys
doc = {
    "Title": "Trip", "Count": 42, "Ratio": 3.5, "Shared": True, "Hidden": False,
    "Made": datetime.datetime(2026, 1, 2, 3, 4, 5), "Blob": b"\x00\x01orvana",
    "Nested": {"a": [1, "two", {"three": 3.0}]}, "Tags": ["x", "y"],
    "Photos": [
        {"File": "IMG_0001.JPG", "Size": 1234, "Star": True, "Latitude": 48.5},
        {"File": "IMG_0002.JPG", "Description": "note <with> & \"quotes\"", "Extra": {"k": "v"}},
    ],
    "Zebra": "after the items",
}
with open(sys.argv[1] if len(sys.argv) > 1 else "FILE", "wb") as f:
    plistlib.dump(doc, f, sort_keys=False)
)py");

} // namespace

void DataListTest::foreignListRoundTrip()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("foreign.plist"));
    QVERIFY(RunPython(QString(ForeignList).replace(QStringLiteral("\"FILE\""), QStringLiteral("\"%1\"").arg(path))));

    DataList list;
    QVERIFY(list.Load(path));
    QCOMPARE(list.GetDocumentProperty(QStringLiteral("Title")), QStringLiteral("Trip"));
    QCOMPARE(list.GetDocumentProperty(QStringLiteral("Count")), QStringLiteral("42"));
    QCOMPARE(list.GetDocumentProperty(QStringLiteral("Ratio")), QStringLiteral("3.5"));
    QCOMPARE(list.GetDocumentProperty(QStringLiteral("Shared")), QStringLiteral("true"));
    QCOMPARE(list.GetDocumentProperty(QStringLiteral("Made")), QStringLiteral("2026-01-02T03:04:05Z"));
    QCOMPARE(list.GetDocumentProperty(QStringLiteral("Nested")), QString());
    QCOMPARE(list.ItemCount(), 2);
    QCOMPARE(list.GetItemProperty(QStringLiteral("Size"), 1), QStringLiteral("1234"));
    QCOMPARE(list.GetItemProperty(QStringLiteral("Star"), 1), QStringLiteral("true"));
    QCOMPARE(list.GetItemProperty(QStringLiteral("Description"), 2), QStringLiteral("note <with> & \"quotes\""));

    list.SetItemProperty(QStringLiteral("Star"), QStringLiteral("0"), 1);
    list.SetDocumentProperty(QStringLiteral("Title"), QStringLiteral("Trip 2"));
    list.AddItem(3);
    list.SetItemProperty(QStringLiteral("File"), QStringLiteral("new.jpg"), 3);
    QVERIFY(list.Save(path));

    // What another tool reads back: every foreign value with its own type, only our edits changed.
    QString verdict;
    QVERIFY(RunPython(QStringLiteral(R"py(
import plistlib, datetime
d = plistlib.load(open("%1", "rb"))
p = d["Photos"]
checks = [
    d["Title"] == "Trip 2", d["Count"] == 42, d["Ratio"] == 3.5, d["Shared"] is True, d["Hidden"] is False,
    d["Made"] == datetime.datetime(2026, 1, 2, 3, 4, 5), d["Blob"] == b"\x00\x01orvana",
    d["Nested"] == {"a": [1, "two", {"three": 3.0}]}, d["Tags"] == ["x", "y"], d["Zebra"] == "after the items",
    p[0] == {"File": "IMG_0001.JPG", "Size": 1234, "Star": "0", "Latitude": 48.5},
    p[1] == {"File": "IMG_0002.JPG", "Description": 'note <with> & "quotes"', "Extra": {"k": "v"}},
    p[2] == {"File": "new.jpg"}, list(d.keys())[-1] == "Zebra",
]
print("".join("1" if c else "0" for c in checks))
)py").arg(path), &verdict));
    QCOMPARE(verdict, QStringLiteral("11111111111111"));
}

void DataListTest::refusedFiles_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("status");
    const QByteArray head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>";
    using S = DataList::LoadStatus;
    QTest::newRow("empty file") << QByteArray() << int(S::Unreadable);
    QTest::newRow("truncated") << head + "<key>Title</key><string>Tr" << int(S::Malformed);
    QTest::newRow("truncated in an item") << head + "<key>Items</key><array><dict><key>File</key>" << int(S::Malformed);
    QTest::newRow("not XML") << QByteArray("\xFF\xD8\xFF\xE0 JPEG bytes") << int(S::Malformed);
    QTest::newRow("other XML") << QByteArray("<?xml version=\"1.0\"?><html><body/></html>") << int(S::NotPropertyList);
    QTest::newRow("array at the root") << QByteArray("<plist><array><dict/></array></plist>") << int(S::NotPropertyList);
    QTest::newRow("unknown value type") << head + "<key>A</key><colour>red</colour></dict></plist>" << int(S::NotPropertyList);
    QTest::newRow("key without value") << head + "<key>A</key></dict></plist>" << int(S::NotPropertyList);
    QTest::newRow("declared entities") << QByteArray("<?xml version=\"1.0\"?><!DOCTYPE plist [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;\">]>"
                                                     "<plist><dict><key>T</key><string>&b;</string></dict></plist>") << int(S::EntitiesDeclared);
    QTest::newRow("external entity") << QByteArray("<?xml version=\"1.0\"?><!DOCTYPE plist [<!ENTITY x SYSTEM \"file:///etc/passwd\">]>"
                                                   "<plist><dict><key>T</key><string>&x;</string></dict></plist>") << int(S::EntitiesDeclared);
    QTest::newRow("undeclared entity") << head + "<key>T</key><string>&nope;</string></dict></plist>" << int(S::Malformed);
}

// A file that cannot be read leaves the list as it was, so nothing half-read is saved over it.
void DataListTest::refusedFiles()
{
    QFETCH(QByteArray, content);
    QFETCH(int, status);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("studio.plist"));
    WriteAll(path, content);
    DataList list = WithItems({QStringLiteral("kept")});
    list.SetDocumentProperty(QStringLiteral("Title"), QStringLiteral("before"));

    const DataList::LoadResult result = list.Load(path);
    QCOMPARE(int(result.status), status);
    QVERIFY(!result.message.isEmpty());
    QCOMPARE(list.GetDocumentProperty(QStringLiteral("Title")), QStringLiteral("before"));
    QCOMPARE(Column(list, QStringLiteral("CaptureDate")), QStringList{"kept"});
    QCOMPARE(ReadAll(path), content);
}

void DataListTest::sorting_data()
{
    QTest::addColumn<QStringList>("values");
    QTest::addColumn<int>("order");
    QTest::addColumn<QStringList>("files");
    const QStringList dates = {"2026-05-01 10:00:00", "", "2025-12-31 23:59:59", "2026-05-01 10:00:00", "2026-05-01 09:00:00"};
    QTest::newRow("ascending, ties keep their order, no date first") << dates << 1 << QStringList{"f2", "f3", "f5", "f1", "f4"};
    QTest::newRow("descending, ties keep their order") << dates << 0 << QStringList{"f1", "f4", "f5", "f3", "f2"};
    QTest::newRow("names compare by text") << QStringList{"b.jpg", "B.jpg", "a10.jpg", "a9.jpg"} << 1 << QStringList{"f2", "f3", "f4", "f1"};
}

void DataListTest::sorting()
{
    QFETCH(QStringList, values);
    QFETCH(int, order);
    QFETCH(QStringList, files);
    DataList list = WithItems(values);
    list.SortItems(QStringLiteral("CaptureDate"), order);
    QCOMPARE(Column(list, QStringLiteral("File")), files);
}

// Item numbers come from records and views; one out of range changes nothing and reads "".
void DataListTest::indicesOutOfRange()
{
    DataList list = WithItems({"a", "b"});
    list.AddItem(99); // past the end: appended
    list.RemoveItem(0);
    list.RemoveItem(4);
    list.SetItemProperty(QStringLiteral("File"), QStringLiteral("x"), 0);
    QCOMPARE(Column(list, QStringLiteral("File")), (QStringList{"f1", "f2", ""}));
    QCOMPARE(list.GetItemProperty(QStringLiteral("File"), 4), QString());
}

void DataListTest::textSurvivesSaving_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("markup characters") << "<b>&amp;</b> 'x' \"y\"" << "<b>&amp;</b> 'x' \"y\"";
    QTest::newRow("CR LF line breaks") << "line one\r\nline two" << "line one\r\nline two";
    QTest::newRow("blanks at the ends") << "  padded\t" << "  padded\t";
    QTest::newRow("Chinese and emoji") << QString::fromUtf8("\xE5\x8C\x97\xE4\xBA\xAC \xF0\x9F\x93\xB7") << QString::fromUtf8("\xE5\x8C\x97\xE4\xBA\xAC \xF0\x9F\x93\xB7");
    QTest::newRow("control characters dropped") << QStringLiteral("a\x01" "b\x1F" "c") << "abc";
    QTest::newRow("empty") << "" << "";
}

void DataListTest::textSurvivesSaving()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("studio.plist"));
    DataList list = WithItems({text}, QStringLiteral("Description"));
    list.SetDocumentProperty(QStringLiteral("Description"), text);
    QVERIFY(list.Save(path));
    DataList loaded;
    QVERIFY(loaded.Load(path));
    QCOMPARE(loaded.GetItemProperty(QStringLiteral("Description"), 1), expected);
    QCOMPARE(loaded.GetDocumentProperty(QStringLiteral("Description")), expected);
}

void DataListTest::failedSaveKeepsTheFile()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("studio.plist"));
    DataList list = WithItems({"one"});
    QVERIFY(list.Save(path));
    const QByteArray before = ReadAll(path);
    QVERIFY(before.startsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC") && before.contains("<plist version=\"1.0\">"));

    // A save that cannot happen reports why and leaves no trace; the saved file stays whole.
    QString error;
    QVERIFY(!list.Save(path + QStringLiteral("/inside-a-file.plist"), &error));
    QVERIFY(error.contains(QStringLiteral("inside-a-file.plist")));
    QCOMPARE(ReadAll(path), before);
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"studio.plist"});
}

// Files that once broke a save (fuzzing finds them): whatever loads must save and load alike.
void DataListTest::oddFilesSaveAsTheyLoad_data()
{
    QTest::addColumn<QString>("path");
    const QDir data(QStringLiteral(ORVANA_SOURCE_DIR "/tests/datalist/data"));
    for (const QString &name : data.entryList(QDir::Files))
        QTest::newRow(qPrintable(name)) << data.filePath(name);
}

void DataListTest::oddFilesSaveAsTheyLoad()
{
    QFETCH(QString, path);
    DataList list;
    QVERIFY(list.Load(path));
    DataList again;
    const DataList::LoadResult reloaded = again.LoadFromBytes(list.ToBytes());
    QVERIFY2(reloaded, qPrintable(reloaded.message));
    QCOMPARE(again.DocumentKeys(), list.DocumentKeys());
    QCOMPARE(again.ItemCount(), list.ItemCount());
    QCOMPARE(again.ToBytes(), list.ToBytes());
}

QTEST_GUILESS_MAIN(DataListTest)
#include "tst_DataList.moc"
