#include "DataList.h"
#include "DataListStream.h"
#include "TestEnvironment.h"

#include <QBuffer>
#include <QTemporaryDir>
#include <QTest>

// Lists streamed item by item read and write exactly what DataList itself reads and writes.
class DataListStreamTest : public QObject {
    Q_OBJECT
private slots:
    void writerWritesWhatSaveWrites_data();
    void writerWritesWhatSaveWrites();
    void readerReadsWhatLoadReads_data();
    void readerReadsWhatLoadReads();
    void longListsAcrossChunks();
};

namespace {

using Items = QList<QStringList>; // per item "key=value" in order

class Collector : public DataListItemVisitor {
public:
    void Item(StreamedItem entries) override
    {
        QStringList item;
        for (const StreamedEntry &entry : entries)
            item << QString::fromUtf8(entry.key) + u'=' + QString::fromUtf8(entry.value);
        items << item;
    }
    void Restart() override
    {
        items.clear();
        ++restarts;
    }
    Items items;
    int restarts = 0;
};

Items PlainItems(const DataList &list)
{
    Items items;
    for (int i = 1; i <= list.ItemCount(); ++i) {
        QStringList item;
        for (const DataList::Entry &entry : list.ItemAt(i)) {
            if (entry.kind != DataList::Kind::Nested)
                item << list.KeyName(entry.key) + u'=' + entry.value;
        }
        items << item;
    }
    return items;
}

QStringList Properties(const DataList &list)
{
    QStringList properties;
    for (const QString &key : list.DocumentKeys())
        properties << key + u'=' + list.GetDocumentProperty(key);
    properties.removeDuplicates();
    return properties;
}

const QByteArray Prolog = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                          "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n<plist version=\"1.0\">\n";

} // namespace

void DataListStreamTest::writerWritesWhatSaveWrites_data()
{
    QTest::addColumn<Items>("items");
    QTest::addColumn<QStringList>("properties");
    QTest::newRow("points") << Items{{"TIME=2020-01-01T00:00:00Z", "LAT=46.5", "LON=-13.25", "ELE=0.0"}, {"TIME=", "LAT=1", "LON=2", "ELE=3.0"}}
                            << QStringList{"NAME=Ride", "BOUNDS=(1,2)-(46.5,-13.25)"};
    QTest::newRow("markup, line ends and control characters")
        << Items{{"A=<b>&amp;\"q\" 'x'", "B=line\r\nbreak\ttab", "C=bell\x07 gone", "D=ä€😀"}} << QStringList{"NAME=a\rb"};
    QTest::newRow("no items") << Items{} << QStringList{"NAME=empty"};
    QTest::newRow("an empty item") << Items{{}} << QStringList{};
}

void DataListStreamTest::writerWritesWhatSaveWrites()
{
    QFETCH(Items, items);
    QFETCH(QStringList, properties);
    QByteArray streamed;
    QBuffer buffer(&streamed);
    buffer.open(QIODevice::WriteOnly);
    DataListStreamWriter writer(buffer);
    writer.BeginItems("TRKPT");
    for (const QStringList &item : items) {
        std::vector<QByteArray> texts;
        for (const QString &pair : item) {
            texts.push_back(pair.section(u'=', 0, 0).toUtf8());
            texts.push_back(pair.section(u'=', 1).toUtf8());
        }
        std::vector<StreamedEntry> entries;
        for (std::size_t k = 0; k < texts.size(); k += 2)
            entries.push_back({texts[k], texts[k + 1]});
        writer.WriteItem(entries);
    }
    writer.EndItems();
    for (const QString &pair : properties)
        writer.WriteProperty(pair.section(u'=', 0, 0).toUtf8(), pair.section(u'=', 1).toUtf8());
    QVERIFY(writer.Finish());

    DataList loaded;
    QVERIFY(loaded.LoadFromBytes(streamed));
    QCOMPARE(loaded.ToBytes(), streamed);
    QCOMPARE(loaded.ItemCount(), items.size());
}

void DataListStreamTest::readerReadsWhatLoadReads_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<int>("restarts"); // 0: read by the scanner; 1: by DataList's reader

    const QByteArray items = "<key>TRKPT</key><array><dict><key>TIME</key><string>a&amp;b&#13;&#x1F600;</string><key>LAT</key><string/></dict>"
                             "<dict/></array>";
    QTest::newRow("the program's own form") << (Prolog + "\t<dict>\n\t\t" + items + "<key>NAME</key><string>x &lt; y</string>\n\t</dict>\n</plist>\n") << 0;
    QTest::newRow("a byte order mark, no declaration, blank lines")
        << ("\xEF\xBB\xBF<plist>\r\n<dict>\r\n" + items + "\r\n</dict>\r\n</plist>") << 0;
    QTest::newRow("a repeated property reads as its first")
        << (Prolog + "<dict><key>NAME</key><string>first</string><key>NAME</key><string>second</string></dict></plist>") << 0;
    QTest::newRow("a value of another type")
        << (Prolog + "<dict><key>Items</key><array><dict><key>A</key><string>1</string></dict><dict><key>N</key><integer>7</integer></dict></array></dict></plist>")
        << 1;
    QTest::newRow("a nested value") << (Prolog + "<dict><key>Items</key><array><dict><key>L</key><array><string>x</string></array></dict></array></dict></plist>")
                                    << 1;
    QTest::newRow("CDATA and comments") << (Prolog + "<dict><!-- c --><key>Items</key><array><dict><key>A</key><string><![CDATA[<x>]]></string></dict></array></dict></plist>")
                                        << 1;
    QTest::newRow("a raw carriage return") << (Prolog + "<dict><key>Items</key><array><dict><key>A</key><string>a\rb</string></dict></array></dict></plist>") << 1;
    QTest::newRow("truncated") << (Prolog + "<dict><key>Items</key><array><dict><key>A</key><string>1</string></dict><dict><key>A</key>") << 1;
    QTest::newRow("entities declared") << QByteArray("<?xml version=\"1.0\"?><!DOCTYPE plist [<!ENTITY e \"x\">]><plist><dict><key>A</key><string>&e;</string></dict></plist>")
                                       << 1;
    QTest::newRow("an unknown entity") << (Prolog + "<dict><key>A</key><string>&nbsp;</string></dict></plist>") << 1;
    QTest::newRow("bad UTF-8") << (Prolog + "<dict><key>A</key><string>\xC3\x28</string></dict></plist>") << 1;
    QTest::newRow("two item arrays") << (Prolog + "<dict><key>I</key><array/><key>J</key><array><dict/></array></dict></plist>") << 1;
    QTest::newRow("junk after the end") << (Prolog + "<dict></dict></plist>x") << 1;
    QTest::newRow("another encoding") << QByteArray("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><plist><dict><key>A</key><string>\xE9</string></dict></plist>") << 1;
}

void DataListStreamTest::readerReadsWhatLoadReads()
{
    QFETCH(QByteArray, file);
    QFETCH(int, restarts);
    DataList whole;
    const DataList::LoadResult expected = whole.LoadFromBytes(file);

    QBuffer buffer(&file);
    buffer.open(QIODevice::ReadOnly);
    DataList properties;
    Collector collector;
    const DataList::LoadResult streamed = StreamDataListItems(buffer, properties, collector);
    QCOMPARE(streamed.status, expected.status);
    QCOMPARE(streamed.message, expected.message);
    QCOMPARE(collector.restarts, restarts);
    if (expected) {
        QCOMPARE(collector.items, PlainItems(whole));
        QCOMPARE(Properties(properties), Properties(whole));
        QCOMPARE(properties.ItemCount(), 0);
    }
}

void DataListStreamTest::longListsAcrossChunks()
{
    QTemporaryDir folder;
    DataList list;
    list.SetDocumentProperty(QStringLiteral("NAME"), QStringLiteral("long"));
    for (int i = 1; i <= 60000; ++i) {
        list.AddItem(i);
        list.SetItemProperty(QStringLiteral("TIME"), QStringLiteral("2020-01-01T00:00:%1Z").arg(i % 60, 2, 10, QLatin1Char('0')), i);
        list.SetItemProperty(QStringLiteral("LAT"), QString::number(i * 0.001, 'f', 9) + (i % 1000 == 0 ? QStringLiteral(" &<>") : QString()), i);
    }
    const QString path = folder.filePath(QStringLiteral("long.plist"));
    QVERIFY(list.Save(path));
    QVERIFY(QFileInfo(path).size() > (1 << 22)); // more than one chunk of the reader
    DataList properties;
    Collector collector;
    QVERIFY(StreamDataListItems(path, properties, collector));
    QCOMPARE(collector.restarts, 0);
    QCOMPARE(collector.items, PlainItems(list));
    QCOMPARE(properties.GetDocumentProperty(QStringLiteral("NAME")), QStringLiteral("long"));
}

QTEST_GUILESS_MAIN(DataListStreamTest)
#include "tst_DataListStream.moc"
